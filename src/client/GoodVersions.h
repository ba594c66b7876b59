#pragma once

#include "datatable/EDataTable.h"

#include <QMap>
#include <QString>

/**
 * Which version of each table last loaded, and which did not, kept in "zglobal-versions.json" of
 * the working folder: a table that was published broken must not take away what was there.
 *
 * They hold for one content server; for another nothing is known.
 */
class GoodVersions
{
public:
    /** Reads the file; one that is missing, damaged or of another server tells nothing. */
    void read(const QString& server);

    /** The version that last loaded; -1 when none is known. */
    int good(EDataTable::EDataTableType type) const { return m_good.value(type, -1); }

    /** A version that was read and would not do. */
    struct Refusal
    {
        int version = -1; ///< -1 when none is known
        QString cause;
    };
    Refusal refused(EDataTable::EDataTableType type) const { return m_bad.value(type); }

    /** Whether this version has been refused. */
    bool isBad(EDataTable::EDataTableType type, int version) const;

    void noteGood(EDataTable::EDataTableType type, int version);
    void noteBad(EDataTable::EDataTableType type, int version, const QString& cause);

    /** Writes the file if anything is new; why that failed, or an empty text. */
    QString save();

private:
    QString m_server;
    QMap<int, int> m_good;
    QMap<int, Refusal> m_bad;
    bool m_changed = false;
};
