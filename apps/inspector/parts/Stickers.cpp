#include "inspector/parts/Stickers.h"
#include "inspector/parts/Look.h"

#include "datatable/ZDataTableMgr.h"

#include <algorithm>

Stickers::Stickers(QObject* parent)
    : QAbstractTableModel(parent)
{
    connect(ZDataTableMgr::getInstance(), &ZDataTableMgr::sigTableLoaded, this,
            [this](const QString& table) {
                if (table == QLatin1String("Doutu"))
                    take();
            });
    take();
}

int Stickers::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_numbers.size());
}

int Stickers::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_most;
}

QVariant Stickers::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const int group = m_numbers.at(index.row());
    const QVector<ZDoutuInfo>& stickers = *m_groups.constFind(group);
    if (index.column() >= stickers.size())
        return {};
    ZDoutuMgr& manager = ZDoutuMgr::getInstance();
    const ZDoutuInfo& sticker = stickers.at(index.column());
    switch (role) {
    case Qt::DisplayRole:
    case Qt::UserRole:
        return sticker.name;
    case Qt::ToolTipRole:
        return Look::toolTip(tr("%1, version %2\n%3")
                                 .arg(sticker.name, QString::number(sticker.version),
                                      manager.getImageUrlById(group, index.column())));
    case PathRole:
        return manager.getImagePathById(group, index.column());
    case AddressRole:
        return manager.getImageUrlById(group, index.column());
    default:
        return {};
    }
}

QVariant Stickers::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole)
        return {};
    return orientation == Qt::Horizontal ? QString::number(section)
                                         : tr("group %1").arg(m_numbers.value(section));
}

void Stickers::take()
{
    beginResetModel();
    m_groups = ZDoutuMgr::getInstance().getMessageMap();
    m_numbers.clear();
    m_most = 0;
    for (auto group = m_groups.constBegin(); group != m_groups.constEnd(); ++group) {
        m_numbers.append(group.key());
        m_most = std::max(m_most, static_cast<int>(group.value().size()));
    }
    endResetModel();
}
