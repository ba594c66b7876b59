#include "inspector/parts/RecordView.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSettings>

#include <algorithm>

namespace {

constexpr int columnGap = 8;
constexpr int widestColumn = 240;

} // namespace

RecordView::RecordView(QWidget* parent)
    : QTableView(parent)
{
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setAlternatingRowColors(true);
    setWordWrap(false);
    setTabKeyNavigation(false);
    setSortingEnabled(true);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    verticalHeader()->hide();
    horizontalHeader()->setSectionsMovable(true);
    horizontalHeader()->setHighlightSections(false);

    const auto add = [this](const QString& text, const QKeySequence& keys, auto slot) {
        auto* action = new QAction(text, this);
        action->setShortcut(keys);
        action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        connect(action, &QAction::triggered, this, slot);
        addAction(action);
    };
    setContextMenuPolicy(Qt::ActionsContextMenu);
    add(tr("Copy as text"), QKeySequence::Copy, &RecordView::copyText);
    add(tr("Copy as JSON"), QKeySequence(QStringLiteral("Ctrl+Shift+C")), &RecordView::copyJson);
    connect(horizontalHeader(), &QHeaderView::sectionResized, this, &RecordView::saveColumns);
    connect(horizontalHeader(), &QHeaderView::sectionMoved, this, &RecordView::saveColumns);
}

void RecordView::keepColumns(const QString& name)
{
    m_name = name;
    QHeaderView* header = horizontalHeader();
    const QByteArray state = QSettings().value(settingsKey()).toByteArray();
    m_fitting = true; // what follows is no wish of anybody's
    // A state of other columns than there are now is of no use.
    if (header->restoreState(state) && header->count() != model()->columnCount())
        header->reset();
    header->setSortIndicator(-1, Qt::AscendingOrder);
    m_fitting = false;
    fitColumns();
}

void RecordView::fitColumns()
{
    if (QSettings().contains(settingsKey()))
        return;
    m_fitting = true;
    resizeColumnsToContents();
    for (int column = 0; column < model()->columnCount(); ++column) {
        const int wanted = columnWidth(column) + columnGap;
        if (!isColumnHidden(column))
            setColumnWidth(column, qMin(wanted, widestColumn));
    }
    m_fitting = false;
}

QString RecordView::selectedText() const
{
    const QVector<int> columns = shownColumns();
    const QModelIndexList rows = selectedRows();
    QStringList lines;
    for (const QModelIndex& row : rows) {
        QStringList cells;
        for (const int column : columns)
            cells.append(row.sibling(row.row(), column).data().toString());
        lines.append(cells.join(u'\t'));
    }
    return lines.join(u'\n');
}

QString RecordView::selectedJson() const
{
    const QVector<int> columns = shownColumns();
    const QModelIndexList rows = selectedRows();
    QJsonArray objects;
    for (const QModelIndex& row : rows) {
        QJsonObject object;
        for (const int column : columns) {
            const QString name = model()->headerData(column, Qt::Horizontal).toString();
            const QVariant value = row.sibling(row.row(), column).data(Qt::UserRole);
            object.insert(name, QJsonValue::fromVariant(value));
        }
        objects.append(object);
    }
    return QString::fromUtf8(QJsonDocument(objects).toJson());
}

void RecordView::copyText() const
{
    QGuiApplication::clipboard()->setText(selectedText());
}

void RecordView::copyJson() const
{
    QGuiApplication::clipboard()->setText(selectedJson());
}

QModelIndexList RecordView::selectedRows() const
{
    if (selectionModel() == nullptr)
        return {};
    QModelIndexList rows = selectionModel()->selectedRows();
    std::sort(rows.begin(), rows.end(), [](const QModelIndex& left, const QModelIndex& right) {
        return left.row() < right.row();
    });
    return rows;
}

QVector<int> RecordView::shownColumns() const
{
    QVector<int> columns;
    const QHeaderView* header = horizontalHeader();
    for (int place = 0; place < header->count(); ++place) {
        const int column = header->logicalIndex(place);
        if (!header->isSectionHidden(column))
            columns.append(column);
    }
    return columns;
}

QString RecordView::settingsKey() const
{
    return QStringLiteral("columns/") + m_name;
}

void RecordView::saveColumns() const
{
    if (!m_name.isEmpty() && !m_fitting && isVisible())
        QSettings().setValue(settingsKey(), horizontalHeader()->saveState());
}
