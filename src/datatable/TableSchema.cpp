#include "datatable/TableSchema.h"

TableDeclaration::~TableDeclaration() = default;

QStringList TableDeclaration::columnNames() const
{
    QStringList names;
    for (const ColumnSchema& column : m_schema.columns)
        names.append(column.name);
    return names;
}

QString TableDeclaration::missingColumn(const QHash<QString, int>& header) const
{
    for (const ColumnSchema& column : m_schema.columns) {
        if (column.required && !header.contains(column.name))
            return column.name;
    }
    return {};
}

QStringList TableDeclaration::leftOutFor(const QHash<QString, int>&, const QJsonArray& rows) const
{
    QStringList columns;
    for (int i = 0; i < rows.size(); ++i)
        columns.append(QString());
    return columns;
}
