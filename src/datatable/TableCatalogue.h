#pragma once

#include "datatable/EDataTable.h"

#include <QString>
#include <QVector>

/** The catalogue's enumeration at run time. */
namespace TableCatalogue {

/** Every kind, in the order of declaration. */
QVector<EDataTable::EDataTableType> types();

/** The kind's key name; empty for a value that is no kind. */
QString name(EDataTable::EDataTableType type);

} // namespace TableCatalogue
