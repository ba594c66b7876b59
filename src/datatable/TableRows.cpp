#include "datatable/TableRows.h"

#include "host/ZGlobalConfig.h"

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
