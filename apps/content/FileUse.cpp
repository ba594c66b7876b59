#include "content/FileUse.h"

#include "content/Table.h"
#include "datatable/CachePaths.h"
#include "decoration/ZImageFrameInfoListMgr.h"

#include <QDir>
#include <QRegularExpression>

namespace {

/** Whether the column's cells say where on the server the file is, instead of what it is called. */
bool holdsPaths(const ColumnSchema& column)
{
    const QString& address = column.files.constFirst().address;
    return address.isEmpty() || address == QLatin1String("/");
}

/** What the file or folder is called that the client makes for it. */
QString storedName(const FileSchema& file, const QString& name)
{
    if (!file.isArchive)
        return QString(file.name).replace(QLatin1String("{}"), name);
    // Of an animation with a description a file in the archive has to bear the name, too.
    if (!file.description.isEmpty())
        return QString(file.description).replace(QLatin1String("{}"), name);
    const QString whole = QStringLiteral("%1_1");
    return whole.arg(name.startsWith(QLatin1Char('.')) ? name
                                                       : name.section(QLatin1Char('.'), 0, 0));
}

QString storageFault(const ColumnSchema& column, const QString& name)
{
    const QString stored = storedName(column.files.constFirst(), name);
    const QStringList parts = holdsPaths(column)
        ? stored.split(QLatin1Char('/'), Qt::SkipEmptyParts)
        : QStringList {stored};
    for (const QString& part : parts) {
        QString fault = CachePaths::nameFault(part);
        if (!fault.isEmpty())
            return fault;
    }
    return {};
}

/** Names go into addresses as they stand. */
QString addressFault(const ColumnSchema& column, const QString& name)
{
    static const QRegularExpression special(
        QStringLiteral("#|%[0-9A-Fa-f]{2}|(?<![^/])\\.\\.?(?![^/])"));
    const auto found = special.match(name);
    if (found.hasMatch())
        return QStringLiteral("has \"%1\", which means something else in an address")
            .arg(found.captured());
    if (column.files.constFirst().address.isEmpty() && !name.startsWith(QLatin1Char('/')))
        return QStringLiteral("does not begin with \"/\" behind the server's name");
    return {};
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
    const QString stored = storageFault(column, name);
    if (!stored.isEmpty())
        return stored + QStringLiteral(", so not every system can keep the file");
    const QString asked = addressFault(column, name);
    return asked.isEmpty() ? QString()
                           : asked + QStringLiteral(", so a client asks for something else");
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
