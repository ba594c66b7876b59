#include "inspector/pages/OverviewPage.h"

#include "inspector/host/ClientHost.h"
#include "inspector/parts/DerivedColumn.h"
#include "inspector/parts/FilterModel.h"
#include "inspector/parts/RecordView.h"
#include "inspector/parts/SearchBox.h"
#include "inspector/parts/ShownTables.h"
#include "inspector/parts/TableChanges.h"
#include "inspector/parts/TrafficPlot.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTimer>

namespace {

constexpr int agedEvery = 1000; // milliseconds

QPushButton* button(const QString& name, const QString& text, const QString& hint)
{
    auto* made = new QPushButton(text);
    made->setObjectName(name);
    made->setToolTip(hint);
    return made;
}

} // namespace

OverviewPage::OverviewPage(const Inspected& inspected, QWidget* parent)
    : Page(parent)
    , m_tables(new ShownTables(this))
    , m_shown(new DerivedColumn(
          m_tables, QT_TRANSLATE_NOOP("DerivedColumn", "changed by the last load"),
          [this, &changes = inspected.changes](int row) {
              return changes.words(m_tables->tables().status(row).table);
          },
          this))
    , m_filter(new FilterModel(this))
    , m_view(new RecordView)
    , m_summary(new QLabel)
{
    m_summary->setObjectName(QStringLiteral("summary"));
    makeView();
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(makeTop(inspected.host));
    layout->addWidget(m_view, 1);
    layout->addWidget(new TrafficPlot(inspected.traffic));
    connect(&inspected.host, &ClientHost::sigFilesChanged, this, [this] {
        refresh();
        m_view->fitColumns();
    });
    connect(m_tables, &QAbstractItemModel::dataChanged, this, &OverviewPage::count);
    connect(&inspected.changes, &TableChanges::sigLoaded, m_shown, &DerivedColumn::tellChange);
    auto* ageing = new QTimer(this);
    connect(ageing, &QTimer::timeout, m_view->viewport(), QOverload<>::of(&QWidget::update));
    ageing->start(agedEvery);
    setFirst(m_view);
    count();
}

void OverviewPage::refresh()
{
    m_tables->tables().refresh();
}

QWidget* OverviewPage::makeTop(ClientHost& host)
{
    auto* top = new QWidget;
    auto* layout = new QHBoxLayout(top);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* update = button(QStringLiteral("update"), tr("&Update"),
                          tr("Ask for the versions, fetch what has changed, load it"));
    auto* reload =
        button(QStringLiteral("reload"), tr("Re&load"), tr("Load the files that are on the disk"));
    auto* tidy = button(QStringLiteral("tidy"), tr("&Tidy"),
                        tr("Remove the files that nothing uses; a run goes on to its end"));
    connect(update, &QPushButton::clicked, &host, &ClientHost::update);
    connect(reload, &QPushButton::clicked, &host, &ClientHost::reload);
    connect(tidy, &QPushButton::clicked, &host, &ClientHost::tidy);
    for (QPushButton* each : {update, reload, tidy}) {
        layout->addWidget(each);
        each->setEnabled(host.task().isEmpty());
        connect(&host, &ClientHost::sigTask, each,
                [each](const QString& task) { each->setEnabled(task.isEmpty()); });
    }
    auto* search = new SearchBox;
    connect(search, &QLineEdit::textChanged, m_filter, &FilterModel::setSearch);
    layout->addWidget(m_summary, 1);
    layout->addWidget(search, 1);
    // A version that somebody has written is fetched; what the service tells comes back with the
    // next update.
    connect(m_tables, &ShownTables::sigVersionWritten, &host, &ClientHost::fetchTables);
    return top;
}

void OverviewPage::makeView()
{
    m_filter->setSourceModel(m_shown);
    m_view->setObjectName(QStringLiteral("tables"));
    m_view->setModel(m_filter);
    m_view->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed);
    m_view->keepColumns(QStringLiteral("overview"));
    for (const int column : {ZTableModel::Kind, ZTableModel::Loader, ZTableModel::AtStart,
                             ZTableModel::Path, ZTableModel::LastFault})
        m_view->hideColumn(column);
    QHeaderView* header = m_view->horizontalHeader();
    header->moveSection(header->visualIndex(ZTableModel::ColumnCount),
                        header->visualIndex(ZTableModel::Manager));
    header->setStretchLastSection(true);
    m_view->setToolTip(tr("Enter or a double click shows the records; a double click on a version "
                          "writes another"));
    connect(m_view, &QAbstractItemView::activated, this, [this](const QModelIndex& index) {
        if (index.column() != ZTableModel::Version)
            Q_EMIT sigOpen(QStringLiteral("tables"),
                           index.sibling(index.row(), ZTableModel::Table).data().toString());
    });
}

void OverviewPage::count()
{
    int loaded = 0;
    int faulty = 0;
    int unread = 0;
    int records = 0;
    const ZTableModel& tables = m_tables->tables();
    for (int row = 0; row < tables.rowCount(); ++row) {
        loaded += tables.status(row).state == TableStatus::Loaded ? 1 : 0;
        faulty += m_tables->isFaulty(row) ? 1 : 0;
        unread += tables.status(row).manager.isEmpty() ? 1 : 0;
        records += tables.index(row, ZTableModel::Records).data().toInt();
    }
    m_summary->setText(tr("%1 tables, %2 loaded, %3 missing or failed, %4 not read; %5 records")
                           .arg(tables.rowCount())
                           .arg(loaded)
                           .arg(faulty)
                           .arg(unread)
                           .arg(records));
}
