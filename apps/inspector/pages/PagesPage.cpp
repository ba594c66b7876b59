#include "inspector/pages/PagesPage.h"

#include "client/ZGlobalClient.h"
#include "inspector/host/ClientHost.h"
#include "inspector/parts/CopiedRows.h"
#include "inspector/parts/DerivedColumn.h"
#include "inspector/parts/EmptyNote.h"
#include "inspector/parts/ExplanationView.h"
#include "inspector/parts/FilterModel.h"
#include "inspector/parts/KeptSplitter.h"
#include "inspector/parts/Look.h"
#include "inspector/parts/PictureDelegate.h"
#include "inspector/parts/RawTables.h"
#include "inspector/parts/RecordView.h"
#include "inspector/parts/SearchBox.h"
#include "inspector/parts/ShownBanners.h"
#include "presentation/ZBannerMgr.h"
#include "presentation/ZOtherBannerMgr.h"
#include "presentation/zH5WebConfigMgr.h"
#include "why/RawTable.h"

#include <QHeaderView>
#include <QLabel>
#include <QListView>
#include <QListWidget>
#include <QTabWidget>
#include <QVBoxLayout>

namespace {

constexpr int typingPause = 150; // milliseconds
constexpr int leftOutShown = 3;  // rows, before the list scrolls
const QSize bannerSize(180, 60);

QString tableOf(bool isNew)
{
    return isNew ? QStringLiteral("CS_BannerConfigNew") : QStringLiteral("CS_BannerConfig");
}

/** Banners with their words beside the picture. */
class BannerDelegate : public PictureDelegate
{
public:
    BannerDelegate(const ShownBanners& banners, Pictures& pictures, QListView* view)
        : PictureDelegate(pictures, banners.pathRole(), banners.addressRole(), bannerSize, view)
        , m_wordsRole(banners.wordsRole())
    {
    }

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& /*index*/) const override
    {
        const int lines = 3 * option.fontMetrics.lineSpacing();
        return {bannerSize.width() * 2, qMax(bannerSize.height(), lines) + 6};
    }

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override
    {
        PictureDelegate::initStyleOption(option, index);
        option->features |= QStyleOptionViewItem::HasDisplay;
        option->displayAlignment = Qt::AlignLeft | Qt::AlignVCenter;
        option->text = index.data(m_wordsRole).toString().replace(u'\n', QChar::LineSeparator);
    }

private:
    int m_wordsRole;
};

struct LeftOut
{
    QString id;
    QString words;
};

QVector<LeftOut> leftOutOf(const Why::RawTable& table)
{
    QVector<LeftOut> all;
    for (const Why::RawRow& row : table.rows()) {
        if (row.fate == Why::RawRow::LeftOut)
            all.append({row.id,
                        PagesPage::tr("%1 %2, row %3 of %4: %5")
                            .arg(row.id, row.name, QString::number(row.row.number),
                                 table.status().table, row.words)});
    }
    return all;
}

/** What is asked for: a banner, and then where its page opens; or an address. */
Why::Reply replyTo(const QString& text, const Why::Failures& failures, const Why::Files& files)
{
    if (text.contains(u'/') || text.contains(u':'))
        return {{Why::page(text, files)}, {}, {}};
    Why::Reply reply = Why::banner(text, failures, files);
    const auto banners = reply.explanations;
    for (const Why::Explanation& banner : banners) {
        const QVector<ZBannerInfo>& list =
            ZBannerMgr::getInstance()->getList(banner.subject.table == tableOf(true));
        for (const ZBannerInfo& each : list) {
            if (banner.holds && QString::number(each.id) == banner.subject.id)
                reply.explanations.append(Why::page(each.landingPage.trimmed(), files));
        }
    }
    return reply;
}

} // namespace

