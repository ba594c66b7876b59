#include "datatable/TableSchema.h"

TableDeclaration::~TableDeclaration() = default;

QString TableDeclaration::missingColumn(const QHash<QString, int>& header) const
{
    for (const ColumnSchema& column : m_schema.columns) {
        if (column.required && !header.contains(column.name))
            return column.name;
    }
    return {};
}
