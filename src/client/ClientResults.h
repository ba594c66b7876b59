#pragma once

#include "ZGlobalClientExport.h"
#include "datatable/EDataTable.h"
#include "datatable/TableStatus.h"

#include <QString>
#include <QVector>

/** Something that could not be done. */
struct ZClientFailure
{
    QString what; ///< a table, a file, an animation
    QString why;  ///< the cause, in words that name the address or file
};

/** What the service has told of the tables' versions. */
struct ZVersionNews
{
    int told = 0; ///< how many versions it told
    QVector<EDataTable::EDataTableType> changed;
};

/** One table before and after an update. */
struct ZTableChange
{
    enum Outcome {
        Current, ///< its file was there
        New,     ///< its file has come in
        Failed,  ///< the current version has no file; ZUpdateResult::failures tells why
    };

    TableStatus before; ///< with the version of then
    TableStatus after;
    bool wasThere = false; ///< whether the file of the version of now was on the disk already

    ZGLOBALCLIENT_EXPORT Outcome outcome() const;
};

/** What came of an update. */
struct ZUpdateResult
{
    QVector<ZTableChange> tables; ///< every table of the catalogue, in its order
    QVector<ZClientFailure> failures;
    int requests = 0;
    qint64 bytes = 0; ///< received
};

/** What came of a run of downloads of the flash animations. */
struct ZFlashResult
{
    int downloads = 0;                ///< how many were missing and asked for
    QVector<ZClientFailure> failures; ///< the animations that are missing still
};
