#include "datatable/TableCatalogue.h"

#include <QMetaEnum>

namespace {

QMetaEnum catalogue()
{
    const QMetaObject& meta = EDataTable::staticMetaObject;
    return meta.enumerator(meta.indexOfEnumerator("EDataTableType"));
}

} // namespace

QVector<EDataTable::EDataTableType> TableCatalogue::types()
{
    const QMetaEnum kinds = catalogue();
    QVector<EDataTable::EDataTableType> types;
    for (int i = 0; i < kinds.keyCount(); ++i)
        types.append(static_cast<EDataTable::EDataTableType>(kinds.value(i)));
    return types;
}

QString TableCatalogue::name(EDataTable::EDataTableType type)
{
    return QString::fromLatin1(catalogue().valueToKey(type));
}
