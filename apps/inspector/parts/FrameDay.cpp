#include "inspector/parts/FrameDay.h"

#include "client/ZGlobalClient.h"
#include "decoration/ZImageFrameInfoListMgr.h"
#include "inspector/host/ClientHost.h"
#include "inspector/parts/Column.h"
#include "inspector/parts/CopiedRows.h"
#include "inspector/parts/EmptyNote.h"
#include "inspector/parts/ExplanationView.h"
#include "inspector/parts/FilterModel.h"
#include "inspector/parts/KeptSplitter.h"
#include "inspector/parts/Pictures.h"
#include "inspector/parts/RawTables.h"
#include "inspector/parts/SearchBox.h"
#include "models/ZRecordModel.h"

#include <QFileInfo>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPainter>
#include <QSignalBlocker>
#include <QSlider>
#include <QStyledItemDelegate>
#include <QTimeEdit>
#include <QToolButton>

namespace {

constexpr int secondsADay = 86400;
constexpr int stripLeft = 200; // of a line; picture and name stand before it
constexpr int stripHeight = 24;
constexpr int lineHeight = 76;
constexpr int edge = 8;
constexpr QSize pictureSize(56, 56);

int secondOf(const QTime& time)
{
    return QTime(0, 0).secsTo(time);
}

/** A little of the second in the first. */
QColor mixed(const QColor& most, const QColor& some)
{
    return {(4 * most.red() + some.red()) / 5, (4 * most.green() + some.green()) / 5,
            (4 * most.blue() + some.blue()) / 5};
}

QString bareName(const QString& icon)
{
    return icon.section(u'.', 0, 0);
}

} // namespace

/** A frame: what it shows at the moment, its name, and its periods from midnight to midnight. */
class FrameDay::Line : public QStyledItemDelegate
{
public:
    Line(FrameDay& day, Pictures& pictures)
        : QStyledItemDelegate(&day)
        , m_day(day)
        , m_pictures(pictures)
    {
    }

