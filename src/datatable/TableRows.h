#pragma once

#include "ZGlobalExport.h"

#include <QHash>
#include <QJsonArray>
#include <QString>

/** What reading a table file yields. */
struct TableRows
{
    QHash<QString, int> header; ///< column name to the column's index within a row
    QJsonArray rows;            ///< rows of cells; a null element is not a row

    /** Reads the file with the host's reader; false, with nothing changed, when it is no table. */
    ZGLOBAL_EXPORT bool read(const QString& path);

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
