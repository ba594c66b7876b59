#include "inspector/pages/CachePage.h"

#include "host/zErrorInfo.h"
#include "inspector/host/ClientHost.h"
#include "inspector/host/LogModel.h"
#include "inspector/parts/Background.h"
#include "inspector/parts/CacheEntries.h"
#include "inspector/parts/Column.h"
#include "inspector/parts/FilterModel.h"
#include "inspector/parts/KeptSplitter.h"
#include "inspector/parts/Look.h"
#include "inspector/parts/RecordView.h"
#include "inspector/parts/SearchBox.h"
#include "inspector/parts/SpaceMap.h"

#include <QFileInfo>
#include <QHeaderView>
#include <QLabel>
#include <QPainter>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr int followedEvery = 200; // milliseconds

QString cache()
{
    return QStringLiteral("res");
}

QString sizeOf(const CacheEntry& folder)
{
    const QString size = Look::size(folder.bytes);
    return folder.files == 1 ? CachePage::tr("%1 in a file").arg(size)
                             : CachePage::tr("%1 in %2 files").arg(size).arg(folder.files);
}

/** A square in the colour of a state. */
class Swatch : public QFrame
{
public:
    explicit Swatch(TidyVerdict::State state)
        : m_state(state)
    {
        setFixedSize(12, 12);
    }

protected:
    void paintEvent(QPaintEvent* /*event*/) override
    {
        QPainter painter(this);
        painter.setPen(palette().color(QPalette::WindowText));
        painter.setBrush(SpaceMap::colourOf(m_state, palette()));
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }

private:
    TidyVerdict::State m_state;
};

} // namespace

