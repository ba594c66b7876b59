#include "datatable/TableRows.h"

#include "host/ZGlobalConfig.h"

#include <QCborArray>

#include <algorithm>

namespace {

// A host need not tell causes; int goes before long where it does.
template <class Host, class Source>
auto readBy(const Source& source, TableRows& table, QString* cause, int /*tells*/)
    -> decltype(Host::readTableFile(source, table.header, table.rows, cause))
{
    return Host::readTableFile(source, table.header, table.rows, cause);
}

template <class Host, class Source>
bool readBy(const Source& source, TableRows& table, QString* /*cause*/, long /*tellsNot*/)
{
    return Host::readTableFile(source, table.header, table.rows);
}

} // namespace

bool TableRows::read(const QString& path, QString* cause)
{
    return readBy<ZGlobalConfig>(path, *this, cause, 0);
}

bool TableRows::read(const QByteArray& bytes, QString* cause)
{
    return readBy<ZGlobalConfig>(bytes, *this, cause, 0);
}

int TableRows::count() const
{
    // Few tables have a null row. That there is none is told by the elements' types alone, while
    // looking at each takes hold of its cells.
    if (!QCborArray::fromJsonArray(rows).contains(QCborValue::Null))
        return static_cast<int>(rows.size());
    return static_cast<int>(std::count_if(rows.begin(), rows.end(),
                                          [](const QJsonValue& row) { return !row.isNull(); }));
}
