#include "tidy/zTidyAnimation.h"

#include "datatable/CacheFolders.h"
#include "tidy/TidyPass.h"

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
    TidyPass pass(QStringLiteral("tidy animation"), m_folder, TidyPass::Folders);
    pass.run({TidyPass::Used, TidyPass::Removed, TidyPass::Delayed}, [&](const TidyEntry& entry) {
        if (!m_useNames.contains(entry.name)) {
            pass.discard(entry, QStringLiteral("remove"), entry.name);
            return;
        }
        ++pass.counts().use;
        pass.removeArchiveIfOld(entry);
    });
}
