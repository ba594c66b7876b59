#pragma once

#include <QStringList>
#include <QtPromise>

class ZImageCacheUtil
{
public:
    static QtPromise::QPromise<void> preloadList(const QStringList& urls);
};