PagesPage::PagesPage(const Inspected& inspected, QWidget* parent)
    : Page(parent)
    , m_host(inspected.host)
    , m_files(inspected.files)
    , m_question(new SearchBox(tr("An address, or a banner by its id or name")))
    , m_answer(new ExplanationView)
    , m_tabs(new QTabWidget)
    , m_leftOutTitle(new QLabel(tr("Left out:")))
    , m_leftOut(new QListWidget)
{
    auto* parts = new KeptSplitter(QStringLiteral("pages"), Qt::Horizontal, {m_tabs, makeAnswer()},
                                   {700, 430});
    parts->setStretchFactor(0, 1);
    parts->setChildrenCollapsible(false);
    (new QVBoxLayout(this))->addWidget(parts);

    setFirst(m_question);
    m_answer->setPlaceholderText(
        tr("Type or choose an address to see where it opens and by which rule, or a banner to see "
           "why it is shown, or is not."));
    m_tabs->addTab(makeBanners(inspected.pictures), tr("Banners"));
    auto* others = new ZRecordModel(QStringLiteral("CS_VideoHobbyBanner"), this);
    const int target = others->columnOf(QStringLiteral("targetObject"));
    const auto opens = [others](int row) {
        const QString page = others->value(row, QStringLiteral("targetObject")).toString();
        return ZOtherBannerMgr::getInstance()->otherBannerIsByCef(page) ? tr("embedded")
                                                                        : tr("outside");
    };
    addRecords(QStringLiteral("others"), tr("Secondary banners"),
               new DerivedColumn(others, QT_TRANSLATE_NOOP("DerivedColumn", "opens"), opens, this),
               target);
    auto* web = new ZRecordModel(QStringLiteral("H5WebConfig"), this);
    const auto address = [web](int row) {
        const int id = web->value(row, QStringLiteral("id")).toInt();
        return zH5WebConfigMgr::getInstance().getURLByDefine(static_cast<E_H5WebConfigDefine>(id));
    };
    RecordView* pages = addRecords(
        QStringLiteral("webpages"), tr("Web pages"),
        new DerivedColumn(web, QT_TRANSLATE_NOOP("DerivedColumn", "address"), address, this),
        web->columnCount());
    pages->sortByColumn(web->columnOf(QStringLiteral("id")), Qt::AscendingOrder);
    // What the address is made of stands on the page of tables.
    for (const char* column : {"defaultPath", "pcURL", "PC001"})
        pages->hideColumn(web->columnOf(QLatin1String(column)));
    connect(&inspected.host, &ClientHost::sigFilesChanged, this, &PagesPage::refresh);
    connect(&m_files, &RawTables::sigRead, this, [this](const QString& table) {
        if (Why::tablesOf(QStringLiteral("page")).contains(table)) {
            showLeftOut();
            answer();
        }
    });
    PagesPage::refresh();
}

void PagesPage::open(const QString& thing)
{
    m_question->setText(thing);
    m_question->setCursorPosition(0); // where one address differs from another
    m_pause.stop();
    answer();
}

QString PagesPage::opened() const
{
    return m_question->text();
}

void PagesPage::refresh()
{
    for (DerivedColumn* each : qAsConst(m_derived))
        each->tellChange();
    showLeftOut();
    answer();
}

QVector<Page::Scene> PagesPage::scenes()
{
    const auto scene = [this](const QString& name, const QString& tab, const QString& asked) {
        return Scene {name, [this, tab, asked] {
                          showTab(tab);
                          open(asked);
                      }};
    };
    return {scene(QStringLiteral("pages"), QStringLiteral("banners"),
                  QStringLiteral("https://m.example.com/activity/annual?from=banner&room=1")),
            scene(QStringLiteral("pages-gone"), QStringLiteral("banners"), QStringLiteral("6")),
            scene(QStringLiteral("pages-web"), QStringLiteral("webpages"),
                  QStringLiteral("https://h5.example.com/hall/dance"))};
}

QWidget* PagesPage::makeAnswer()
{
    m_question->setObjectName(QStringLiteral("question"));
    m_pause.setSingleShot(true);
    m_pause.setInterval(typingPause);
    connect(m_question, &QLineEdit::textChanged, &m_pause, QOverload<>::of(&QTimer::start));
    connect(m_question, &QLineEdit::returnPressed, this, &PagesPage::answer);
    connect(&m_pause, &QTimer::timeout, this, &PagesPage::answer);
    connect(m_answer, &ExplanationView::sigMeant, this, &PagesPage::open);
    connect(m_answer, &ExplanationView::sigOrigin, this, [this](const QString& thing) {
        // An address is no key of any table.
        const bool isBanner = thing.count(u'/') == 1;
        Q_EMIT sigOpen(QStringLiteral("tables"), isBanner ? thing : thing.section(u'/', 0, 0));
    });
    auto* made = new QWidget;
    auto* layout = new QVBoxLayout(made);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_question);
    layout->addWidget(m_answer, 1);
    return made;
}

