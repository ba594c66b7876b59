#include "tidy/zTidyDatatable.h"

#include "datatable/CacheFolders.h"
#include "tidy/TidyPass.h"

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
    TidyPass pass(QStringLiteral("tidy datatable"), m_folder, TidyPass::Files);
    pass.run({TidyPass::Used, TidyPass::Removed, TidyPass::Delayed}, [&](const TidyEntry& entry) {
        if (m_useNames.contains(entry.name, Qt::CaseInsensitive))
            ++pass.counts().use;
        else
            pass.discard(entry, QStringLiteral("remove"), entry.name);
    });
}
