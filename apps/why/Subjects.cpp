#include "why/Subjects.h"

#include "datatable/TableList.h"

#include <QFileInfo>
#include <QHash>
#include <QSet>

#include <algorithm>
#include <array>

namespace Why {
namespace {

using Tables = QVector<std::shared_ptr<const RawTable>>;

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

QVector<Subject> fitting(const QVector<Subject>& all, Fit fit, const QString& text)
{
    QVector<Subject> found;
    QSet<QPair<QString, QString>> known; // by table and id
    for (const Subject& subject : all) {
        const QPair<QString, QString> id(subject.table, subject.id);
        if (!fit(subject, text) || known.contains(id))
            continue;
        known.insert(id);
        found.append(subject);
    }
    return found;
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
    const TableDeclaration& declaration = *status.declaration;
    const auto& columns = declaration.schema().columns;
    const QString name = RawTable::nameColumn(declaration.schema());
    int keyPlace = -1;
    int namePlace = -1;
    for (int place = 0; place < columns.size(); ++place) {
        keyPlace = columns.at(place).name == declaration.schema().key ? place : keyPlace;
        namePlace = columns.at(place).name == name ? place : namePlace;
    }
    const auto text = [&declaration](const void* record, int place) {
        return place < 0 ? QString() : declaration.value(record, place).toString();
    };
    QVector<Subject> subjects;
    const TableSnapshot snapshot = declaration.snapshot();
    for (const void* record : snapshot.records)
        subjects.append({kind, status.table, text(record, keyPlace), text(record, namePlace)});
    return subjects;
}

QVector<Subject> find(const QString& kind, const Tables& tables, const QString& text)
{
    QVector<Subject> found;
    for (const auto& table : tables) { // most questions are about an id, and tables can be long
        if (const RawRow* row = table->find(text))
            found.append({kind, table->status().table, row->id, row->name});
    }
    if (!found.isEmpty())
        return found;
    QVector<Subject> all;
    for (const auto& table : tables)
        all += inFile(kind, *table);
    for (const auto& table : tables)
        all += held(kind, table->status());
    return answering(all, text);
}

/** Of a file that is not there, what matters is why it did not come. */
QString causeOf(const TableStatus& status)
{
    const QString& cause = status.lastFailure.cause;
    return status.size > 0 || cause.isEmpty() ? status.error : cause;
}

/** The essential table that failed, and why; empty when none has. */
QString startUpFault()
{
    for (const TableEntry& entry : tableList()) {
        if (!entry.essential)
            continue;
        const TableStatus status = statusOf(QString::fromLatin1(entry.reader.table));
        if (status.state == TableStatus::Failed)
            return QStringLiteral("%1: %2").arg(status.table, causeOf(status));
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

QString nothingFound(const QString& kind, const Tables& tables, const QString& text,
                     const Failures& failures)
{
    QStringList faults;
    for (const auto& table : tables) {
        const TableStatus& status = table->status();
        const QString fault = loadFault(status);
        if (!fault.isEmpty())
            faults.append(QStringLiteral("%1 is not loaded: %2").arg(status.table, fault));
        const QString failure = failureOf(status, failures);
        if (!failure.isEmpty())
            faults.append(QStringLiteral("%1: %2").arg(status.table, failure));
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

std::shared_ptr<const RawTable> readFile(const QString& table)
{
    return std::make_shared<const RawTable>(statusOf(table));
}

QStringList tablesOf(const QString& kind)
{
    static const QHash<QString, QStringList> tables {
        {QStringLiteral("gift"), {QStringLiteral("CS_GiftList")}},
        {QStringLiteral("frame"), {QStringLiteral("CS_HeadframeList")}},
        {QStringLiteral("banner"),
         {QStringLiteral("CS_BannerConfig"), QStringLiteral("CS_BannerConfigNew")}},
        {QStringLiteral("page"),
         {QStringLiteral("CS_BannerConfig"), QStringLiteral("CS_BannerConfigNew"),
          QStringLiteral("CS_VideoHobbyBanner"), QStringLiteral("H5WebConfig")}},
    };
    return tables.value(kind);
}

QVector<Subject> answering(const QVector<Subject>& all, const QString& text)
{
    QVector<Subject> found;
    for (const Fit fit : fits) {
        found = fitting(all, fit, text);
        if (!found.isEmpty())
            break;
    }
    return found;
}

Reply replyTo(const QString& kind, const QString& text, const Failures& failures,
              const Files& files, const Explain& explain)
{
    Tables tables;
    const QStringList names = tablesOf(kind);
    for (const QString& name : names)
        tables.append(files(name));
    const QVector<Subject> found = find(kind, tables, text);
    const bool isOne = std::all_of(found.begin(), found.end(), [&found](const Subject& subject) {
        return subject.id == found.constFirst().id;
    });
    Reply reply;
    if (found.isEmpty()) {
        reply.fault = nothingFound(kind, tables, text, failures);
        return reply;
    }
    if (!isOne) {
        reply.candidates = found;
        return reply;
    }
    for (const Subject& subject : found) {
        const RawTable& table = *tables.at(static_cast<int>(names.indexOf(subject.table)));
        reply.explanations.append(explain(subject, table));
        const QString failure = failureOf(table.status(), failures);
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
    return causeOf(status);
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
