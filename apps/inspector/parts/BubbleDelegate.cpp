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
constexpr QSize thumbnailSize(48, 36);
constexpr QSize wholePicture(4096, 4096);

/** Black or white, whatever is the easier to read on the middle of the picture. */
QColor inkOn(const QImage& picture)
{
    const QColor middle = picture.pixelColor(picture.rect().center());
    return middle.lightness() > 110 ? Qt::black : Qt::white;
}

/** Puts one thing below the other; without a painter it only measures. */
class Stack
{
public:
    Stack(QPainter* painter, const QStyleOptionViewItem& option)
        : m_painter(painter)
        , m_option(option)
        , m_small(Look::smaller(option.font))
        , m_room(
              QRect(option.rect.topLeft(), QSize(tileWidth, tallest)).adjusted(gap, gap, -gap, 0))
    {
    }

    int top() const { return m_room.top(); }
    void setTop(int top) { m_room.setTop(top); }
    void setLeft(int left) { m_room.setLeft(m_option.rect.left() + left); }

    void title(const QString& text) { words(text, m_option.font, inkFor(QPalette::Text)); }
    void remark(const QString& text) { words(text, m_small, inkFor(QPalette::PlaceholderText)); }
    void fault(const QString& text)
    {
        const bool selected = m_option.state.testFlag(QStyle::State_Selected);
        words(text, m_small,
              selected ? inkFor(QPalette::Text) : Look::faultColour(m_option.palette));
    }

    /** In the middle of a room of that size, beside which the words go on. */
    void picture(const QImage& image, const QSize& size)
    {
        const QRect place(m_room.topLeft(), size);
        setLeft(gap + size.width() + gap);
        if (m_painter == nullptr || image.isNull())
            return;
        QSize shown = image.size();
        if (shown.width() > size.width() || shown.height() > size.height())
            shown.scale(size, Qt::KeepAspectRatio);
        QRect middle({}, shown);
        middle.moveCenter(place.center());
        m_painter->setRenderHint(QPainter::SmoothPixmapTransform);
        m_painter->drawImage(middle, image);
    }

    void patch(const NinePatch& patch, const QString& text)
    {
        const QRect most(0, 0, widestLine, tallest);
        const QSize line =
            m_option.fontMetrics.boundingRect(most, Qt::TextWrapAnywhere, text).size();
        const QRect place(m_room.topLeft(), patch.sizeFor(line));
        m_room.setTop(place.bottom() + gap);
        if (m_painter == nullptr)
            return;
        patch.paint(*m_painter, place);
        m_painter->setFont(m_option.font);
        m_painter->setPen(inkOn(patch.picture));
        m_painter->drawText(patch.textIn(place), Qt::AlignCenter | Qt::TextWrapAnywhere, text);
    }

private:
    static constexpr int tallest = 1000;

    QColor inkFor(QPalette::ColorRole role) const
    {
        const bool selected = m_option.state.testFlag(QStyle::State_Selected);
        return m_option.palette.color(selected ? QPalette::HighlightedText : role);
    }

    void words(const QString& text, const QFont& font, const QColor& ink)
    {
        if (text.isEmpty())
            return;
        constexpr int how = Qt::AlignLeft | Qt::AlignTop | Qt::TextWrapAnywhere;
        if (m_painter != nullptr) {
            m_painter->setFont(font);
            m_painter->setPen(ink);
            m_painter->drawText(m_room, how, text);
        }
        m_room.setTop(QFontMetrics(font).boundingRect(m_room, how, text).bottom() + 1);
    }

    QPainter* m_painter;
    const QStyleOptionViewItem& m_option;
    QFont m_small;
    QRect m_room;
};

} // namespace

/** One of the two nine-patches. */
struct BubbleDelegate::Form
{
    QString title;
    NinePatch patch;
    QString fault;
};

struct BubbleDelegate::Bubble
{
    QImage thumbnail;
    QString title;
    QString words;
    QString fault; // of the row, or of the thumbnail
    QString text;
    QVector<Form> forms;

    /** Answers where it ends. */
    int lay(Stack stack) const
    {
        const int top = stack.top();
        stack.picture(thumbnail, thumbnailSize);
        stack.title(title);
        stack.remark(words);
        stack.fault(fault);
        stack.setTop(std::max(stack.top(), top + thumbnailSize.height()) + gap);
        stack.setLeft(gap);
        for (const Form& form : forms) {
            stack.remark(form.title);
            stack.setTop(stack.top() + gap / 2);
            if (form.patch.picture.isNull())
                stack.fault(form.fault);
            else
                stack.patch(form.patch, text);
        }
        return stack.top() + gap;
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
    QStyleOptionViewItem anywhere = option;
    anywhere.rect.moveTo(0, 0);
    return {tileWidth, bubbleOf(index).lay(Stack(nullptr, anywhere))};
}

void BubbleDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                           const QModelIndex& index) const
{
    const QWidget* widget = option.widget;
    const QStyle* style = widget != nullptr ? widget->style() : QApplication::style();
    style->drawPrimitive(QStyle::PE_PanelItemViewItem, &option, painter, widget);
    painter->save();
    bubbleOf(index).lay(Stack(painter, option));
    painter->restore();
}

BubbleDelegate::Bubble BubbleDelegate::bubbleOf(const QModelIndex& index) const
{
    ZBubbleConfigMgr& bubbles = ZBubbleConfigMgr::getInstance();
    const QString id = index.siblingAtColumn(0).data(Qt::UserRole).toString();
    const ZBubbleConfigInfo info = bubbles.getInfoById(id);
    bool hasBorders = false;
    bool hasPadding = false;
    const QMargins borders = NinePatch::widths(info.borderWidths, &hasBorders);
    const QMargins padding = NinePatch::widths(info.paddings, &hasPadding);
    const auto form = [&](const QString& title, const QString& path, const QString& address) {
        const QImage picture = m_pictures.get(path, address, wholePicture);
        return Form {title, NinePatch(picture, borders, padding), m_pictures.fault(path)};
    };
    const QString small = bubbles.getThumbEnableImagePathById(id);
    QString fault = m_pictures.fault(small);
    if (!hasBorders)
        fault = tr("“%1” is no width of borders").arg(info.borderWidths);
    else if (!hasPadding)
        fault = tr("“%1” is no padding").arg(info.paddings);
    return {
        m_pictures.get(small, bubbles.getThumbEnableUrlById(id), wholePicture),
        tr("%1 %2, type %3").arg(id, info.name, info.bubbleType),
        tr("borders %1, padding %2").arg(info.borderWidths, info.paddings),
        fault,
        m_line.isEmpty() ? info.descs : m_line,
        {form(tr("in the chat"), bubbles.getChatPathById(id), bubbles.getChatUrlById(id)),
         form(tr("as a background"), bubbles.getImagePathById(id), bubbles.getImageUrlById(id))}};
}
