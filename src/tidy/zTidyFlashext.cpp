#include "tidy/zTidyFlashext.h"

#include "datatable/CacheFolders.h"
#include "datatable/CacheNames.h"
#include "tidy/FlashFolders.h"
#include "tidy/TidyPass.h"

namespace {

QString title()
{
    return QStringLiteral("tidy flashext");
}

} // namespace

zTidyFlashext::zTidyFlashext()
    : m_folder(CacheFolders::extendedFlashes())
{
}

void zTidyFlashext::setUseNames(const QStringList& /*names*/) { }

void zTidyFlashext::tidy()
{
    TidyPass pass(title(), m_folder, TidyPass::Folders);
    pass.run(
        {TidyPass::Used, TidyPass::Removed, TidyPass::Delayed, TidyPass::Ignored},
        [&](const TidyEntry& entry) {
            const auto flash = CacheNames::VersionedName::split(entry.name);
            if (flash.isValid())
                FlashFolders::keepHighest(pass, entry, flash, m_seen);
            else
                ++pass.counts().ignored;
        },
        [&] { FlashFolders::sweepTemporary(title(), m_folder); });
}
