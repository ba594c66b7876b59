#include "inspector/pages/LookPage.h"

#include "client/ZGlobalClient.h"
#include "inspector/host/ClientHost.h"
#include "inspector/parts/AnimationBox.h"
#include "inspector/parts/Column.h"
#include "inspector/parts/DerivedColumn.h"
#include "inspector/parts/EmptyNote.h"
#include "inspector/parts/FilterModel.h"
#include "inspector/parts/KeptSplitter.h"
#include "inspector/parts/LookTiles.h"
#include "inspector/parts/PictureBox.h"
#include "inspector/parts/Pictures.h"
#include "inspector/parts/RecordView.h"
#include "inspector/parts/SearchBox.h"
#include "models/ZRecordModel.h"
#include "presentation/ZPCSkinMgr.h"
#include "privilege/ZNobilityListMgr.h"
#include "privilege/zNoblePrivilegeMgr.h"

#include <QDir>
#include <QFileInfo>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace {

const QSize tilePicture(64, 64);
constexpr int longestWait = 10000; // milliseconds, for the skin's pictures

QModelIndex recordOf(const QModelIndex& shown)
{
    if (!shown.isValid())
        return {};
    QModelIndex index = shown.siblingAtColumn(0); // the column behind the others has no record
    while (const auto* proxy = qobject_cast<const QAbstractProxyModel*>(index.model()))
        index = proxy->mapToSource(index);
    return index;
}

QString keyOf(const QModelIndex& shown)
{
    const QModelIndex record = recordOf(shown);
    const auto* records = qobject_cast<const ZRecordModel*>(record.model());
    return records == nullptr ? QString() : records->key(record.row());
}

} // namespace

LookPage::LookPage(const Inspected& inspected, QWidget* parent)
    : Page(parent)
    , m_host(inspected.host)
    , m_pictures(inspected.pictures)
    , m_tabs(new QTabWidget)
    , m_search(new SearchBox)
    , m_told(new QLabel)
    , m_fetchFlashes(new QPushButton(tr("Fetch what is &missing")))
{
    m_search->setMinimumWidth(300);
    m_tabs->setCornerWidget(column({m_search}));
    makeSkin(inspected.pictures);
    makeNobility(inspected.pictures);
    makeFlash();
    makeAwards(inspected.pictures);
    makeRecreation(inspected.pictures);
    (new QVBoxLayout(this))->addWidget(m_tabs);
    setFirst(m_tabs);
    m_skinComes.setSingleShot(true);
    connect(&m_skinComes, &QTimer::timeout, this, &LookPage::showSkin);
    connect(&ZPCSkinMgr::getInstance(), &ZPCSkinMgr::sigDownloadImages, this, [this] {
        m_skinComes.stop();
        showSkin();
    });
    connect(&m_host, &ClientHost::sigFilesChanged, this, &LookPage::refresh);
    showSkin();
    tellPrivileges();
}

QString LookPage::opened() const
{
    const QString key = keyOf(m_views.at(m_tabs->currentIndex())->currentIndex());
    return key.isEmpty() ? QString() : m_tabs->currentWidget()->objectName() + u'/' + key;
}

void LookPage::refresh()
{
    for (DerivedColumn* each : qAsConst(m_derived))
        each->tellChange();
    showSkin();
    tellPrivileges();
}

void LookPage::open(const QString& thing)
{
    const QString name = thing.section(u'/', 0, 0);
    const QString key = thing.section(u'/', 1);
    for (int tab = 0; tab < m_tabs->count(); ++tab) {
        if (m_tabs->widget(tab)->objectName() != name)
            continue;
        m_tabs->setCurrentIndex(tab);
        m_search->clear();
        if (key.isEmpty())
            return;
        const QAbstractItemModel* model = m_views.at(tab)->model();
        for (int row = 0; row < model->rowCount(); ++row) {
            if (keyOf(model->index(row, 0)) != key)
                continue;
            m_views.at(tab)->setCurrentIndex(model->index(row, 0));
            return;
        }
    }
    Q_EMIT sigFailure(tr("There is no %1 on this page").arg(thing));
}

