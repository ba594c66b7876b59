#pragma once

#include "lint/Findings.h"

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QHash>
#include <QJsonArray>
#include <QString>
#include <QStringList>
#include <QVector>

/** What was found in content, as commands print it. */
namespace FindingReport {

/** For tables that were made of sheets: for each row of the table, that of the sheet. */
using SheetRows = QHash<QString, QVector<int>>;

/** On standard output, by table. */
void print(const QVector<Finding>& findings, const SheetRows& sheetRows = {});

QJsonArray json(const QVector<Finding>& findings, const SheetRows& sheetRows = {});

int count(const QVector<Finding>& findings, Severity severity);

/** "1 error, 0 warnings, 2 hints". */
QString summary(const QVector<Finding>& findings);

/** --allow, and the rules that it names; throws a UsageFailure where there is no such rule. */
QCommandLineOption allowOption();
QStringList silencedBy(const QCommandLineParser& line);

} // namespace FindingReport
