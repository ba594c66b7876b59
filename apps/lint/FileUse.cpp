#include "lint/FileUse.h"

#include "datatable/CachePaths.h"
#include "decoration/ZImageFrameInfoListMgr.h"
#include "lint/Table.h"

#include <QDir>

namespace {

/** Whether the column's cells say where on the server the file is, instead of what it is called. */
bool holdsPaths(const ColumnSchema& column)
{
    const QString& address = column.files.constFirst().address;
    return address.isEmpty() || address == QLatin1String("/");
}

} // namespace

QStringList FileUse::namesIn(const ColumnSchema& column, const QString& text)
{
    if (column.files.isEmpty() || text.isEmpty())
        return {};
    if (column.use != TextUse::Schedule)
        return {text};
    QStringList names;
    for (const stFramePeriod& period : ZImageFrameInfoListMgr::periodsOf(text)) {
        if (!period.icon.isEmpty() && !names.contains(period.icon))
            names.append(period.icon);
    }
    return names;
}

QString FileUse::nameFault(const ColumnSchema& column, const QString& name)
{
    if (!holdsPaths(column))
        return CachePaths::nameFault(name.trimmed());
    for (const QString& part : name.trimmed().split(QLatin1Char('/'), Qt::SkipEmptyParts)) {
        QString fault = CachePaths::nameFault(part);
        if (!fault.isEmpty())
            return fault;
    }
    return {};
}

QString FileUse::pathOf(const FileSchema& file, const Table& table, const Row& row,
                        const QString& name)
{
    QString last = file.name;
    last.replace(QLatin1String("{}"), name);
    for (const ColumnSchema& column : table.columns())
        last.replace(QLatin1Char('{') + column.name + QLatin1Char('}'),
                     table.text(row, column.name));
    const QString path = QDir::cleanPath(file.address + last);
    return path.startsWith(QLatin1Char('/')) ? path.mid(1) : path;
}