QVector<Page::Scene> LookPage::scenes()
{
    return {{QStringLiteral("look"), [this] { open(QStringLiteral("skin")); }},
            {QStringLiteral("look-nobility"), [this] { open(QStringLiteral("nobility/6")); }},
            {QStringLiteral("look-flash"),
             [this] {
                 open(QStringLiteral("flash/level_up"));
                 m_animations.at(0)->fetch();
             }},
            {QStringLiteral("look-effects"),
             [this] {
                 open(QStringLiteral("awards/1"));
                 m_animations.at(1)->fetch();
             }},
            {QStringLiteral("look-recreation"), [this] {
                 open(QStringLiteral("recreation/M2"));
                 m_animations.at(2)->fetch();
             }}};
}

bool LookPage::isAtRest() const
{
    return !m_skinComes.isActive()
        && std::all_of(m_animations.begin(), m_animations.end(),
                       [](const AnimationBox* each) { return each->isAtRest(); });
}

void LookPage::makeSkin(Pictures& pictures)
{
    auto* skins = new ZRecordModel(QStringLiteral("PCSkin"), this);
    auto* current = new DerivedColumn(
        skins, QT_TRANSLATE_NOOP("DerivedColumn", "in force"),
        [skins](int row) {
            return row == skins->rowCount() - 1 ? tr("yes, as the last") : QString();
        },
        this);
    m_derived.append(current);
    QAbstractItemView* view = makeTable(current, skins->table());
    auto* fetch = new QPushButton(tr("&Fetch the pictures anew"));
    fetch->setObjectName(QStringLiteral("fetchSkin"));
    connect(fetch, &QPushButton::clicked, this, &LookPage::fetchSkin);
    QWidget* parts = column(
        {makeSkinPart(pictures, ZPCSkinMgr::E_SkinAll, tr("The whole window"), {480, 288}),
         makeSkinPart(pictures, ZPCSkinMgr::E_SkinTop, tr("The top area"), {480, 72}), fetch});
    auto* layout = qobject_cast<QVBoxLayout*>(parts->layout());
    layout->setContentsMargins(6, 0, 6, 6);
    layout->setAlignment(fetch, Qt::AlignLeft);
    layout->addStretch(1);
    auto* both =
        new KeptSplitter(QStringLiteral("skin"), Qt::Horizontal, {view, parts}, {480, 620});
    addTab("skin", tr("Skin"), both, view);
}

QWidget* LookPage::makeSkinPart(Pictures& pictures, int place, const QString& title,
                                const QSize& size)
{
    auto* box = new QGroupBox(title);
    auto* told = new QLabel;
    told->setObjectName(QStringLiteral("skin%1").arg(place));
    told->setWordWrap(true);
    told->setTextFormat(Qt::PlainText);
    told->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* picture = new PictureBox(pictures, size);
    auto* layout = new QVBoxLayout(box);
    layout->addWidget(picture);
    layout->addWidget(told);
    const SkinPart part {place, picture, told};
    m_skin.append(part);
    connect(picture, &PictureBox::sigShown, this, [this, part] { tellSkin(part); });
    return box;
}

void LookPage::makeNobility(Pictures& pictures)
{
    auto* ranks = new ZRecordModel(QStringLiteral("NobleConsume"), this);
    auto* config = new DerivedColumn(
        ranks, QT_TRANSLATE_NOOP("DerivedColumn", "comes with"),
        [ranks](int row) { return LookTiles::comesWith(ranks->key(row)); }, this);
    m_derived.append(config);
    m_ranks = makeTable(config, ranks->table());
    auto* privileges = new ZRecordModel(QStringLiteral("NoblePrivilegeConfig"), this);
    m_privileges = makeTiles(privileges, pictures, [this](const QModelIndex& index) {
        return LookTiles::privilege(keyOf(index), rank());
    });
    m_privileges->setObjectName(QStringLiteral("privileges"));
    m_told->setObjectName(QStringLiteral("told"));
    m_told->setTextFormat(Qt::PlainText);
    m_told->setContentsMargins(6, 6, 6, 0);
    connect(m_ranks->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &LookPage::tellPrivileges);
    auto* both = new KeptSplitter(QStringLiteral("nobility"), Qt::Vertical,
                                  {m_ranks, column({m_told, m_privileges})}, {280, 420});
    auto* header = qobject_cast<QTableView*>(m_ranks)->horizontalHeader();
    header->moveSection(header->visualIndex(config->columnCount() - 1), 2); // behind the name
    addTab("nobility", tr("Nobility"), both, m_ranks);
}

