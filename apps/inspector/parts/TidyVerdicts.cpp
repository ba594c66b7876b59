#include "inspector/parts/TidyVerdicts.h"

#include "datatable/ZDataTableMgr.h"
#include "inspector/parts/Look.h"

#include <QDir>

namespace {

constexpr int spared = 7; // days, that nothing is removed for

QString folderOf(const QString& path)
{
    return path.left(qMax(0, static_cast<int>(path.lastIndexOf(u'/'))));
}

bool isIn(const TidyDecision& decision, const char* folder)
{
    return decision.path.startsWith(QLatin1String(folder), Qt::CaseInsensitive);
}

} // namespace

void TidyVerdicts::setPlan(const TidyPlan& plan)
{
    *this = {};
    m_isPlanned = true;
    const auto tables = ZDataTableMgr::getInstance()->getTableStatuses();
    for (const TableStatus& table : tables)
        m_tables.insert(QDir::cleanPath(table.path), table.table);
    for (const TidyFolder& folder : plan) {
        for (const TidyDecision& decision : folder.decisions)
            m_decisions.insert(QDir::cleanPath(decision.path), decision);
    }
    for (auto each = m_decisions.constBegin(); each != m_decisions.constEnd(); ++each) {
        const bool goes = each->action == TidyDecision::Remove;
        for (QString above = folderOf(each.key()); !above.isEmpty(); above = folderOf(above)) {
            Sum& sum = m_sums[above];
            ++sum.entries;
            sum.going += goes ? 1 : 0;
            sum.bytes += goes ? each->bytes : 0;
        }
    }
}

void TidyVerdicts::setRemoved(const QSet<QString>& paths)
{
    m_removed = paths;
    for (Sum& sum : m_sums)
        sum.removed = 0;
    for (const QString& path : paths) {
        for (QString above = folderOf(path); !above.isEmpty(); above = folderOf(above))
            ++m_sums[above].removed;
    }
}

TidyVerdict TidyVerdicts::of(const QString& path) const
{
    if (!m_isPlanned)
        return {};
    const auto own = m_decisions.constFind(path);
    const Sum sum = m_sums.value(path);
    if (sum.going > 0 && (own == m_decisions.constEnd() || own->action == TidyDecision::Keep))
        return {TidyVerdict::Mixed,
                sum.removed == 0 ? tr("%1 goes").arg(Look::size(sum.bytes))
                                 : tr("%1 of %2 removed").arg(sum.removed).arg(sum.going),
                tr("%1 of %2 entries in it").arg(sum.going).arg(sum.entries)};
    if (own != m_decisions.constEnd())
        return verdict(*own);
    if (sum.entries > 0)
        return {TidyVerdict::Stays, tr("stays"), tr("nothing in it is to go")};
    for (QString above = folderOf(path); !above.isEmpty(); above = folderOf(above)) {
        const auto decision = m_decisions.constFind(above);
        if (decision != m_decisions.constEnd())
            return verdict(*decision);
    }
    return {TidyVerdict::Untouched, tr("stays"), tr("tidying does not look here")};
}

QString TidyVerdicts::tableOf(const QString& path) const
{
    return m_tables.value(path);
}

QStringList TidyVerdicts::going() const
{
    QStringList paths;
    for (auto each = m_decisions.begin(); each != m_decisions.end(); ++each) {
        if (each->action == TidyDecision::Remove)
            paths.append(each.key());
    }
    return paths;
}

QString TidyVerdicts::summary() const
{
    if (!m_isPlanned)
        return {};
    Sum sum;
    for (auto each = m_decisions.begin(); each != m_decisions.end(); ++each) {
        const bool goes = each->action == TidyDecision::Remove;
        sum.going += goes ? 1 : 0;
        sum.bytes +=
            goes && (m_removed.isEmpty() || m_removed.contains(each.key())) ? each->bytes : 0;
    }
    if (sum.going == 0)
        return tr("A run would remove nothing");
    const QString words = m_removed.isEmpty() ? tr("A run would remove %1 of %2 entries, %3")
                                              : tr("Removed: %1 of %2 that were to go, %3");
    return words.arg(m_removed.isEmpty() ? sum.going : m_removed.size())
        .arg(m_removed.isEmpty() ? m_decisions.size() : sum.going)
        .arg(Look::size(sum.bytes));
}

TidyVerdict TidyVerdicts::verdict(const TidyDecision& decision) const
{
    if (m_removed.contains(QDir::cleanPath(decision.path)))
        return {TidyVerdict::Removed, tr("removed"), reason(decision)};
    if (decision.action == TidyDecision::Remove)
        return {TidyVerdict::Goes, tr("goes"), reason(decision)};
    return {TidyVerdict::Stays, tr("stays"), reasonToKeep(decision)};
}

QString TidyVerdicts::reason(const TidyDecision& decision)
{
    switch (decision.reason) {
    case TidyDecision::OtherVersion:
        return tr("the flash table names another version");
    case TidyDecision::LowerVersion:
        return tr("a higher version is there");
    case TidyDecision::Unpacked:
        return tr("an archive that has been unpacked");
    case TidyDecision::Temporary:
        return tr("left over from a download");
    default:
        return isIn(decision, "res/dataTable") ? tr("no table's current file")
                                               : tr("no gift plays it");
    }
}

QString TidyVerdicts::reasonToKeep(const TidyDecision& decision) const
{
    switch (decision.reason) {
    case TidyDecision::HighestVersion:
        return tr("not in the flash table, but no higher version is there");
    case TidyDecision::EqualVersion:
        return tr("as high a version as the highest");
    case TidyDecision::NoVersion:
        return tr("its name has no version, so nobody can tell what it is");
    case TidyDecision::Recent:
        return tr("nothing needs it, but it goes no earlier than %1")
            .arg(decision.modified.addDays(spared).toString(QStringLiteral("yyyy-MM-dd HH:mm")));
    case TidyDecision::UnknownAge:
        return tr("a download whose age cannot be told");
    default:
        if (isIn(decision, "res/dataTable"))
            return tr("the current file of %1")
                .arg(m_tables.value(QDir::cleanPath(decision.path), tr("a table")));
        return isIn(decision, "res/animation") ? tr("a gift plays it")
                                               : tr("the flash table names it");
    }
}
