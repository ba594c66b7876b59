#include "inspector/parts/LostRows.h"

#include "inspector/host/ColumnTitle.h"

void LostRows::setFile(const std::shared_ptr<const Why::RawTable>& file)
{
    beginResetModel();
    m_file = file;
    m_rows.clear();
    const int size = file == nullptr ? 0 : static_cast<int>(file->rows().size());
    for (int place = 0; place < size; ++place) {
        if (!file->isRecord(file->rows().at(place)))
            m_rows.append(place);
    }
    endResetModel();
}

const Why::RawRow* LostRows::row(int row) const
{
    return row < 0 || row >= m_rows.size() ? nullptr : &m_file->rows().at(m_rows.at(row));
}

int LostRows::rowOf(const QString& id) const
{
    for (int place = 0; place < m_rows.size(); ++place) {
        if (row(place)->id == id)
            return place;
    }
    return -1;
}

int LostRows::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int LostRows::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant LostRows::data(const QModelIndex& index, int role) const
{
    const Why::RawRow* shown = row(index.row());
    if (shown == nullptr || (role != Qt::DisplayRole && role != Qt::UserRole))
        return {};
    switch (index.column()) {
    case Number:
        return shown->row.number;
    case Id:
        return shown->id;
    case Name:
        return shown->name;
    default:
        return shown->words;
    }
}

QVariant LostRows::headerData(int section, Qt::Orientation orientation, int role) const
{
    static constexpr const char* titles[] {QT_TR_NOOP("row"), QT_TR_NOOP("id"), QT_TR_NOOP("name"),
                                           QT_TR_NOOP("what became of it")};
    return orientation == Qt::Horizontal && section >= 0 && section < ColumnCount
        ? columnTitle(staticMetaObject.className(), titles[section], role)
        : QVariant();
}
