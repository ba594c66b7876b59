#include "inspector/parts/CacheEntries.h"

#include "inspector/host/ColumnTitle.h"
#include "inspector/parts/Look.h"
#include "inspector/parts/TidyVerdicts.h"

#include <QApplication>
#include <QFont>
#include <QIcon>
#include <QLocale>
#include <QPalette>
#include <QStyle>

CacheEntries::CacheEntries(const TidyVerdicts& verdicts, QObject* parent)
    : QAbstractTableModel(parent)
    , m_verdicts(verdicts)
{
}

void CacheEntries::show(const CacheTree& tree, const QVector<const CacheEntry*>& entries)
{
    beginResetModel();
    m_tree = tree;
    m_entries = entries;
    endResetModel();
}

void CacheEntries::judge()
{
    if (!m_entries.isEmpty())
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, ColumnCount - 1));
}

int CacheEntries::rowOf(const QString& path) const
{
    for (int row = rowCount() - 1; row >= 0; --row) {
        const QString& own = m_entries.at(row)->path;
        if (path == own || path.startsWith(own + u'/'))
            return row;
    }
    return -1;
}

int CacheEntries::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_entries.size());
}

int CacheEntries::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant CacheEntries::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    const CacheEntry& entry = *m_entries.at(index.row());
    if (role == Qt::DisplayRole)
        return shown(entry, index.column());
    if (role == Qt::UserRole)
        return value(entry, index.column());
    return look(entry, index.column(), role);
}

QVariant CacheEntries::headerData(int section, Qt::Orientation orientation, int role) const
{
    static constexpr const char* titles[] {QT_TR_NOOP("name"),    QT_TR_NOOP("size"),
                                           QT_TR_NOOP("tidying"), QT_TR_NOOP("why"),
                                           QT_TR_NOOP("files"),   QT_TR_NOOP("modified")};
    return orientation == Qt::Horizontal && section >= 0 && section < ColumnCount
        ? columnTitle(staticMetaObject.className(), titles[section], role)
        : QAbstractTableModel::headerData(section, orientation, role);
}

QVariant CacheEntries::value(const CacheEntry& entry, int column) const
{
    switch (column) {
    case Size:
        return entry.bytes;
    case Files:
        return entry.files;
    case Modified:
        return entry.modified;
    default:
        return shown(entry, column);
    }
}

QVariant CacheEntries::shown(const CacheEntry& entry, int column) const
{
    switch (column) {
    case Name:
        return entry.name();
    case Size:
        return Look::size(entry.bytes);
    case Files:
        return entry.isFolder ? QLocale().toString(entry.files) : QString();
    case Modified:
        return entry.modified.toString(QStringLiteral("yyyy-MM-dd HH:mm"));
    case Tidying:
        return m_verdicts.of(entry.path).what;
    case Why:
        return m_verdicts.of(entry.path).why;
    default:
        return {};
    }
}

QVariant CacheEntries::look(const CacheEntry& entry, int column, int role) const
{
    const QPalette palette = QGuiApplication::palette();
    const auto state = m_verdicts.of(entry.path).state;
    switch (role) {
    case Qt::DecorationRole:
        if (column == Name)
            return QApplication::style()->standardIcon(entry.isFolder ? QStyle::SP_DirIcon
                                                                      : QStyle::SP_FileIcon);
        return {};
    case Qt::TextAlignmentRole:
        return column == Size || column == Files ? QVariant(Qt::AlignRight | Qt::AlignVCenter)
                                                 : QVariant();
    case Qt::ForegroundRole:
        if (state == TidyVerdict::Removed
            || (state == TidyVerdict::Untouched && (column == Tidying || column == Why)))
            return Look::unreadColour(palette);
        return state == TidyVerdict::Goes ? Look::faultColour(palette) : QVariant();
    case Qt::FontRole: {
        QFont font;
        font.setStrikeOut(column == Name && state == TidyVerdict::Removed);
        return font;
    }
    case Qt::ToolTipRole:
        return Look::toolTip(column == Name ? entry.path : shown(entry, column).toString());
    default:
        return {};
    }
}
