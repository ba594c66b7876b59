#include "why/Subjects.h"

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
    QVector<QVector<Subject>> sources;
    for (const RawTable& table : tables)
        sources.append(inFile(kind, table));
    QVector<Subject> found;
    for (const QVector<Subject>& source : sources)
        addFitting(source, fits.front(), text, found);
    if (!found.isEmpty())
        return found;
    for (const RawTable& table : tables)
        sources.append(held(kind, table.status()));
    for (const Fit fit : fits) {
        for (const QVector<Subject>& source : sources)
            addFitting(source, fit, text, found);
        if (!found.isEmpty())
            break;
    }
    return found;
}

QString nothingFound(const QString& kind, const QVector<RawTable>& tables, const QString& text)
{
    QStringList faults;
    for (const RawTable& table : tables) {
        const QString fault = loadFault(table.status());
        if (!fault.isEmpty())
            faults.append(QStringLiteral("%1 is not loaded: %2").arg(table.status().table, fault));
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

Reply replyTo(const QString& kind, const QStringList& tables, const QString& text,
              const Explain& explain)
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
        reply.fault = nothingFound(kind, files, text);
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
    explanation.ask(QStringLiteral("the row became a record"), true,
                    row == nullptr ? QString() : row->words);
}

Explanation explanationOf(const Subject& subject, const RawTable& table)
{
    Explanation explanation;
    explanation.subject = subject;
    explanation.origins = {table.origin(table.find(subject.id))};
    return explanation;
}

QString loadFault(const TableStatus& status)
{
    if (status.state == TableStatus::Loaded)
        return {};
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
