#include "tidy/zTidyDatatable.h"

#include "datatable/CacheFolders.h"
#include "tidy/TidyPass.h"

namespace {

void walk(const QString& folder, const QStringList& names, TidyPlan* plan)
{
    TidyPass pass(QStringLiteral("tidy datatable"), folder, TidyPass::Files, plan);
    pass.run({TidyPass::Used, TidyPass::Removed, TidyPass::Delayed}, [&](const TidyEntry& entry) {
        if (names.contains(entry.name, Qt::CaseInsensitive))
            pass.keep(entry, TidyDecision::InUse, &TidyCounts::use);
        else
            pass.discard(entry, TidyDecision::NotInUse, QStringLiteral("remove"), entry.name);
    });
}

} // namespace

zTidyDatatable::zTidyDatatable()
    : m_folder(CacheFolders::tables())
{
}

void zTidyDatatable::setUseNames(const QStringList& names)
{
    m_useNames = names;
}

void zTidyDatatable::tidy()
{
    walk(m_folder, m_useNames, nullptr);
}

void zTidyDatatable::plan(const QStringList& names, TidyPlan& plan) const
{
    walk(m_folder, names, &plan);
}
