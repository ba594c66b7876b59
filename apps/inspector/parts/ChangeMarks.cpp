#include "inspector/parts/ChangeMarks.h"

#include "models/ZRecordModel.h"

#include <QColor>
#include <QGuiApplication>
#include <QPalette>

#include <algorithm>

void ChangeMarks::setSourceModel(QAbstractItemModel* model)
{
    if (sourceModel() != nullptr)
        disconnect(sourceModel(), nullptr, this, nullptr);
    // Before the proxy's own connections, so that views find the marks made.
    using Model = QAbstractItemModel;
    connect(model, &Model::modelReset, this, [this] { clear(); });
    connect(model, &Model::rowsInserted, this,
            [this](const QModelIndex&, int first, int last) { insert(first, last); });
    connect(model, &Model::rowsRemoved, this,
            [this](const QModelIndex&, int first, int last) { remove(first, last); });
    connect(model, &Model::dataChanged, this,
            [this](const QModelIndex& first, const QModelIndex& last) {
                change(first.row(), last.row(), first.column(), last.column());
            });
    connect(model, &Model::layoutAboutToBeChanged, this, [this] { holdOrder(); });
    connect(model, &Model::layoutChanged, this, [this] { takeOrder(); });
    QIdentityProxyModel::setSourceModel(model);
    clear();
}

QVariant ChangeMarks::data(const QModelIndex& index, int role) const
{
    if (role == Qt::BackgroundRole && index.row() < m_marks.size()) {
        const Mark& mark = m_marks.at(index.row());
        if (mark.first <= index.column() && index.column() <= mark.last) {
            QColor colour = QGuiApplication::palette().color(QPalette::Highlight);
            colour.setAlpha(90);
            return colour;
        }
    }
    return QIdentityProxyModel::data(index, role);
}

void ChangeMarks::forget()
{
    const bool isAnyMarked = marked() > 0;
    clear();
    if (isAnyMarked)
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1),
                           {Qt::BackgroundRole});
}

int ChangeMarks::marked() const
{
    return static_cast<int>(std::count_if(
        m_marks.begin(), m_marks.end(), [](const Mark& mark) { return mark.last >= mark.first; }));
}

void ChangeMarks::clear()
{
    m_gone = 0;
    m_marks.fill(Mark(), sourceModel()->rowCount());
}

void ChangeMarks::insert(int first, int last)
{
    // What a table begins with is no change.
    const Mark mark = m_marks.isEmpty() ? Mark() : Mark {0, sourceModel()->columnCount() - 1};
    m_marks.insert(first, last - first + 1, mark);
}

void ChangeMarks::remove(int first, int last)
{
    m_marks.remove(first, last - first + 1);
    m_gone += last - first + 1;
}

void ChangeMarks::change(int first, int last, int firstColumn, int lastColumn)
{
    // Records tell many changes as one stretch, which holds others, too.
    const auto hasChanged = [this](int row, int column) {
        const QVariant told = sourceModel()->index(row, column).data(ZRecordModel::ChangedRole);
        return !told.isValid() || told.toBool();
    };
    for (int row = first; row <= last; ++row) {
        Mark& mark = m_marks[row];
        for (int column = firstColumn; column <= lastColumn; ++column) {
            if (!hasChanged(row, column))
                continue;
            const bool fresh = mark.last < mark.first;
            mark = fresh ? Mark {column, column}
                         : Mark {std::min(mark.first, column), std::max(mark.last, column)};
        }
    }
}

void ChangeMarks::holdOrder()
{
    for (int row = 0; row < m_marks.size(); ++row) {
        if (m_marks.at(row).last < m_marks.at(row).first)
            continue;
        m_held.append(QPersistentModelIndex(sourceModel()->index(row, 0)));
        m_heldMarks.append(m_marks.at(row));
    }
}

void ChangeMarks::takeOrder()
{
    m_marks.fill(Mark(), sourceModel()->rowCount());
    for (int i = 0; i < m_held.size(); ++i) {
        if (m_held.at(i).isValid())
            m_marks[m_held.at(i).row()] = m_heldMarks.at(i);
    }
    m_held.clear();
    m_heldMarks.clear();
}
