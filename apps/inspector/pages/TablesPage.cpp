#include "inspector/pages/TablesPage.h"

#include "inspector/host/ClientHost.h"
#include "inspector/parts/ChangeMarks.h"
#include "inspector/parts/Column.h"
#include "inspector/parts/FilterModel.h"
#include "inspector/parts/KeptSplitter.h"
#include "inspector/parts/LostRows.h"
#include "inspector/parts/RawTables.h"
#include "inspector/parts/RecordView.h"
#include "inspector/parts/RowCells.h"
#include "inspector/parts/SearchBox.h"
#include "inspector/parts/ShownTables.h"
#include "inspector/parts/TableChanges.h"
#include "models/ZRecordModel.h"
#include "why/Subjects.h"

#include <QCheckBox>
#include <QHeaderView>
#include <QLabel>
#include <QTableWidget>
#include <QVBoxLayout>

namespace {

constexpr int scrollBarRoom = 30;

/** Why there are no records; empty while the file is being read. */
QString faultOf(const Why::RawTable* file)
{
    if (file == nullptr)
        return {};
    const TableStatus& status = file->status();
    const QString fault = status.manager.isEmpty() ? QString() : Why::loadFault(status);
    return fault.isEmpty() ? file->fault() : fault;
}

} // namespace

TablesPage::TablesPage(const Inspected& inspected, QWidget* parent)
    : Page(parent)
    , m_files(inspected.files)
    , m_changes(inspected.changes)
    , m_tables(new ShownTables(this))
    , m_shownTables(new FilterModel(this))
    , m_tableView(new RecordView)
    , m_filter(new FilterModel(this))
    , m_view(new RecordView)
    , m_lost(new LostRows(this))
    , m_lostView(new RecordView)
    , m_showLost(new QCheckBox)
    , m_search(new SearchBox)
    , m_told(new QLabel)
    , m_place(new QLabel)
    , m_cells(new QTableWidget)
{
    auto* parts = new KeptSplitter(QStringLiteral("tables"), Qt::Horizontal,
                                   {makeTables(), makeRecords(), makeRow()}, {250, 370, 540});
    parts->setStretchFactor(0, 0);
    parts->setStretchFactor(1, 1);
    parts->setStretchFactor(2, 1);
    (new QVBoxLayout(this))->addWidget(parts);
    setFirst(m_view);
    connect(&inspected.host, &ClientHost::sigFilesChanged, this, &TablesPage::refresh);
    connect(&m_files, &RawTables::sigRead, this, [this](const QString& table) {
        if (table == m_records->table())
            readFile();
    });
    connect(&m_changes, &TableChanges::sigLoaded, this, &TablesPage::tellChanges);
    TablesPage::open(QStringLiteral("CS_GiftList"));
}

void TablesPage::open(const QString& thing)
{
    const int row = m_tables->tables().rowOf(thing.section(u'/', 0, 0));
    if (row < 0) {
        Q_EMIT sigFailure(tr("There is no table %1").arg(thing));
        return;
    }
    const QModelIndex table = m_shownTables->mapFromSource(m_tables->index(row, 0));
    m_tableView->setCurrentIndex(table);
    const QString key = thing.section(u'/', 1);
    if (!key.isEmpty())
        select(key);
}

QString TablesPage::opened() const
{
    const QModelIndex record = m_marks == nullptr
        ? QModelIndex()
        : m_marks->mapToSource(m_filter->mapToSource(m_view->currentIndex()));
    const QString table =
        m_tableView->currentIndex().siblingAtColumn(ZTableModel::Table).data().toString();
    return record.isValid() ? table + u'/' + m_records->key(record.row()) : table;
}

void TablesPage::refresh()
{
    m_tables->tables().refresh();
    readFile();
    tellChanges();
}

QVector<Page::Scene> TablesPage::scenes()
{
    return {{QStringLiteral("tables"), [this] { open(QStringLiteral("CS_GiftList/G1014")); }},
            {QStringLiteral("tables-search"), [this] {
                 open(QStringLiteral("CS_MedalList"));
                 m_search->setText(QStringLiteral("groupId:5"));
                 m_view->setCurrentIndex(m_filter->index(0, 0));
             }}};
}

QWidget* TablesPage::makeTables()
{
    m_shownTables->setSourceModel(m_tables);
    m_tableView->setObjectName(QStringLiteral("tables"));
    m_tableView->setModel(m_shownTables);
    m_tableView->setSelectionMode(QAbstractItemView::SingleSelection);
    for (int c = 0; c < ZTableModel::ColumnCount; ++c)
        m_tableView->setColumnHidden(c, c != ZTableModel::Table && c != ZTableModel::Records);
    m_tableView->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    QHeaderView* header = m_tableView->horizontalHeader();
    header->setStretchLastSection(false);
    header->setSectionResizeMode(ZTableModel::Records, QHeaderView::ResizeToContents);
    m_tableView->sortByColumn(ZTableModel::Table, Qt::AscendingOrder);
    // A narrow window takes from the other parts, which can be scrolled.
    m_tableView->resizeColumnToContents(ZTableModel::Table);
    m_tableView->setMinimumWidth(m_tableView->columnWidth(ZTableModel::Table)
                                 + header->sectionSizeHint(ZTableModel::Records) + scrollBarRoom);
    header->setSectionResizeMode(ZTableModel::Table, QHeaderView::Stretch);
    connect(m_tableView->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& row) {
                showTable(row.sibling(row.row(), ZTableModel::Table).data().toString());
            });
    return m_tableView;
}

