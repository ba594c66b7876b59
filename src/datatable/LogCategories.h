#pragma once

#include "ZGlobalExport.h"

#include <QLoggingCategory>

/**
 * The parts of the library's log, for QLoggingCategory's rules: "zglobal.tidy.info=false" silences
 * one part, "zglobal.*=false" all. Without a rule every line is told. Any thread.
 */
namespace LogCategories {

/** "zglobal.update": table files that are asked for, stored, or not. */
ZGLOBAL_EXPORT const QLoggingCategory& update();

/** "zglobal.load": table files that are read, and what is wrong with what they hold. */
ZGLOBAL_EXPORT const QLoggingCategory& load();

/** "zglobal.resource": pictures and animations that the tables name. */
ZGLOBAL_EXPORT const QLoggingCategory& resource();

/** "zglobal.tidy": what is removed from the cache. */
ZGLOBAL_EXPORT const QLoggingCategory& tidy();

} // namespace LogCategories