void LookPage::makeFlash()
{
    auto* flashes = new ZRecordModel(QStringLiteral("FlashConfig"), this);
    auto* state = new DerivedColumn(
        flashes, QT_TRANSLATE_NOOP("DerivedColumn", "on the disk"),
        [flashes](int row) { return LookTiles::stateOf(flashes->key(row)); }, this);
    m_derived.append(state);
    QAbstractItemView* view = makeTable(state, flashes->table());
    m_fetchFlashes->setObjectName(QStringLiteral("fetchFlashes"));
    connect(m_fetchFlashes, &QPushButton::clicked, this, &LookPage::fetchFlashes);
    QWidget* shown = column({view, m_fetchFlashes});
    shown->layout()->setAlignment(m_fetchFlashes, Qt::AlignLeft);
    QWidget* whole = withAnimation(shown, view, &LookTiles::flash);
    connect(m_animations.last(), &AnimationBox::sigFetched, state, &DerivedColumn::tellChange);
    addTab("flash", tr("Flash animations"), whole, view);
}

void LookPage::makeAwards(Pictures& pictures)
{
    auto* awards = new ZRecordModel(QStringLiteral("CS_PlatAwardEffect"), this);
    QAbstractItemView* view = makeTiles(
        awards, pictures, [](const QModelIndex& index) { return LookTiles::award(keyOf(index)); });
    auto* activities = new ZRecordModel(QStringLiteral("ActivityAwardEffect"), this);
    QAbstractItemView* table = makeTable(activities, activities->table());
    auto* both = new KeptSplitter(QStringLiteral("awards"), Qt::Vertical,
                                  {view, column({new QLabel(tr("Awards of activities")), table})},
                                  {420, 280});
    QWidget* whole = withAnimation(both, view, &LookTiles::awardFlash);
    addTab("awards", tr("Awards"), whole, view);
}

void LookPage::makeRecreation(Pictures& pictures)
{
    auto* records = new ZRecordModel(QStringLiteral("RecreationConfigNew"), this);
    QAbstractItemView* view = makeTiles(records, pictures, [](const QModelIndex& index) {
        return LookTiles::recreation(keyOf(index));
    });
    QWidget* whole = withAnimation(view, view, &LookTiles::recreationAnimation);
    addTab("recreation", tr("Recreation"), whole, view);
}

QAbstractItemView* LookPage::makeTable(QAbstractItemModel* rows, const QString& table)
{
    auto* filter = new FilterModel(this);
    filter->setSourceModel(rows);
    connect(m_search, &QLineEdit::textChanged, filter, &FilterModel::setSearch);
    auto* view = new RecordView;
    view->setModel(filter);
    view->setObjectName(table);
    view->keepColumns(QStringLiteral("look-") + table);
    view->horizontalHeader()->setStretchLastSection(true);
    connect(filter, &QAbstractItemModel::rowsInserted, view, &RecordView::fitColumns);
    lead(view, table);
    return view;
}

QAbstractItemView* LookPage::makeTiles(ZRecordModel* records, Pictures& pictures,
                                       const TileDelegate::TileOf& tileOf)
{
    auto* filter = new FilterModel(this);
    filter->setSourceModel(records);
    const int order = records->columnOf(QStringLiteral("sortValue"));
    if (order >= 0)
        filter->sort(order);
    connect(m_search, &QLineEdit::textChanged, filter, &FilterModel::setSearch);
    auto* view = new TileView;
    view->setModel(filter);
    view->setObjectName(records->table());
    view->setItemDelegate(new TileDelegate(pictures, tilePicture, tileOf, view));
    lead(view, records->table());
    return view;
}

void LookPage::lead(QAbstractItemView* view, const QString& table)
{
    new EmptyNote(view, table);
    view->setToolTip(tr("Enter or a double click leads to the row in its table"));
    connect(view, &QAbstractItemView::activated, this, [this, table](const QModelIndex& index) {
        Q_EMIT sigOpen(QStringLiteral("tables"), QStringLiteral("%1/%2").arg(table, keyOf(index)));
    });
}