QWidget* TablesPage::makeRecords()
{
    m_view->setObjectName(QStringLiteral("records"));
    m_view->setModel(m_filter);
    m_told->setObjectName(QStringLiteral("changes"));
    connect(m_search, &QLineEdit::textChanged, m_filter, &FilterModel::setSearch);
    connect(m_search, &QLineEdit::textChanged, this, &TablesPage::tellChanges);
    connect(m_view->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &TablesPage::showRow);
    return column({m_search, m_view, m_told, makeLost()});
}

QWidget* TablesPage::makeLost()
{
    auto* filter = new FilterModel(this);
    filter->setSourceModel(m_lost);
    m_lostView->setObjectName(QStringLiteral("lost"));
    m_lostView->setModel(filter);
    m_lostView->horizontalHeader()->setStretchLastSection(true);
    m_lostView->hide();
    m_showLost->setObjectName(QStringLiteral("showLost"));
    connect(m_search, &QLineEdit::textChanged, filter, &FilterModel::setSearch);
    connect(m_showLost, &QCheckBox::toggled, this, &TablesPage::showLost);
    connect(m_lostView->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &TablesPage::showLostRow);
    return column({m_showLost, m_lostView});
}

QWidget* TablesPage::makeRow()
{
    m_place->setObjectName(QStringLiteral("place"));
    m_place->setWordWrap(true);
    m_cells->setObjectName(QStringLiteral("cells"));
    RowCells::prepare(*m_cells);
    return column({m_place, m_cells});
}

void TablesPage::showTable(const QString& table)
{
    ZRecordModel* records = m_changes.records(table);
    if (records == nullptr || records == m_records)
        return;
    m_records = records;
    m_marks = m_changes.marks(table);
    m_search->clear();
    m_wanted.clear();
    m_filter->setSourceModel(m_marks);
    m_view->keepColumns(table);
    readFile();
    tellChanges();
}

void TablesPage::select(const QString& key)
{
    m_search->clear();
    const int row = m_records->rowOf(key);
    const QModelIndex record = m_marks->mapFromSource(m_records->index(row, 0));
    const QModelIndex shown = m_filter->mapFromSource(record);
    m_view->setCurrentIndex(shown);
    m_view->scrollTo(shown);
    m_wanted = row < 0 ? key : QString();
    selectLost();
}

void TablesPage::selectLost()
{
    if (m_wanted.isEmpty() || m_file == nullptr)
        return;
    const QModelIndex row = m_lost->index(m_lost->rowOf(m_wanted), 0);
    if (row.isValid()) {
        m_showLost->setChecked(true);
        const auto* filter = static_cast<const FilterModel*>(m_lostView->model());
        m_lostView->setCurrentIndex(filter->mapFromSource(row));
        showLostRow();
    } else {
        Q_EMIT sigFailure(tr("%1 has no %2").arg(m_records->table(), m_wanted));
    }
    m_wanted.clear();
}

void TablesPage::readFile()
{
    m_file = m_files.get(m_records->table());
    m_lost->setFile(m_file);
    const int lost = m_lost->rowCount();
    m_showLost->setText(tr("Rows of the file that became no record: %1").arg(lost));
    m_showLost->setEnabled(lost > 0);
    showLost();
    showRow();
    selectLost();
}

void TablesPage::showLost()
{
    // Where there are no records, they are all that can be shown.
    const bool isWanted = m_showLost->isChecked() || m_records->rowCount() == 0;
    m_lostView->setVisible(isWanted && m_lost->rowCount() > 0);
    m_lostView->fitColumns();
}

void TablesPage::showLostRow()
{
    const QModelIndex shown = m_lostView->currentIndex();
    const auto* filter = static_cast<const FilterModel*>(m_lostView->model());
    const Why::RawRow* row = m_lost->row(filter->mapToSource(shown).row());
    if (m_file != nullptr && row != nullptr)
        m_place->setText(RowCells::showLost(*m_cells, *row, *m_file));
}

void TablesPage::showRow()
{
    const QModelIndex shown = m_view->currentIndex();
    const int row = m_marks->mapToSource(m_filter->mapToSource(shown)).row();
    if (m_file == nullptr || row < 0) {
        m_cells->setRowCount(0);
        const QString fault = faultOf(m_file.get());
        m_place->setText(fault.isEmpty() ? tr("Select a row to see it as its file has it.")
                                         : fault);
        return;
    }
    m_place->setText(RowCells::show(*m_cells, *m_records, row, *m_file));
}

void TablesPage::tellChanges()
{
    QString words = tr("%1 of %2 rows").arg(m_filter->rowCount()).arg(m_records->rowCount());
    const QString changes = m_changes.words(m_records->table());
    if (!changes.isEmpty())
        words += tr("; by the last load: %1").arg(changes);
    m_told->setText(words);
}
