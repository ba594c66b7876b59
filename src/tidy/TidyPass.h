#pragma once

#include <QString>

#include <functional>

enum class TidyAge {
    Unknown, ///< neither old nor recent; each rule says which way it falls
    Recent,
    Old, ///< not modified for seven days
};

/** A file or sub-folder that a pass meets. */
struct TidyEntry
{
    QString path;
    QString name;
    TidyAge age = TidyAge::Unknown;
};

/** What became of the entries of one pass. */
struct TidyCounts
{
    int use = 0;
    int removed = 0;
    int delayed = 0;
    int ignored = 0;
};

/**
 * One pass over the entries of one folder, for the tidying thread: the walk with its pauses, the
 * removals, and the log lines, each of which begins with the title.
 *
 * When the thread is asked to end, the pass stops where it is, inside the removal of a folder too,
 * and writes no further line; the next run of the program finds what is left.
 */
class TidyPass
{
public:
    enum Kind { Files, Folders };

    TidyPass(const QString& title, const QString& folder, Kind kind);

    const QString& folder() const { return m_folder; }

    /** Logs the start; false, and the log says why, when there is nothing to walk. */
    bool begin() const;

    /** Calls visit for each entry; false when the thread was asked to end. */
    bool walk(const std::function<void(const TidyEntry&)>& visit) const;

    /**
     * The entry with its age: a file's own, for a folder that of the entry inside which bears its
     * name without the version. Unknown where there is no such entry or the name has no version.
     */
    TidyEntry entry(const QString& path, const QString& name) const;

    /**
     * Removes the entry unless it is recent. It counts as removed whatever comes of the removal,
     * which is logged as action with shown and the result.
     */
    void discard(const TidyEntry& entry, const QString& action, const QString& shown,
                 TidyCounts& counts) const;

    /** Removes the archive in an old folder, the file that bears its whole name; logs a failure. */
    void removeArchiveIfOld(const TidyEntry& entry) const;

    void log(const QString& text) const;
    void logRemoval(const QString& action, const QString& shown, bool result) const;

private:
    QString m_title;
    QString m_folder;
    Kind m_kind;
};
