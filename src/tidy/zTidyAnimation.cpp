#include "tidy/zTidyAnimation.h"

#include "datatable/CacheFolders.h"
#include "tidy/TidyPass.h"

namespace {

void walk(const QString& folder, const QSet<QString>& names, TidyPlan* plan)
{
    TidyPass pass(QStringLiteral("tidy animation"), folder, TidyPass::Folders, plan);
    pass.run({TidyPass::Used, TidyPass::Removed, TidyPass::Delayed}, [&](const TidyEntry& entry) {
        if (!names.contains(entry.name)) {
            pass.discard(entry, TidyDecision::NotInUse, QStringLiteral("remove"), entry.name);
            return;
        }
        pass.keep(entry, TidyDecision::InUse, &TidyCounts::use);
        pass.removeArchiveIfOld(entry);
    });
}

} // namespace

zTidyAnimation::zTidyAnimation()
    : m_folder(CacheFolders::animations())
{
}

void zTidyAnimation::setUseNames(const QSet<QString>& names)
{
    m_useNames = names;
}

void zTidyAnimation::tidy()
{
    walk(m_folder, m_useNames, nullptr);
}

void zTidyAnimation::plan(const QSet<QString>& names, TidyPlan& plan) const
{
    walk(m_folder, names, &plan);
}