QWidget* LookPage::withAnimation(QWidget* shown, QAbstractItemView* view,
                                 const std::function<Moving(const QString& key)>& movingOf)
{
    auto* box = new AnimationBox;
    box->setFixedWidth(230);
    QSizePolicy place = box->sizePolicy();
    place.setRetainSizeWhenHidden(true); // the list beside it stays as wide as it is
    box->setSizePolicy(place);
    m_animations.append(box);
    connect(view->selectionModel(), &QItemSelectionModel::currentChanged, box,
            [box, movingOf](const QModelIndex& index) { box->show(movingOf(keyOf(index))); });
    auto* whole = new QWidget;
    auto* layout = new QHBoxLayout(whole);
    layout->setContentsMargins(6, 6, 0, 6);
    layout->addWidget(shown, 1);
    layout->addWidget(box, 0, Qt::AlignTop);
    return whole;
}

void LookPage::addTab(const char* name, const QString& title, QWidget* widget,
                      QAbstractItemView* view)
{
    widget->setObjectName(QLatin1String(name));
    if (qobject_cast<QSplitter*>(widget) != nullptr)
        widget->setContentsMargins(6, 6, 6, 6);
    m_views.append(view);
    m_tabs->addTab(widget, title);
}

void LookPage::showSkin()
{
    bool isMissing = false;
    for (const SkinPart& part : qAsConst(m_skin)) {
        const auto place = static_cast<ZPCSkinMgr::E_SkinLocate>(part.place);
        const QString path = ZPCSkinMgr::getInstance().getSkinPath(place);
        const bool isThere = QFileInfo(path).size() > 0;
        isMissing = isMissing || !isThere;
        part.picture->setPath(isThere ? path : QString());
    }
    const bool hasSkin = !ZPCSkinMgr::getInstance().getSkinUrl(ZPCSkinMgr::E_SkinAll).isEmpty();
    if (isMissing && hasSkin && !m_triedSkin)
        fetchSkin();
}

void LookPage::fetchSkin()
{
    m_triedSkin = true;
    m_pictures.retry();
    m_skinComes.start(longestWait);
    ZPCSkinMgr::getInstance().loadPCSkinImages();
    for (const SkinPart& part : qAsConst(m_skin))
        tellSkin(part);
}

void LookPage::tellSkin(const SkinPart& part) const
{
    const auto place = static_cast<ZPCSkinMgr::E_SkinLocate>(part.place);
    const QString address = ZPCSkinMgr::getInstance().getSkinUrl(place);
    const QSize size = part.picture->pictureSize();
    const QString state = address.isEmpty() ? tr("no skin with a version is in force")
        : m_skinComes.isActive()            ? tr("being fetched")
        : size.isEmpty()                    ? tr("not on the disk")
                         : tr("%1 x %2 pixels").arg(size.width()).arg(size.height());
    part.told->setText(
        tr("%1\n%2\n%3").arg(state, address, ZPCSkinMgr::getInstance().getSkinPath(place)));
}

void LookPage::fetchFlashes()
{
    m_fetchFlashes->setEnabled(false);
    const QPointer<LookPage> self(this);
    m_host.client().fetchFlashes().then([self](const ZFlashResult&) {
        if (self == nullptr)
            return;
        self->m_fetchFlashes->setEnabled(true);
        self->refresh(); // the column tells what could not be had, and why
    });
}

int LookPage::rank() const
{
    return keyOf(m_ranks->currentIndex()).toInt();
}

void LookPage::tellPrivileges()
{
    const auto& all = zNoblePrivilegeMgr::getInstance().getList();
    const auto own = std::count_if(all.begin(), all.end(), [this](const zNoblePrivilegeInfo& each) {
        return each.isOpen && each.nobleId.toInt() <= rank();
    });
    const QString name = ZNobilityListMgr::getInstance()->getNobleConsumeInfoById(rank()).nobleName;
    QString words = tr("Select a rank to see its privileges.");
    if (!name.isEmpty())
        words = tr("%1 has %2 of %3 privileges")
                    .arg(name, QString::number(own), QString::number(all.size()));
    const QString more = LookTiles::comesWith(QString::number(rank()));
    m_told->setText(more.isEmpty() ? words : tr("%1, and %2").arg(words, more));
    m_privileges->viewport()->update();
}
