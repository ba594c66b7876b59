#pragma once

#include "ZGlobalExport.h"

#include <QByteArray>
#include <QHash>
#include <QJsonArray>
#include <QString>

/** What reading a table file yields. */
struct TableRows
{
    QHash<QString, int> header; ///< column name to the column's index within a row
    QJsonArray rows;            ///< rows of cells; a null element is not a row

    /** Reads the file with the host's reader; false, with nothing changed, when it is no table. The
     *  cause is the host's, and an empty text where it tells none. */
    ZGLOBAL_EXPORT bool read(const QString& path, QString* cause = nullptr);
    ZGLOBAL_EXPORT bool read(const QByteArray& bytes, QString* cause = nullptr);

    /** How many there are of them that are not null. */
    ZGLOBAL_EXPORT int count() const;

    /** Calls use(row) for every element that is not null, in table order. */
    template <class Use>
    void forEachRow(Use&& use) const
    {
        for (const QJsonValue& row : rows) {
            if (!row.isNull())
                use(row.toArray());
        }
    }
};
