#pragma once

#include "ZNetWorkExport.h"

#include <QStringList>
#include <QtPromise>

/** The host's picture cache in "res/images/" below the working directory. GUI thread only. */
class ZNETWORK_EXPORT ZImageCacheUtil
{
public:
    /** Fetches the missing pictures of these addresses; fulfilled when all are there. */
    static QtPromise::QPromise<void> preloadList(const QStringList& urls);
};
