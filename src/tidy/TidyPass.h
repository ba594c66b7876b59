#pragma once

#include "tidy/TidyPlan.h"

#include <QHash>
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
    QDateTime modified {}; // not valid where it is unknown
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
 * removals, the counts, and the log lines, each of which begins with the title. A pass for a plan
 * takes the same decisions and notes them there instead: no removal, no pause, no line.
 *
 * When the thread is asked to end, the pass stops where it is, inside the removal of a folder too,
 * and writes no further line; the next run of the program finds what is left.
 */
class TidyPass
{
public:
    enum Kind { Files, Folders };
    enum Count { Used, Removed, Delayed, Ignored };

    TidyPass(const QString& title, const QString& folder, Kind kind, TidyPlan* plan = nullptr);

    const QString& folder() const { return m_folder; }

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

    /** Leaves the entry and counts it, if there is a count for it. */
    void keep(const TidyEntry& entry, TidyDecision::Reason reason, int TidyCounts::*count);

    /**
     * Removes the entry unless it is recent. It counts as removed whatever comes of the removal,
     * which is logged as action with shown and the result.
     */
    void discard(const TidyEntry& entry, TidyDecision::Reason reason, const QString& action,
                 const QString& shown);

    /** Removes a temporary file if it is old; only a failure is logged. */
    void discardTemporary(const TidyEntry& entry);

    /** Removes the archive in an old folder, the file that bears its whole name; logs a failure. */
    void removeArchiveIfOld(const TidyEntry& entry);

private:
    bool begin();
    bool walk(const std::function<void(const TidyEntry&)>& visit) const;
    void logEnd(std::initializer_list<Count> shown) const;
    void logRemoval(const QString& action, const QString& shown, bool result) const;
    void log(const QString& text) const;
    void note(const QString& path, TidyDecision::Action action, TidyDecision::Reason reason,
              const QDateTime& modified);
    /** What goes with the folder that it is in is a part of that. */
    void joinWhatGoesWhole();

    QString m_title;
    QString m_folder;
    Kind m_kind;
    TidyCounts m_counts;
    TidyPlan* m_plan;
    TidyFolder m_noted;
    QHash<QString, int> m_places; // by path, of what is noted
};
