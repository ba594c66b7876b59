#include "datatable/ZDataTableMgr.h"
#include "why/Subjects.h"
#include "why/Why.h"

#include <QLocale>

#include <algorithm>
#include <array>

namespace {

const auto anyCase = Qt::CaseInsensitive;

QVector<TableStatus> tablesCalled(const QString& name)
{
    const QVector<TableStatus> all = ZDataTableMgr::getInstance()->getTableStatuses();
    const auto those = [&all](const auto& fits) {
        QVector<TableStatus> found;
        std::copy_if(all.begin(), all.end(), std::back_inserter(found), fits);
        return found;
    };
    const QVector<TableStatus> exact = those([&name](const TableStatus& table) {
        const bool byKind = table.kind >= 0 && QString::number(table.kind) == name;
        return byKind || table.table.compare(name, anyCase) == 0;
    });
    if (!exact.isEmpty())
        return exact;
    return those([&name](const TableStatus& table) { return table.table.contains(name, anyCase); });
}

QString lastFailure(const TableFailure& failure)
{
    constexpr std::array<const char*, 5> steps {"", "download", "content", "store", "load"};
    QString text =
        QStringLiteral("%1 of version %2 at %3: %4")
            .arg(QLatin1String(steps.at(failure.step)), QString::number(failure.version),
                 failure.time.toLocalTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")),
                 failure.cause);
    if (failure.httpStatus > 0)
        text += QStringLiteral(" (status %1)").arg(failure.httpStatus);
    return text;
}

QString counts(const Why::RawTable& raw)
{
    struct Count
    {
        Why::RawRow::Fate fate;
        const char* words;
    };
    constexpr std::array<Count, 4> all {{{Why::RawRow::LeftOut, "left out"},
                                         {Why::RawRow::Overwritten, "overwritten by a later row"},
                                         {Why::RawRow::NoRow, "no row"},
                                         {Why::RawRow::Refused, "refused with the table"}}};
    QStringList parts;
    for (const Count& part : all) {
        const int count = raw.count(part.fate);
        if (count > 0)
            parts.append(
                QStringLiteral("%1 %2").arg(QString::number(count), QLatin1String(part.words)));
    }
    return QStringLiteral("%1 rows%2%3")
        .arg(QString::number(raw.rows().size()), parts.isEmpty() ? QString() : QStringLiteral(": "),
             parts.join(QStringLiteral(", ")));
}

void ask(const Why::RawTable& raw, Why::Explanation& explanation)
{
    const TableStatus& status = raw.status();
    const Why::Origin& file = explanation.origins.constFirst();
    const bool isThere = file.modified.isValid();
    // The one that a load removed is told by what was wrong with it.
    const QString missing =
        status.state == TableStatus::Failed && !status.error.isEmpty() ? status.error : raw.fault();
    explanation.ask(
        QStringLiteral("its file is there"), isThere,
        isThere ? QStringLiteral("%1, version %2, %3 bytes")
                      .arg(file.file, QString::number(file.version), QString::number(file.size))
                : missing);
    explanation.ask(QStringLiteral("the file is a table"), raw.table().error().isEmpty(),
                    raw.table().error().isEmpty() ? counts(raw) : raw.fault());
    if (status.declaration == nullptr)
        return;
    explanation.ask(QStringLiteral("it has every column that is wanted"), raw.fault().isEmpty(),
                    raw.fault().isEmpty()
                        ? QStringLiteral("%1 columns").arg(raw.table().header().size())
                        : raw.fault());
    explanation.ask(
        QStringLiteral("its manager has loaded it"), status.state == TableStatus::Loaded,
        status.state == TableStatus::Loaded
            ? QStringLiteral("%1 holds %2 records")
                  .arg(status.manager, QString::number(status.declaration->recordCount()))
            : Why::loadFault(status));
}

Why::Explanation explain(const TableStatus& status, const Why::Failures& failures)
{
    const Why::RawTable raw(status);
    Why::Explanation explanation;
    explanation.subject = {QStringLiteral("table"), status.table, status.table, QString()};
    explanation.origins = {raw.origin()};
    ask(raw, explanation);
    explanation.holds = !explanation.isDecided() && status.declaration != nullptr;
    if (explanation.isDecided())
        explanation.verdict =
            QStringLiteral("%1 is not loaded: %2")
                .arg(status.table, explanation.steps.at(explanation.deciding).value);
    else if (status.declaration == nullptr)
        explanation.verdict =
            QStringLiteral("%1 is there, but no manager reads it").arg(status.table);
    else
        explanation.verdict = QStringLiteral("%1 is loaded: %2")
                                  .arg(status.table, explanation.steps.constLast().value);
    if (status.declaration != nullptr)
        explanation.remarks.append(
            {QStringLiteral("read by"),
             QStringLiteral("%1::%2%3")
                 .arg(status.manager, status.loader,
                      status.loadedAtStart ? QString() : QStringLiteral(", on demand"))});
    for (const ZClientFailure& failure : failures) {
        if (failure.what == status.table && failure.why != status.error)
            explanation.remarks.append({QStringLiteral("failure"), failure.why});
    }
    if (status.lastFailure.step != TableFailure::None)
        explanation.remarks.append(
            {QStringLiteral("last failure"), lastFailure(status.lastFailure)});
    return explanation;
}

} // namespace

Why::Reply Why::table(const QString& name, const Failures& failures)
{
    const QVector<TableStatus> found = tablesCalled(name);
    Reply reply;
    if (found.isEmpty())
        reply.fault = QStringLiteral("there is no table \"%1\"").arg(name);
    else if (found.size() == 1)
        reply.explanations.append(explain(found.constFirst(), failures));
    else
        for (const TableStatus& status : found)
            reply.candidates.append(
                {QStringLiteral("table"), status.table, status.table, QString()});
    return reply;
}
