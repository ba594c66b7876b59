#include "inspector/parts/BubbleDelegate.h"

#include "chat/ZBubbleConfigMgr.h"
#include "inspector/parts/Look.h"
#include "inspector/parts/NinePatch.h"
#include "inspector/parts/Pictures.h"

#include <QApplication>
#include <QPainter>

#include <algorithm>

namespace {

constexpr int tileWidth = 268;
constexpr int widestLine = 190; // of the text, which goes on below
constexpr int gap = 6;
constexpr int longestLine = 160; // characters
const QSize wholePicture(4096, 4096);

QSize textSize(const QFontMetrics& metrics, const QString& text)
{
    const QRect most(0, 0, widestLine, 1000);
    return metrics.boundingRect(most, Qt::TextWrapAnywhere, text).size();
}

} // namespace

struct BubbleDelegate::Bubble
{
    NinePatch patch;
    QString text;
    QString title;
    QString words;
    QString fault;

    /** Black or white, whatever is the easier to read on the middle of the picture. */
    QColor ink() const
    {
        const QImage& picture = patch.picture;
        const QColor middle =
            picture.isNull() ? QColor(Qt::white) : picture.pixelColor(picture.rect().center());
        return middle.lightness() > 110 ? Qt::black : Qt::white;
    }
};

BubbleDelegate::BubbleDelegate(Pictures& pictures, QObject* parent)
    : QStyledItemDelegate(parent)
    , m_pictures(pictures)
{
}

void BubbleDelegate::setLine(const QString& line)
{
    m_line = line.size() > longestLine ? line.left(longestLine) + u'…' : line;
}

QSize BubbleDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const Bubble bubble = bubbleOf(index);
    const int drawn = bubble.patch.sizeFor(textSize(option.fontMetrics, bubble.text)).height();
    return {tileWidth, drawn + 2 * option.fontMetrics.height() + 3 * gap};
}

void BubbleDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                           const QModelIndex& index) const
{
    const Bubble bubble = bubbleOf(index);
    const QWidget* widget = option.widget;
    const QStyle* style = widget != nullptr ? widget->style() : QApplication::style();
    style->drawPrimitive(QStyle::PE_PanelItemViewItem, &option, painter, widget);

    const QRect inside = option.rect.adjusted(gap, gap, -gap, -gap);
    const QSize size = bubble.patch.sizeFor(textSize(option.fontMetrics, bubble.text));
    const QRect place(inside.topLeft(), size);
    painter->save();
    painter->setFont(option.font);
    if (!bubble.patch.picture.isNull()) {
        bubble.patch.paint(*painter, place);
        painter->setPen(bubble.ink());
        painter->drawText(bubble.patch.textIn(place), Qt::AlignCenter | Qt::TextWrapAnywhere,
                          bubble.text);
    }
    const bool selected = option.state.testFlag(QStyle::State_Selected);
    const QPalette& colours = option.palette;
    const int line = option.fontMetrics.height();
    QRect words(inside.left(), inside.bottom() - 2 * line, inside.width(), line);
    painter->setPen(colours.color(selected ? QPalette::HighlightedText : QPalette::Text));
    painter->drawText(words, Qt::AlignLeft, bubble.title);
    words.translate(0, line);
    painter->setFont(Look::smaller(option.font));
    if (!selected)
        painter->setPen(bubble.fault.isEmpty() ? colours.color(QPalette::PlaceholderText)
                                               : Look::faultColour(colours));
    const QString below = bubble.fault.isEmpty() ? bubble.words : bubble.fault;
    painter->drawText(words, Qt::AlignLeft,
                      painter->fontMetrics().elidedText(below, Qt::ElideRight, words.width()));
    painter->restore();
}

BubbleDelegate::Bubble BubbleDelegate::bubbleOf(const QModelIndex& index) const
{
    ZBubbleConfigMgr& bubbles = ZBubbleConfigMgr::getInstance();
    const QString id = index.siblingAtColumn(0).data(Qt::UserRole).toString();
    const ZBubbleConfigInfo info = bubbles.getInfoById(id);
    const QString path = bubbles.getImagePathById(id);
    bool hasBorders = false;
    bool hasPadding = false;
    const QMargins borders = NinePatch::widths(info.borderWidths, &hasBorders);
    const QMargins padding = NinePatch::widths(info.paddings, &hasPadding);
    QString fault = m_pictures.fault(path);
    if (!hasBorders)
        fault = tr("“%1” is no width of borders").arg(info.borderWidths);
    else if (!hasPadding)
        fault = tr("“%1” is no padding").arg(info.paddings);
    return {NinePatch(m_pictures.get(path, bubbles.getImageUrlById(id), wholePicture), borders,
                      padding),
            m_line.isEmpty() ? info.descs : m_line,
            tr("%1 %2, type %3").arg(id, info.name, info.bubbleType),
            tr("borders %1, padding %2").arg(info.borderWidths, info.paddings), fault};
}
