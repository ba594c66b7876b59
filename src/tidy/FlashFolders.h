#pragma once

#include "datatable/CacheNames.h"
#include "tidy/TidyPass.h"

#include <QMap>

/** What the tidying of "res/flash" and that of "res/flashext" have in common. */
namespace FlashFolders {

/**
 * Keeps of every flash the highest version met, which seen remembers as its text: true when the
 * entry is that one now. Of two versions the lower goes, unless recent; of two that are equal as
 * numbers both stay.
 */
bool keepHighest(TidyPass& pass, const TidyEntry& entry, const CacheNames::VersionedName& flash,
                 QMap<QString, QString>& seen);

/** Removes the old files of the folder "tmp" in this one, or plans to; a file of unknown age stays.
 */
void sweepTemporary(const QString& title, const QString& folder, TidyPlan* plan);

} // namespace FlashFolders
