#include "tidy/zTidyFlashext.h"

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
    : m_folder(QStringLiteral("res/flashext"))
{
}

void zTidyFlashext::tidy()
{
    const TidyPass pass(title(), m_folder, TidyPass::Folders);
    if (!pass.begin())
        return;
    FlashFolders::sweepTemporary(title(), m_folder);
    TidyCounts counts;
    const bool finished = pass.walk([&](const TidyEntry& entry) {
        const auto flash = CacheNames::VersionedName::split(entry.name);
        if (flash.isValid())
            FlashFolders::keepHighest(pass, entry, flash, m_seen, counts);
        else
            ++counts.ignored;
    });
    if (finished)
        FlashFolders::logEnd(pass, counts);
}
