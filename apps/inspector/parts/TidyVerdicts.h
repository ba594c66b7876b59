#pragma once

#include "tidy/TidyPlan.h"

#include <QCoreApplication>
#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>

/** What tidying does with an entry of the cache, in words. */
struct TidyVerdict
{
    enum State {
        Unknown,   ///< nothing is planned yet
        Untouched, ///< tidying does not look there
        Stays,
        Goes,
        Removed,
        Mixed, ///< a folder that stays, with entries that go
    };

    State state = Unknown;
    QString what;
    QString why;
};

/** A plan of tidying as verdicts about files and folders, and what has become of it. */
class TidyVerdicts
{
    Q_DECLARE_TR_FUNCTIONS(TidyVerdicts)

public:
    void setPlan(const TidyPlan& plan);

    /** Of any path in the cache: what is in a folder shares its fate. */
    TidyVerdict of(const QString& path) const;

    /** The table whose current file this is; empty for any other. */
    QString tableOf(const QString& path) const;

    /** All that goes by the plan; what of that is gone already. */
    QStringList going() const;
    void setRemoved(const QSet<QString>& paths);

    /** "A run would remove 3 of 40 entries, 1.2 MB", or what of that is gone. */
    QString summary() const;

private:
    struct Sum
    {
        int entries = 0;
        int going = 0;
        int removed = 0;
        qint64 bytes = 0;
    };

    TidyVerdict verdict(const TidyDecision& decision) const;
    static QString reason(const TidyDecision& decision);
    QString reasonToKeep(const TidyDecision& decision) const;

    bool m_isPlanned = false;
    QHash<QString, TidyDecision> m_decisions; // by path, cleaned
    QHash<QString, Sum> m_sums;               // by folder, of all that is in it
    QHash<QString, QString> m_tables;         // by the path of the current file
    QSet<QString> m_removed;
};
