#pragma once

#include "ZNetWorkExport.h"

#include <QStringList>
#include <QtPromise>

/**
 * The host's picture cache: the folder "res/images/" below the working directory, one file for each
 * address, named by the upper-case hexadecimal MD5 digest of the address in UTF-8. GUI thread only.
 */
class ZNETWORK_EXPORT ZImageCacheUtil
{
public:
    /**
     * Fetches the missing pictures of these addresses; fulfilled when all are there.
     *
     * A picture is there when its file is and is not empty. Each file is written whole or not at
     * all. The pictures are fetched in the background, see ZHttpComm. An address is fetched once,
     * though it may stand in a list twice or in several lists at a time; an empty address names no
     * picture and is passed over.
     *
     * Rejected with a zErrorInfo when a picture could not be fetched or stored, but only after
     * all the others have been tried. The message tells how many failed and why the first of the
     * list did. No picture is an empty body, nor a web page: a text whose first element, after
     * comments and the like, is "html", its doctype or what stands in its head. Everything else is
     * taken, for the client's pictures are of many formats, vector graphics and films among them.
     */
    static QtPromise::QPromise<void> preloadList(const QStringList& urls);
};
