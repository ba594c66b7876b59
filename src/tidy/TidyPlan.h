#pragma once

#include <QDateTime>
#include <QString>
#include <QVector>

/** What a tidying run does with a file or folder of the cache, and why. */
struct TidyDecision
{
    enum Action { Keep, Remove };
    enum Reason {
        InUse,          ///< kept: a table, a gift or the flash table names it
        HighestVersion, ///< kept: of a flash that is not in the table, no higher one was met
        EqualVersion,   ///< kept: as high as the highest
        NoVersion,      ///< kept: nobody can tell what a name without a version is
        Recent,         ///< kept for now: modified in the last seven days
        UnknownAge,     ///< kept: a temporary file whose age cannot be told
        NotInUse,       ///< removed: nothing names it
        OtherVersion,   ///< removed: the flash table has the flash in another version
        LowerVersion,   ///< removed: a higher version was met
        Unpacked,       ///< removed: the archive of a folder that is kept
        Temporary,      ///< removed: left over from a download
    };

    QString path;
    Action action = Keep;
    Reason reason = InUse;
    QDateTime modified; ///< what its age is counted from; not valid where it is unknown
    qint64 bytes = 0;   ///< of a folder with all that is in it
};

/** One folder of the cache. */
struct TidyFolder
{
    QString path;
    bool exists = false;
    QVector<TidyDecision> decisions; ///< for each entry, and each archive that goes out of one
};

/** All that a run looks at, in its order. */
using TidyPlan = QVector<TidyFolder>;
