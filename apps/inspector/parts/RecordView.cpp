#include "inspector/parts/RecordView.h"

#include "inspector/parts/CopiedRows.h"

#include <QHeaderView>
#include <QSettings>

namespace {

constexpr int columnGap = 8;
constexpr int widestColumn = 240;
constexpr int fittedRows = 100; // Qt's own thousand take ten times as long as the paint

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
    horizontalHeader()->setResizeContentsPrecision(fittedRows);

    CopiedRows::addActions(*this, [this] { return shownColumns(); });
    connect(horizontalHeader(), &QHeaderView::sectionResized, this, [this](int column) {
        if (!isStretched(column)) // whose width is that of the window
            saveColumns();
    });
    connect(horizontalHeader(), &QHeaderView::sectionMoved, this, &RecordView::saveColumns);
}

void RecordView::keepColumns(const QString& name)
{
    m_name = name;
    QHeaderView* header = horizontalHeader();
    const QByteArray state = QSettings().value(settingsKey()).toByteArray();
    m_fitting = true;                                        // what follows is no wish of anybody's
    for (int column = 0; column < header->count(); ++column) // of what was shown before
        header->moveSection(header->visualIndex(column), column);
    if (!header->restoreState(state))
        QSettings().remove(settingsKey()); // a state that cannot be read is of no use
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

bool RecordView::isStretched(int column) const
{
    const QVector<int> shown = shownColumns();
    return horizontalHeader()->stretchLastSection() && !shown.isEmpty() && shown.last() == column;
}

void RecordView::saveColumns() const
{
    if (!m_name.isEmpty() && !m_fitting && isVisible())
        QSettings().setValue(settingsKey(), horizontalHeader()->saveState());
}
