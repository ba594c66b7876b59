#pragma once

#include "ZGlobalExport.h"
#include "datatable/EDataTable.h"

#include <QString>
#include <QVector>

/** The catalogue's enumeration at run time. Any thread. */
namespace TableCatalogue {

/** Every kind, in the order of declaration. */
ZGLOBAL_EXPORT QVector<EDataTable::EDataTableType> types();

/** The kind's key name; empty for a value that is no kind. */
ZGLOBAL_EXPORT QString name(EDataTable::EDataTableType type);

} // namespace TableCatalogue