CachePage::CachePage(const Inspected& inspected, QWidget* parent)
    : Page(parent)
    , m_host(inspected.host)
    , m_shown(cache())
    , m_folders(new CacheEntries(m_verdicts, this))
    , m_folderView(new RecordView)
    , m_entries(new CacheEntries(m_verdicts, this))
    , m_filter(new FilterModel(this))
    , m_view(new RecordView)
    , m_map(new SpaceMap(m_verdicts))
    , m_place(new QLabel)
    , m_up(new QPushButton(tr("U&p")))
    , m_summary(new QLabel)
{
    auto* parts = new KeptSplitter(QStringLiteral("cacheFolders"), Qt::Horizontal,
                                   {makeFolders(), makeEntries()}, {340, 810});
    parts->setStretchFactor(1, 1);
    auto* whole = new KeptSplitter(QStringLiteral("cacheRun"), Qt::Vertical,
                                   {parts, makeRun(inspected.log)}, {640, 110});
    whole->setStretchFactor(0, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(makeTop());
    layout->addWidget(whole, 1);
    setFirst(m_folderView);
    connectHost();
}

QString CachePage::opened() const
{
    return m_shown;
}

void CachePage::refresh()
{
    look();
}

void CachePage::showEvent(QShowEvent* event)
{
    Page::showEvent(event);
    look(); // other pages have things fetched
}

void CachePage::look()
{
    m_removed = 0;
    const int reading = ++m_reading;
    inBackground(
        *QThreadPool::globalInstance(), this, [] { return CacheScan::read(cache()); },
        [this, reading](const CacheTree& tree) {
            if (reading == m_reading)
                take(tree);
        });
    plan();
}

void CachePage::open(const QString& thing)
{
    if (m_tree != nullptr && CacheScan::find(*m_tree, thing) == nullptr) {
        Q_EMIT sigFailure(tr("There is no %1 in the cache").arg(thing));
        return;
    }
    enter(thing);
}

QVector<Page::Scene> CachePage::scenes()
{
    return {{QStringLiteral("cache"), [this] { showFolder(cache()); }},
            {QStringLiteral("cache-folder"), [this] {
                 showFolder(QStringLiteral("res/dataTable"));
                 m_view->sortByColumn(CacheEntries::Tidying, Qt::AscendingOrder);
                 m_view->setCurrentIndex(m_filter->index(0, 0));
             }}};
}

QWidget* CachePage::makeTop()
{
    auto* top = new QWidget;
    auto* layout = new QHBoxLayout(top);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* tidy = new QPushButton(tr("&Tidy"));
    tidy->setObjectName(QStringLiteral("tidy"));
    tidy->setToolTip(tr("Remove what is to go"));
    tidy->setEnabled(m_host.task().isEmpty());
    connect(tidy, &QPushButton::clicked, &m_host, &ClientHost::tidy);
    connect(&m_host, &ClientHost::sigTask, tidy,
            [tidy](const QString& task) { tidy->setEnabled(task.isEmpty()); });
    m_summary->setObjectName(QStringLiteral("summary"));
    layout->addWidget(tidy);
    layout->addWidget(m_summary, 1);
    const QVector<QPair<TidyVerdict::State, QString>> legend {
        {TidyVerdict::Stays, tr("stays")},
        {TidyVerdict::Goes, tr("goes")},
        {TidyVerdict::Untouched, tr("never tidied")}};
    for (const auto& entry : legend) {
        layout->addSpacing(6);
        layout->addWidget(new Swatch(entry.first));
        layout->addWidget(new QLabel(entry.second));
    }
    return top;
}

QWidget* CachePage::makeFolders()
{
    m_folderView->setObjectName(QStringLiteral("folders"));
    m_folderView->setModel(m_folders);
    m_folderView->setSortingEnabled(false);
    m_folderView->setSelectionMode(QAbstractItemView::SingleSelection);
    for (const int column : {CacheEntries::Files, CacheEntries::Modified, CacheEntries::Why})
        m_folderView->hideColumn(column);
    m_folderView->horizontalHeader()->setSectionResizeMode(CacheEntries::Tidying,
                                                           QHeaderView::Stretch);
    const auto lead = [this](const QModelIndex& row) {
        const CacheEntry* folder = m_folders->entry(row.row());
        if (folder != nullptr && folder->path != m_shown)
            showFolder(folder->path);
    };
    connect(m_folderView->selectionModel(), &QItemSelectionModel::currentRowChanged, this, lead);
    connect(m_folderView, &QAbstractItemView::clicked, this, lead); // back from a folder in it
    return m_folderView;
}

QWidget* CachePage::makeEntries()
{
    auto* search = new SearchBox;
    connect(search, &QLineEdit::textChanged, m_filter, &FilterModel::setSearch);
    m_place->setTextFormat(Qt::PlainText);
    m_place->setObjectName(QStringLiteral("place"));
    m_up->setObjectName(QStringLiteral("up"));
    m_up->setToolTip(tr("The folder that this one is in"));
    connect(m_up, &QPushButton::clicked, this,
            [this] { showFolder(m_shown.section(u'/', 0, -2)); });
    auto* where = new QWidget;
    auto* layout = new QHBoxLayout(where);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_up);
    layout->addWidget(m_place, 1);
    layout->addWidget(search, 1);

    m_filter->setSourceModel(m_entries);
    m_view->setObjectName(QStringLiteral("entries"));
    m_view->setModel(m_filter);
    m_view->keepColumns(QStringLiteral("cache"));
    m_view->horizontalHeader()->setStretchLastSection(true);
    connect(m_view->selectionModel(), &QItemSelectionModel::currentRowChanged, this, [this] {
        const CacheEntry* entry = current();
        m_map->mark(entry == nullptr ? QString() : entry->path);
    });
    m_view->setToolTip(tr("Enter or a double click opens a folder"));
    connect(m_view, &QAbstractItemView::activated, this, [this](const QModelIndex& row) {
        enter(m_entries->entry(m_filter->mapToSource(row).row())->path);
    });
    connect(m_map, &SpaceMap::sigSelected, this, &CachePage::select);
    connect(m_map, &SpaceMap::sigActivated, this, &CachePage::enter);
    return column({where,
                   new KeptSplitter(QStringLiteral("cacheEntries"), Qt::Vertical, {m_map, m_view},
                                    {330, 250})});
}

QWidget* CachePage::makeRun(LogModel& log)
{
    auto* lines = new QSortFilterProxyModel(this);
    lines->setFilterKeyColumn(LogModel::Category);
    lines->setFilterFixedString(QStringLiteral("zglobal.tidy"));
    lines->setSourceModel(&log);
    auto* view = new RecordView;
    view->setObjectName(QStringLiteral("run"));
    view->setModel(lines);
    view->setSortingEnabled(false);
    view->hideColumn(LogModel::Severity);
    view->hideColumn(LogModel::Category);
    view->horizontalHeader()->setStretchLastSection(true);
    connect(lines, &QAbstractItemModel::rowsInserted, view, &QAbstractItemView::scrollToBottom,
            Qt::QueuedConnection);
    return column({new QLabel(tr("What the run tells")), view});
}

void CachePage::connectHost()
{
    connect(&m_following, &QTimer::timeout, this, [this] { follow(false); });
    connect(&m_host, &ClientHost::sigTask, this, [this](const QString& task) {
        if (task.isEmpty())
            m_following.stop();
        else
            m_following.start(followedEvery);
    });
    connect(&m_host, &ClientHost::sigFilesChanged, this, [this] { follow(true); });
}