QWidget* PagesPage::makeBanners(Pictures& pictures)
{
    auto* made = new QWidget;
    made->setObjectName(QStringLiteral("banners"));
    auto* layout = new QVBoxLayout(made);
    layout->setContentsMargins(6, 6, 6, 6);
    layout->addWidget(new QLabel(tr("CS_BannerConfig, by weight:")));
    layout->addWidget(makeList(false, pictures), 5);
    layout->addWidget(new QLabel(tr("CS_BannerConfigNew, in table order:")));
    layout->addWidget(makeList(true, pictures), 3);
    layout->addWidget(m_leftOutTitle);
    layout->addWidget(m_leftOut);
    m_leftOut->setObjectName(QStringLiteral("leftOut"));
    CopiedRows::addActions(*m_leftOut);
    m_leftOut->setTextElideMode(Qt::ElideRight);
    m_leftOut->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    connect(m_leftOut, &QListWidget::currentItemChanged, this, [this](const QListWidgetItem* item) {
        if (item != nullptr)
            open(item->data(Qt::UserRole).toString());
    });
    return made;
}

QWidget* PagesPage::makeList(bool isNew, Pictures& pictures)
{
    auto* banners = new ShownBanners(isNew, this);
    auto* view = new QListView;
    view->setObjectName(tableOf(isNew));
    // A view whose current row goes takes a neighbour, which nobody has asked for.
    connect(banners, &QAbstractItemModel::rowsAboutToBeRemoved, view,
            [view](const QModelIndex& /*parent*/, int first, int last) {
                const int row = view->currentIndex().row();
                if (first <= row && row <= last)
                    view->setCurrentIndex({});
            });
    view->setModel(banners);
    view->setItemDelegate(new BannerDelegate(*banners, pictures, view));
    view->setAlternatingRowColors(true);
    view->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    view->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    connect(view->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this, banners](const QModelIndex& index) {
                if (index.isValid())
                    open(banners->id(index.row()));
            });
    CopiedRows::addActions(*view);
    new EmptyNote(view, tableOf(isNew));
    return view;
}

RecordView* PagesPage::addRecords(const QString& name, const QString& title, DerivedColumn* records,
                                  int askedColumn)
{
    auto* filter = new FilterModel(this);
    filter->setSourceModel(records);
    auto* view = new RecordView;
    view->setObjectName(name);
    view->setModel(filter);
    view->keepColumns(name);
    view->horizontalHeader()->setSectionResizeMode(askedColumn, QHeaderView::Stretch);
    connect(filter, &QAbstractItemModel::rowsInserted, view, &RecordView::fitColumns);
    connect(view->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this, askedColumn](const QModelIndex& row) {
                if (row.isValid())
                    open(row.siblingAtColumn(askedColumn).data().toString().trimmed());
            });
    new EmptyNote(view, qobject_cast<ZRecordModel*>(records->sourceModel())->table());
    m_tabs->addTab(view, title);
    m_derived.append(records);
    return view;
}

void PagesPage::showTab(const QString& name)
{
    for (int tab = 0; tab < m_tabs->count(); ++tab) {
        if (m_tabs->widget(tab)->objectName() == name)
            m_tabs->setCurrentIndex(tab);
    }
}

bool PagesPage::isAtRest() const
{
    return !m_files.isReading();
}

void PagesPage::showLeftOut()
{
    const RawTables::File older = m_files.get(tableOf(false));
    const RawTables::File newer = m_files.get(tableOf(true));
    if (older == nullptr || newer == nullptr)
        return;
    const QVector<LeftOut> all = leftOutOf(*older) + leftOutOf(*newer);
    m_leftOut->clear();
    for (const LeftOut& each : all) {
        auto* item = new QListWidgetItem(each.words, m_leftOut);
        item->setData(Qt::UserRole, each.id);
        item->setToolTip(Look::toolTip(each.words));
    }
    m_leftOut->setVisible(!all.isEmpty());
    const int rows = qMin(leftOutShown, m_leftOut->count());
    m_leftOut->setFixedHeight(rows * m_leftOut->sizeHintForRow(0) + 2 * m_leftOut->frameWidth());
    m_leftOutTitle->setVisible(!all.isEmpty());
}

void PagesPage::answer()
{
    const QString text = m_question->text().trimmed();
    const Why::Files files = m_files.filesFor(QStringLiteral("page"));
    if (text.isEmpty())
        m_answer->show({});
    else if (files)
        m_answer->show(replyTo(text, m_host.client().failures(), files));
}
