#pragma once

#include "command/CommandLine.h"
#include "datatable/ZDataTableMgr.h"

#include <QRegularExpression>
#include <QStringList>

/** What may stand for a placeholder of the help, such as "DIR" or "KIND". */
namespace Values {

inline QStringList folders()
{
    return {QStringLiteral("DIR"), QStringLiteral("OUT")};
}
inline QStringList files()
{
    return {QStringLiteral("FILE"), QStringLiteral("OLD"), QStringLiteral("NEW"),
            QStringLiteral("SRC")};
}
inline QStringList tables()
{
    return {QStringLiteral("KIND"), QStringLiteral("TABLE")};
}

/** The placeholders of a command's arguments, without the signs that one may be left out; for what
 *  is chosen from a list the choices, "|" between them. */
inline QStringList placeholders(const Command& command)
{
    static const QRegularExpression word(QStringLiteral("[A-Z]+"));
    QStringList found;
    auto words = word.globalMatch(command.arguments);
    while (words.hasNext())
        found.append(words.next().captured());
    if (!command.choices.isEmpty())
        found.first() = command.choices.join(QLatin1Char('|'));
    return found;
}

inline QStringList tableNames()
{
    QStringList names;
    const QVector<TableStatus> tables = ZDataTableMgr::getInstance()->getTableStatuses();
    for (const TableStatus& status : tables)
        names.append(status.table);
    return names;
}

} // namespace Values
