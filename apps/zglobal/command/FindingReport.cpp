#include "command/FindingReport.h"

#include "command/CommandLine.h"
#include "console/Failure.h"
#include "console/Literals.h"
#include "console/Readable.h"
#include "console/Terminal.h"

#include <QJsonObject>

#include <algorithm>

namespace {

using FindingReport::SheetRows;

constexpr int indent = 6; // of a finding's further lines

/** The row of the sheet that the finding is about; 0 when there is none. */
int sheetRowOf(const Finding& finding, const SheetRows& sheetRows)
{
    return sheetRows.value(finding.place.table).value(finding.place.row - 1);
}

QString textOf(const Finding& finding, int sheetRow)
{
    QStringList place;
    if (sheetRow > 0)
        place.append(u"row %1 (in the sheet %2)"_s.arg(QString::number(finding.place.row),
                                                       QString::number(sheetRow)));
    else if (finding.place.row > 0)
        place.append(u"row %1"_s.arg(finding.place.row));
    if (!finding.place.column.isEmpty())
        place.append(finding.place.column);
    const QString where = place.isEmpty() ? QString() : place.join(u", "_s) + u": "_s;
    return u"%1: %2%3 [%4]"_s.arg(Rules::word(finding.severity), where, finding.message,
                                  finding.rule);
}

QJsonObject objectOf(const Finding& finding)
{
    return {{u"rule"_s, finding.rule},           {u"severity"_s, Rules::word(finding.severity)},
            {u"table"_s, finding.place.table},   {u"row"_s, finding.place.row},
            {u"column"_s, finding.place.column}, {u"message"_s, finding.message}};
}

QStringList ruleNames()
{
    QStringList names;
    for (const RuleInfo& rule : Rules::all())
        names.append(QString::fromLatin1(rule.name));
    return names;
}

} // namespace

void FindingReport::print(const QVector<Finding>& findings, const SheetRows& sheetRows)
{
    QString table;
    bool isFirst = true;
    for (const Finding& finding : findings) {
        if (isFirst || finding.place.table != table) {
            table = finding.place.table;
            Terminal::print(Terminal::styled(
                Terminal::Bold, table.isEmpty() ? u"files"_s : Terminal::legible(table)));
        }
        isFirst = false;
        const QStringList lines =
            Terminal::wrapped(Terminal::legible(textOf(finding, sheetRowOf(finding, sheetRows))),
                              std::max(0, Terminal::width() - indent));
        for (const QString& line : lines)
            Terminal::print(QString(&line == &lines.constFirst() ? 2 : indent, QLatin1Char(' '))
                            + line);
    }
}

QJsonArray FindingReport::json(const QVector<Finding>& findings, const SheetRows& sheetRows)
{
    QJsonArray list;
    for (const Finding& finding : findings) {
        QJsonObject object = objectOf(finding);
        const int sheetRow = sheetRowOf(finding, sheetRows);
        if (sheetRow > 0)
            object.insert(u"sheetRow"_s, sheetRow);
        list.append(object);
    }
    return list;
}

int FindingReport::count(const QVector<Finding>& findings, Severity severity)
{
    return static_cast<int>(
        std::count_if(findings.begin(), findings.end(),
                      [severity](const Finding& finding) { return finding.severity == severity; }));
}

QString FindingReport::summary(const QVector<Finding>& findings)
{
    return u"%1, %2, %3"_s.arg(Readable::counted(count(findings, Severity::Error), u"error"_s),
                               Readable::counted(count(findings, Severity::Warning), u"warning"_s),
                               Readable::counted(count(findings, Severity::Hint), u"hint"_s));
}

QCommandLineOption FindingReport::allowOption()
{
    return {u"allow"_s, u"say nothing about this rule; may be given several times"_s, u"RULE"_s};
}

QStringList FindingReport::silencedBy(const QCommandLineParser& line)
{
    QStringList names = line.values(allowOption());
    for (const QString& name : qAsConst(names)) {
        if (!Rules::isName(name))
            throw UsageFailure(
                u"there is no rule \"%1\"%2; \"zglobal lint --rules\" lists them"_s.arg(
                    name, CommandLine::orNear(name, ruleNames())));
    }
    return names;
}
