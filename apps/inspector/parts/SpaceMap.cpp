#include "inspector/parts/SpaceMap.h"

#include "inspector/parts/Background.h"
#include "inspector/parts/Look.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

namespace {

QColor mixed(const QColor& colour, const QColor& base, qreal share)
{
    const auto part = [share](int one, int other) {
        return qRound(one * share + other * (1 - share));
    };
    return {part(colour.red(), base.red()), part(colour.green(), base.green()),
            part(colour.blue(), base.blue())};
}

} // namespace

SpaceMap::SpaceMap(const TidyVerdicts& verdicts, QWidget* parent)
    : QWidget(parent)
    , m_verdicts(verdicts)
{
    setObjectName(QStringLiteral("map"));
    setMinimumSize(200, 120);
    m_pool.setMaxThreadCount(1);
}

void SpaceMap::show(const CacheTree& tree, const CacheEntry& folder)
{
    m_tree = tree;
    m_folder = &folder;
    layOut();
}

void SpaceMap::mark(const QString& path)
{
    m_marked = path;
    update();
}

QString SpaceMap::pathAt(const QPointF& point) const
{
    const SpaceTile* tile = tileAt(point);
    return tile == nullptr ? QString() : tile->entry->path;
}

QColor SpaceMap::colourOf(TidyVerdict::State state, const QPalette& palette)
{
    const QColor& base = palette.color(QPalette::Base);
    const QColor& text = palette.color(QPalette::Text);
    switch (state) {
    case TidyVerdict::Stays:
        return mixed(palette.color(QPalette::Highlight), base, 0.35);
    case TidyVerdict::Goes:
        return mixed(Look::faultColour(palette), base, 0.45);
    case TidyVerdict::Removed:
        return base;
    default:
        return mixed(text, base, 0.12);
    }
}

bool SpaceMap::event(QEvent* event)
{
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const SpaceTile* tile = tileAt(help->pos());
    if (tile == nullptr) {
        QToolTip::hideText();
        return true;
    }
    const TidyVerdict verdict = m_verdicts.of(tile->entry->path);
    const QString words =
        tr("%1\n%2\n%3: %4")
            .arg(tile->entry->path, Look::size(tile->entry->bytes), verdict.what, verdict.why);
    QToolTip::showText(help->globalPos(), Look::toolTip(words), this, tile->place.toAlignedRect());
    return true;
}

void SpaceMap::mousePressEvent(QMouseEvent* event)
{
    const QString path = pathAt(event->pos());
    if (!path.isEmpty())
        Q_EMIT sigSelected(path);
}

void SpaceMap::mouseDoubleClickEvent(QMouseEvent* event)
{
    const QString path = pathAt(event->pos());
    if (!path.isEmpty())
        Q_EMIT sigActivated(path);
}

void SpaceMap::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Base));
    if (m_tiles.isEmpty()) {
        const QString words =
            m_folder == nullptr ? tr("Looking ...") : tr("There is nothing here.");
        painter.drawText(rect(), Qt::AlignCenter, words);
        return;
    }
    const SpaceTile* marked = nullptr;
    for (const SpaceTile& tile : m_tiles) {
        paintTile(painter, tile);
        if (tile.entry->path == m_marked)
            marked = &tile;
    }
    if (marked == nullptr)
        return;
    painter.setPen(QPen(palette().color(QPalette::Text), 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(marked->place.adjusted(1, 1, -1, -1));
}

void SpaceMap::resizeEvent(QResizeEvent* /*event*/)
{
    layOut();
}

void SpaceMap::layOut()
{
    if (m_folder == nullptr)
        return;
    const int layout = ++m_layout;
    const qreal heading = fontMetrics().height() + 2;
    inBackground(
        m_pool, this,
        [tree = m_tree, folder = m_folder, size = QSizeF(this->size()), heading] {
            return SpaceLayout::tiles(*folder, size, heading);
        },
        [this, layout, tree = m_tree](const QVector<SpaceTile>& tiles) {
            if (layout != m_layout)
                return;
            m_laidOut = tree;
            m_tiles = tiles;
            update();
        });
}

void SpaceMap::paintTile(QPainter& painter, const SpaceTile& tile) const
{
    const auto state = m_verdicts.of(tile.entry->path).state;
    const QRectF place = tile.place.adjusted(0.5, 0.5, -0.5, -0.5);
    const QColor own = colourOf(state, palette());
    painter.fillRect(place,
                     tile.hasHeading ? mixed(own, palette().color(QPalette::Base), 0.5) : own);
    painter.setPen(QPen(palette().color(QPalette::Base), 1,
                        state == TidyVerdict::Removed ? Qt::DashLine : Qt::SolidLine));
    if (state == TidyVerdict::Removed)
        painter.setPen(QPen(Look::unreadColour(palette()), 1, Qt::DashLine));
    painter.drawRect(place);
    const qreal line = painter.fontMetrics().height();
    const QRectF words = place.adjusted(4, 1, -4, -1);
    const bool isFilled = tile.entry->isFolder && !tile.hasHeading; // by what is in it
    if (isFilled || words.height() < line || words.width() < 3 * line)
        return;
    painter.setPen(palette().color(QPalette::Text));
    QString text = m_verdicts.tableOf(tile.entry->path);
    if (text.isEmpty())
        text = tile.entry->name();
    if (tile.hasHeading)
        text += QStringLiteral("  ") + Look::size(tile.entry->bytes);
    const QString shown =
        painter.fontMetrics().elidedText(text, Qt::ElideRight, static_cast<int>(words.width()));
    painter.drawText(words, Qt::AlignLeft | Qt::AlignTop, shown);
    if (!tile.hasHeading && words.height() > 2 * line) {
        painter.setPen(mixed(palette().color(QPalette::Text), own, 0.75));
        painter.drawText(words.adjusted(0, line, 0, 0), Qt::AlignLeft | Qt::AlignTop,
                         Look::size(tile.entry->bytes));
    }
}

const SpaceTile* SpaceMap::tileAt(const QPointF& point) const
{
    const SpaceTile* found = nullptr; // what is inside comes later
    for (const SpaceTile& tile : m_tiles) {
        if (tile.place.contains(point))
            found = &tile;
    }
    return found;
}
