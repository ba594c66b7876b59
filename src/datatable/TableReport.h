#pragma once

#include "datatable/TableDescription.h"

#include <QString>

/** One published table as the running library sees it: for status views and the column reference.
 */
struct TableReport
{
    enum State {
        NotLoaded, ///< no load has been tried through ZDataTableMgr
        Loaded,    ///< the last load succeeded
        Failed,    ///< the last load failed
    };

    int kind = -1;   ///< value of EDataTable::EDataTableType, -1 for a table outside the catalogue
    QString table;   ///< its name on the content server
    QString manager; ///< the class that holds its records; empty when no manager reads the table
    QString loader;  ///< the manager's loading operation
    bool loadedAtStart = false; ///< whether ZDataTableMgr::loadAllTables loads it
    State state = NotLoaded;
    TableDescription description;
};
