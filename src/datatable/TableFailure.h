#pragma once

#include <QDateTime>
#include <QMetaType>
#include <QString>

/** What went wrong with a published table, and when. */
struct TableFailure
{
    enum Step {
        None,     ///< nothing has gone wrong
        Download, ///< the request failed
        Content,  ///< what came in is no table
        Store,    ///< the file could not be written
        Load,     ///< the file could not be read, or the manager refused it
    };

    Step step = None;
    QString table;   ///< its name on the content server
    int kind = -1;   ///< value of EDataTable::EDataTableType, -1 for a table outside the catalogue
    int version = 0; ///< that was wanted
    QString address; ///< that was asked for, without query and user information; none for a load
    int httpStatus = 0; ///< where that is the cause of a failed request, else 0
    QString cause;      ///< in words that name the address or file
    QDateTime time;     ///< UTC
};

Q_DECLARE_METATYPE(TableFailure)
