#pragma once

#include "ZGlobalExport.h"
#include "datatable/EDataTable.h"
#include "datatable/TableSchema.h"

#include <QString>
#include <QVector>

#include <algorithm>

/** Who reads a table, and how. */
struct TableReader
{
    int kind; ///< value of EDataTable::EDataTableType, -1 for a table outside the catalogue
    const char* table;
    const char* manager;
    const char* loader;
    bool (*load)(const QString& path);
    const TableDeclaration& (*declaration)();
};

/** A table that is read, and its place in the start-up load. */
struct TableEntry
{
    TableReader reader;
    const char* title = nullptr;    ///< what the log calls the table; null: not loaded at start-up
    bool essential = false;         ///< its failure ends the start-up load and removes its file
    void (*before)() = nullptr;     ///< at start-up, before the table is loaded
    void (*afterwards)() = nullptr; ///< at start-up, whether or not the table was loaded
};

/**
 * Every table that is read, those of the start-up load in its order.
 *
 * Declared here, where tables are loaded, and defined above the managers, which all know
 * ZDataTableMgr: nothing down here may know them.
 */
ZGLOBAL_EXPORT const QVector<TableEntry>& tableList();

/** The entry of a table, or null when none is read. */
inline const TableEntry* tableEntry(const QString& table)
{
    const auto& list = tableList();
    const auto found = std::find_if(list.begin(), list.end(), [&table](const TableEntry& entry) {
        return QLatin1String(entry.reader.table) == table;
    });
    return found == list.end() ? nullptr : &*found;
}