void CachePage::plan()
{
    if (m_isPlanning) {
        m_isStale = true;
        return;
    }
    m_isPlanning = true;
    m_isStale = false;
    const QPointer<CachePage> self(this);
    m_host.planTidying()
        .then([self](const TidyPlan& plan) {
            if (self != nullptr)
                self->m_verdicts.setPlan(plan);
        })
        .fail([](const zErrorInfo&) {}) // it is being tidied, and what was planned is shown
        .then([self] {
            if (self == nullptr)
                return;
            self->m_isPlanning = false;
            self->judge();
            self->fitColumns();
            if (self->m_isStale)
                self->plan();
        });
}

void CachePage::judge()
{
    QString words = m_verdicts.summary();
    if (m_tree != nullptr)
        words = words.isEmpty() ? sizeOf(*m_tree) : tr("%1. %2.").arg(sizeOf(*m_tree), words);
    m_summary->setText(words);
    m_folders->judge();
    m_entries->judge();
    m_map->update();
}

void CachePage::fitColumns()
{
    m_folderView->resizeColumnToContents(CacheEntries::Name);
    m_folderView->resizeColumnToContents(CacheEntries::Size);
    m_view->fitColumns();
}

void CachePage::take(const CacheTree& tree)
{
    QVector<const CacheEntry*> folders {tree.get()};
    for (const CacheEntry& entry : tree->entries) {
        if (entry.isFolder)
            folders.append(&entry);
    }
    const bool isFirst = m_tree == nullptr;
    const CacheEntry* entry = current();
    const QString selected = entry == nullptr ? QString() : entry->path;
    const QString shown = m_shown; // selecting its row must not lead elsewhere
    m_tree = tree;
    m_folders->show(tree, folders);
    if (isFirst) // somebody may have asked for a file
        enter(shown);
    else
        showFolder(shown);
    if (!selected.isEmpty())
        select(selected);
    judge();
    fitColumns();
}

void CachePage::showFolder(const QString& path)
{
    m_shown = path;
    if (m_tree == nullptr)
        return;
    const CacheEntry* folder = CacheScan::find(*m_tree, path);
    if (folder == nullptr || !folder->isFolder) { // it has gone meanwhile
        folder = m_tree.get();
        m_shown = folder->path;
    }
    {
        const QSignalBlocker quiet(m_folderView->selectionModel());
        m_folderView->selectRow(m_folders->rowOf(m_shown));
        m_folderView->viewport()->update();
    }
    QVector<const CacheEntry*> entries;
    for (const CacheEntry& entry : folder->entries)
        entries.append(&entry);
    m_entries->show(m_tree, entries);
    m_view->fitColumns();
    m_map->mark({});
    m_map->show(m_tree, *folder);
    m_up->setEnabled(m_shown != cache());
    m_place->setText(tr("%1: %2").arg(m_shown, sizeOf(*folder)));
}

const CacheEntry* CachePage::current() const
{
    return m_entries->entry(m_filter->mapToSource(m_view->currentIndex()).row());
}

void CachePage::select(const QString& path)
{
    const int row = m_entries->rowOf(path);
    const QModelIndex index = m_filter->mapFromSource(m_entries->index(row, 0));
    m_view->setCurrentIndex(index);
    m_view->scrollTo(index);
}

void CachePage::enter(const QString& path)
{
    const CacheEntry* entry = m_tree == nullptr ? nullptr : CacheScan::find(*m_tree, path);
    const bool isFolder = entry == nullptr || entry->isFolder;
    showFolder(isFolder ? path : path.section(u'/', 0, -2));
    if (!isFolder)
        select(path);
}

void CachePage::follow(bool isLast)
{
    const int reading = m_reading;
    inBackground(
        *QThreadPool::globalInstance(), this,
        [paths = m_verdicts.going()] {
            QSet<QString> gone;
            for (const QString& path : paths) {
                if (!QFileInfo::exists(path))
                    gone.insert(path);
            }
            return gone;
        },
        [this, reading, isLast](const QSet<QString>& gone) {
            if (reading != m_reading)
                return;
            const int removed = static_cast<int>(gone.size());
            if (isLast && removed <= m_removed) { // nothing to tell of this task
                refresh();
                return;
            }
            m_verdicts.setRemoved(gone);
            judge();
            if (isLast)
                m_removed = removed;
        });
}
