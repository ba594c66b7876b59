#pragma once

#include <QString>

#include <functional>
#include <initializer_list>

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
 * removals, the counts, and the log lines, each of which begins with the title.
 *
 * When the thread is asked to end, the pass stops where it is, inside the removal of a folder too,
 * and writes no further line; the next run of the program finds what is left.
 */
class TidyPass
{
public:
    enum Kind { Files, Folders };
    enum Count { Used, Removed, Delayed, Ignored };

    TidyPass(const QString& title, const QString& folder, Kind kind);

    const QString& folder() const { return m_folder; }

    /** What has become of the entries so far. */
    TidyCounts& counts() { return m_counts; }

    /**
     * Logs the start, does what is to be done before the walk, calls visit for each entry, and logs
     * the end with the counts named. Without anything to walk the log says why, and that is all.
     */
    void run(std::initializer_list<Count> shown, const std::function<void(const TidyEntry&)>& visit,
             const std::function<void()>& beforehand = {});

    /**
     * The entry with its age: a file's own, for a folder that of the entry inside which bears its
     * name without the version. Unknown where there is no such entry or the name has no version.
     */
    TidyEntry entry(const QString& path, const QString& name) const;

    /**
     * Removes the entry unless it is recent. It counts as removed whatever comes of the removal,
     * which is logged as action with shown and the result.
     */
    void discard(const TidyEntry& entry, const QString& action, const QString& shown);

    /** Removes the archive in an old folder, the file that bears its whole name; logs a failure. */
    void removeArchiveIfOld(const TidyEntry& entry) const;

    void logRemoval(const QString& action, const QString& shown, bool result) const;

private:
    bool begin() const;
    bool walk(const std::function<void(const TidyEntry&)>& visit) const;
    void logEnd(std::initializer_list<Count> shown) const;
    void log(const QString& text) const;

    QString m_title;
    QString m_folder;
    Kind m_kind;
    TidyCounts m_counts;
};
