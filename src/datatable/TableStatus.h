#pragma once

#include "datatable/TableFailure.h"
#include "datatable/TableSchema.h"

#include <QString>

/** A published table as it stands now: its file, who reads it, what became of the last load. */
struct TableStatus
{
    enum State {
        NotLoaded, ///< no load has been tried through ZDataTableMgr
        Loaded,    ///< the last load succeeded
        Failed,    ///< the last load failed
    };

    int kind = -1;   ///< value of EDataTable::EDataTableType, -1 for a table outside the catalogue
    QString table;   ///< its name on the content server
    int version = 0; ///< 0 when none is known
    QString path;    ///< where the file of this version lies; empty outside the catalogue
    qint64 size = 0; ///< of that file, 0 when it is missing
    QString error;   ///< why its last load or, before that, its last update failed; else empty
    TableFailure lastFailure; ///< of its download or store, mended since or not

    QString manager;            ///< the class that holds its records; empty when none reads it
    QString loader;             ///< the manager's loading operation
    bool loadedAtStart = false; ///< whether ZDataTableMgr::loadAllTables() loads it
    State state = NotLoaded;
    const TableDeclaration* declaration = nullptr; ///< null when no manager reads the table
};