    QSize sizeHint(const QStyleOptionViewItem& /*option*/,
                   const QModelIndex& /*index*/) const override
    {
        return {stripLeft * 2, lineHeight};
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override
    {
        QStyleOptionViewItem panel = option;
        panel.showDecorationSelected = true;
        const QStyle* style = option.widget->style();
        style->drawPrimitive(QStyle::PE_PanelItemViewItem, &panel, painter, option.widget);
        painter->save();
        painter->setRenderHint(QPainter::SmoothPixmapTransform);
        const bool isSelected = option.state.testFlag(QStyle::State_Selected);
        painter->setPen(
            option.palette.color(isSelected ? QPalette::HighlightedText : QPalette::Text));
        const int id = m_day.idOf(index).toInt();
        paintWearer(*painter, option.rect, id);
        QRect strip = option.rect.adjusted(stripLeft, 14, -3 * edge, 0);
        strip.setHeight(stripHeight);
        paintDay(*painter, strip, option.palette, id);
        painter->restore();
    }

private:
    void paintWearer(QPainter& painter, const QRect& line, int id) const
    {
        auto* frames = ZImageFrameInfoListMgr::getInstance();
        // A client keeps it in a folder of its own; what it has not fetched goes by the cache.
        const QString address = frames->getEffectiveFrameUrlAt(id, m_day.time());
        const QString own = frames->getEffectiveFramePathAt(id, m_day.time());
        const bool isFetched = QFileInfo(own).isFile();
        const QImage image =
            m_pictures.get(isFetched || address.isEmpty() ? own : Pictures::pathOf(address),
                           address, pictureSize * painter.device()->devicePixelRatioF());
        QRect place(QPoint(line.left() + edge, line.top() + edge), pictureSize);
        if (!image.isNull())
            painter.drawImage(place, image);
        const QRect words(place.right() + edge, place.top() + 4, stripLeft - place.width(), 48);
        const QString name = frames->getInfoById(id).name;
        painter.drawText(words, Qt::AlignLeft | Qt::AlignTop,
                         QStringLiteral("%1\n%2").arg(name).arg(id));
    }

    void paintDay(QPainter& painter, const QRect& strip, const QPalette& palette, int id) const
    {
        auto* frames = ZImageFrameInfoListMgr::getInstance();
        const ZImageFrameInfo frame = frames->getInfoById(id);
        const auto periods = ZImageFrameInfoListMgr::periodsOf(frame.timePeriodConfig);
        const QColor base = mixed(palette.color(QPalette::Base), palette.color(QPalette::Text));
        paintStretch(painter, strip, {0, secondsADay}, base, bareName(frame.icon2));
        // The first that holds is in force, so it lies above the others.
        for (int i = static_cast<int>(periods.size()) - 1; i >= 0; --i) {
            const stFramePeriod& period = periods.at(i);
            if (!period.start.isValid() || !period.end.isValid())
                continue;
            const QColor colour =
                QColor::fromHsl((205 + i * 73) % 360, 110, base.lightness() > 128 ? 185 : 95);
            const int from = secondOf(period.start);
            const int to = secondOf(period.end) + 1; // its last second is in it
            const QString words = bareName(period.icon);
            if (from < to) {
                paintStretch(painter, strip, {from, to}, colour, words);
            } else {
                paintStretch(painter, strip, {from, secondsADay}, colour, words);
                paintStretch(painter, strip, {0, to}, colour, words);
            }
        }
        paintHours(painter, strip);
        const int now = xOf(strip, secondOf(m_day.time()));
        painter.fillRect(QRect(now - 1, strip.top() - 6, 3, strip.height() + 12),
                         painter.pen().color());
    }

    static void paintStretch(QPainter& painter, const QRect& strip, QPair<int, int> seconds,
                             const QColor& colour, const QString& words)
    {
        const QRect place(QPoint(xOf(strip, seconds.first), strip.top()),
                          QPoint(xOf(strip, seconds.second) - 1, strip.bottom()));
        painter.fillRect(place, colour);
        const QPen pen = painter.pen();
        painter.setPen(qGray(colour.rgb()) > 128 ? Qt::black : Qt::white);
        painter.drawText(
            place.adjusted(4, 0, -4, 0), Qt::AlignVCenter | Qt::AlignLeft,
            painter.fontMetrics().elidedText(words, Qt::ElideRight, place.width() - 8));
        painter.setPen(pen);
    }

    static void paintHours(QPainter& painter, const QRect& strip)
    {
        for (int hour = 0; hour <= 24; hour += 6) {
            const int x = xOf(strip, hour * 3600);
            painter.drawLine(x, strip.bottom(), x, strip.bottom() + 4);
            painter.drawText(QRect(x - 20, strip.bottom() + 5, 40, 20), Qt::AlignCenter,
                             QString::number(hour));
        }
    }

    static int xOf(const QRect& strip, int second)
    {
        return strip.left() + static_cast<int>(qint64(strip.width()) * second / secondsADay);
    }

    FrameDay& m_day;
    Pictures& m_pictures;
};

/** Takes an hour that is typed over all of the one before, which Qt's own edit cannot read. */
class FrameDay::HourEdit : public QTimeEdit
{
public:
    using QTimeEdit::QTimeEdit;

protected:
    void keyPressEvent(QKeyEvent* event) override
    {
        const bool isDigit = event->text().size() == 1 && event->text().at(0).isDigit();
        if (isDigit && lineEdit()->selectedText() == text()) {
            setTime(QTime(0, 0));
            setSelectedSection(HourSection);
        }
        // The second digit has led to the minutes already, which are selected then.
        if (event->text() != u":" || !lineEdit()->hasSelectedText())
            QTimeEdit::keyPressEvent(event);
    }
};

FrameDay::FrameDay(const Inspected& inspected, QWidget* parent)
    : QWidget(parent)
    , m_host(inspected.host)
    , m_files(inspected.files)
    , m_frames(new ZRecordModel(QStringLiteral("CS_HeadframeList"), this))
    , m_filter(new FilterModel(this))
    , m_search(new SearchBox)
    , m_view(new QListView)
    , m_time(new HourEdit(QTime::currentTime()))
    , m_slider(new QSlider(Qt::Horizontal))
    , m_explanation(new ExplanationView)
{
    m_view->setObjectName(QStringLiteral("frames"));
    m_view->setItemDelegate(new Line(*this, inspected.pictures));
    m_view->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_filter->setSourceModel(m_frames);
    m_view->setModel(m_filter);
    CopiedRows::addActions(*m_view);
    new EmptyNote(m_view, m_frames->table());
    auto* parts = new KeptSplitter(m_frames->table(), Qt::Horizontal,
                                   {column({m_search, m_view}), m_explanation}, {790, 330});
    parts->setStretchFactor(0, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(parts, 1);
    layout->addWidget(makeTime());
    m_explanation->setPlaceholderText(tr("Select a frame to see which period is in force."));
    connect(m_search, &QLineEdit::textChanged, m_filter, &FilterModel::setSearch);
    m_explain.setSingleShot(true);
    connect(&m_explain, &QTimer::timeout, this, &FrameDay::explain);
    const auto explainSoon = [this] { m_explain.start(); };
    connect(m_view->selectionModel(), &QItemSelectionModel::currentChanged, this, explainSoon);
    connect(&m_host, &ClientHost::sigFilesChanged, this, explainSoon);
    connect(&m_files, &RawTables::sigRead, this, explainSoon);
    connect(&inspected.pictures, &Pictures::sigLoaded, m_view->viewport(),
            QOverload<>::of(&QWidget::update));
    connect(m_explanation, &ExplanationView::sigOrigin, this, &FrameDay::sigOrigin);
    setTime(m_time->time());
}

bool FrameDay::select(const QString& id)
{
    const int row = m_frames->rowOf(id);
    if (row < 0)
        return false;
    m_search->clear();
    const QModelIndex shown = m_filter->mapFromSource(m_frames->index(row, 0));
    m_view->setCurrentIndex(shown);
    m_view->scrollTo(shown);
    return true;
}

QString FrameDay::selected() const
{
    return idOf(m_view->currentIndex());
}

QTime FrameDay::time() const
{
    return m_time->time();
}

void FrameDay::setTime(const QTime& time)
{
    const QSignalBlocker silentEdit(m_time);
    const QSignalBlocker silentSlider(m_slider);
    m_time->setTime(time);
    m_slider->setValue(secondOf(time) / 60);
    m_view->viewport()->update();
    m_explain.start();
}

bool FrameDay::isAtRest() const
{
    return !m_explain.isActive() && !m_files.isReading();
}

QWidget* FrameDay::makeTime()
{
    m_time->setObjectName(QStringLiteral("hour"));
    m_time->setDisplayFormat(QStringLiteral("HH:mm:ss"));
    m_slider->setObjectName(QStringLiteral("day"));
    m_slider->setRange(0, secondsADay / 60 - 1);
    m_slider->setPageStep(60);
    m_slider->setTickInterval(60);
    m_slider->setTickPosition(QSlider::TicksBelow);
    auto* now = new QToolButton;
    now->setText(tr("Now"));
    connect(m_time, &QTimeEdit::timeChanged, this, &FrameDay::setTime);
    connect(m_slider, &QSlider::valueChanged, this,
            [this](int minute) { setTime(QTime(minute / 60, minute % 60)); });
    connect(now, &QToolButton::clicked, this, [this] { setTime(QTime::currentTime()); });
    auto* bar = new QWidget;
    auto* layout = new QHBoxLayout(bar);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_time);
    layout->addWidget(now);
    layout->addWidget(m_slider, 1);
    return bar;
}

void FrameDay::explain()
{
    const QString id = selected();
    const Why::Files files = m_files.filesFor(QStringLiteral("frame"));
    if (id.isEmpty())
        m_explanation->show(Why::Reply());
    else if (files)
        m_explanation->show(Why::frame(id, QDateTime(QDate::currentDate(), time()),
                                       m_host.client().failures(), files));
}

QString FrameDay::idOf(const QModelIndex& shown) const
{
    return m_frames->key(m_filter->mapToSource(shown).row());
}
