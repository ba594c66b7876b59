#include "why/Subjects.h"

#include "datatable/TableList.h"

#include <QFileInfo>

#include <algorithm>
#include <array>

namespace Why {
namespace {

constexpr auto anyCase = Qt::CaseInsensitive;

/** How well a thing answers to a text, the best first. */
using Fit = bool (*)(const Subject& subject, const QString& text);
constexpr std::array<Fit, 4> fits {
    [](const Subject& subject, const QString& text) { return subject.id == text; },
    [](const Subject& subject, const QString& text) {
        return subject.id.compare(text, anyCase) == 0;
    },
    [](const Subject& subject, const QString& text) {
        return subject.name.compare(text, anyCase) == 0;
    },
    [](const Subject& subject, const QString& text) {
        return subject.id.contains(text, anyCase) || subject.name.contains(text, anyCase);
    },
};

bool isSame(const Subject& left, const Subject& right)
{
    return left.table == right.table && left.id == right.id;
}

void addFitting(const QVector<Subject>& all, Fit fit, const QString& text, QVector<Subject>& found)
{
    for (const Subject& subject : all) {
        const bool isFound =
            std::any_of(found.begin(), found.end(),
                        [&subject](const Subject& other) { return isSame(subject, other); });
        if (!isFound && fit(subject, text))
            found.append(subject);
    }
}

QVector<Subject> inFile(const QString& kind, const RawTable& table)
{
    QVector<Subject> subjects;
    for (const RawRow& row : table.rows()) {
        if (row.fate != RawRow::NoRow)
            subjects.append({kind, table.status().table, row.id, row.name});
    }
    return subjects;
}

/** What the manager holds, of an earlier file maybe. */
QVector<Subject> held(const QString& kind, const TableStatus& status)
{
    const TableSchema& schema = status.declaration->schema();
    const QString name = RawTable::nameColumn(schema);
    const auto text = [](const QJsonObject& record, const QString& column) {
        return record.value(column).toVariant().toString();
    };
    QVector<Subject> subjects;
    const QJsonArray records = status.declaration->records();
    for (const QJsonValue& value : records) {
        const QJsonObject record = value.toObject();
        subjects.append({kind, status.table, text(record, schema.key), text(record, name)});
    }
    return subjects;
}

QVector<Subject> find(const QString& kind, const QVector<RawTable>& tables, const QString& text)
{
    QVector<Subject> all;
    for (const RawTable& table : tables)
        all += inFile(kind, table);
    QVector<Subject> found;
    addFitting(all, fits.front(), text, found);
    if (!found.isEmpty())
        return found;
    for (const RawTable& table : tables)
        all += held(kind, table.status());
    return answering(all, text);
}

/** The essential table that failed, and why; empty when none has. */
QString startUpFault()
{
    for (const TableEntry& entry : tableList()) {
        const TableStatus status = statusOf(QString::fromLatin1(entry.reader.table));
        if (entry.essential && status.state == TableStatus::Failed)
            return QStringLiteral("%1: %2").arg(status.table, status.error);
    }
    return {};
}

/** What the client knows of a table that loaded in an earlier version only. */
QString failureOf(const TableStatus& status, const Failures& failures)
{
    const auto found =
        std::find_if(failures.begin(), failures.end(), [&status](const ZClientFailure& failure) {
            return failure.what == status.table;
        });
    const bool isLoaded = status.state == TableStatus::Loaded;
    return isLoaded && found != failures.end() ? found->why : QString();
}

QString nothingFound(const QString& kind, const QVector<RawTable>& tables, const QString& text,
                     const Failures& failures)
{
    QStringList faults;
    for (const RawTable& table : tables) {
        const QString fault = loadFault(table.status());
        if (!fault.isEmpty())
            faults.append(QStringLiteral("%1 is not loaded: %2").arg(table.status().table, fault));
        const QString failure = failureOf(table.status(), failures);
        if (!failure.isEmpty())
            faults.append(QStringLiteral("%1: %2").arg(table.status().table, failure));
    }
    const QString nothing =
        QStringLiteral("no %1 has the id \"%2\", or a name with that in it").arg(kind, text);
    return faults.isEmpty() ? nothing
                            : nothing + QStringLiteral("; ") + faults.join(QStringLiteral("; "));
}

/** Of a thing that the manager does not hold. */
void askForRow(Explanation& explanation, const RawTable& table)
{
    const RawRow* row = table.find(explanation.subject.id);
    const QString key = table.table().schema().key;
    const int count = static_cast<int>(table.rows().size());
    explanation.ask(QStringLiteral("a row has this %1").arg(key), row != nullptr,
                    row == nullptr ? QStringLiteral("none of %1 rows has it").arg(count)
                                   : QStringLiteral("row %1").arg(row->row.number));
    const QString became = QStringLiteral("the row became a record");
    if (row == nullptr)
        explanation.ask(became, false, QString());
    else if (row->fate == RawRow::Record)
        explanation.ask(
            became, false,
            QStringLiteral("row %1 is in a file that is not loaded yet").arg(row->row.number));
    else
        explanation.ask(
            became, false,
            QStringLiteral("row %1 is %2").arg(QString::number(row->row.number), row->words));
}

} // namespace

QVector<Subject> answering(const QVector<Subject>& all, const QString& text)
{
    QVector<Subject> found;
    for (const Fit fit : fits) {
        addFitting(all, fit, text, found);
        if (!found.isEmpty())
            break;
    }
    return found;
}

Reply replyTo(const QString& kind, const QStringList& tables, const QString& text,
              const Failures& failures, const Explain& explain)
{
    QVector<RawTable> files;
    for (const QString& table : tables)
        files.append(RawTable(statusOf(table)));
    const QVector<Subject> found = find(kind, files, text);
    const bool isOne = std::all_of(found.begin(), found.end(), [&found](const Subject& subject) {
        return subject.id == found.constFirst().id;
    });
    Reply reply;
    if (found.isEmpty()) {
        reply.fault = nothingFound(kind, files, text, failures);
        return reply;
    }
    if (!isOne) {
        reply.candidates = found;
        return reply;
    }
    for (const Subject& subject : found) {
        const auto file = std::find_if(files.begin(), files.end(), [&](const RawTable& table) {
            return table.status().table == subject.table;
        });
        reply.explanations.append(explain(subject, *file));
        const QString failure = failureOf(file->status(), failures);
        if (!failure.isEmpty())
            reply.explanations.last().remarks.append({subject.table, failure});
    }
    return reply;
}

void askForRecord(Explanation& explanation, const RawTable& table, bool isHeld)
{
    const TableStatus& status = table.status();
    const QString fault = loadFault(status);
    const QString version =
        QStringLiteral("version %1, %2 rows, %3 records")
            .arg(QString::number(status.version), QString::number(table.rows().size()),
                 QString::number(status.declaration->recordCount()));
    const QString loaded = QStringLiteral("%1 is loaded").arg(status.table);
    if (isHeld && !fault.isEmpty())
        explanation.ask(loaded, true,
                        QStringLiteral("by an earlier load; the last failed: %1").arg(fault));
    else
        explanation.ask(loaded, fault.isEmpty(), fault.isEmpty() ? version : fault);
    if (!isHeld) {
        askForRow(explanation, table);
        return;
    }
    const RawRow* row = table.find(explanation.subject.id);
    const QString key = table.table().schema().key;
    explanation.ask(QStringLiteral("a row has this %1").arg(key), true,
                    row == nullptr ? QStringLiteral("the file on disk has it no more")
                                   : QStringLiteral("row %1").arg(row->row.number));
    explanation.ask(QStringLiteral("the row became a record"), true, QString());
}

Explanation explanationOf(const Subject& subject, const RawTable& table)
{
    Explanation explanation;
    explanation.subject = subject;
    const RawRow* answering = table.find(subject.id);
    explanation.origins = {table.origin(answering)};
    for (const RawRow& row : table.rows()) {
        if (&row != answering && row.id == subject.id && row.fate != RawRow::NoRow)
            explanation.remarks.append({QStringLiteral("row %1").arg(row.row.number), row.words});
    }
    return explanation;
}

QString loadFault(const TableStatus& status)
{
    if (status.state == TableStatus::Loaded)
        return {};
    const QString ended = status.loadedAtStart ? startUpFault() : QString();
    if (status.state == TableStatus::NotLoaded && !ended.isEmpty())
        return QStringLiteral("the start-up ended before it, with %1").arg(ended);
    if (status.state == TableStatus::NotLoaded && status.error.isEmpty())
        return QStringLiteral("nobody has loaded it yet");
    return status.error;
}

Resource resourceAt(const QString& what, const QString& path, const QString& address)
{
    const auto state = QFileInfo::exists(path) ? Resource::There : Resource::NotFetched;
    return {what, state, path, address, QString()};
}

Resource noResource(const QString& what, const QString& cause)
{
    return {what, Resource::None, QString(), QString(), cause};
}

QString called(const Subject& subject)
{
    return subject.name.isEmpty() ? subject.id
                                  : QStringLiteral("%1 “%2”").arg(subject.id, subject.name);
}

} // namespace Why
