#include "inspector/pages/ChatPage.h"

#include "inspector/host/ClientHost.h"
#include "inspector/parts/BubbleDelegate.h"
#include "inspector/parts/ChatLines.h"
#include "inspector/parts/Column.h"
#include "inspector/parts/CopiedRows.h"
#include "inspector/parts/DerivedColumn.h"
#include "inspector/parts/EmptyNote.h"
#include "inspector/parts/FilterModel.h"
#include "inspector/parts/KeptSplitter.h"
#include "inspector/parts/LineMasks.h"
#include "inspector/parts/Look.h"
#include "inspector/parts/PictureDelegate.h"
#include "inspector/parts/Pictures.h"
#include "inspector/parts/RecordView.h"
#include "inspector/parts/SearchBox.h"
#include "inspector/parts/Stickers.h"
#include "models/ZRecordModel.h"

#include <QHeaderView>
#include <QLabel>
#include <QListView>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTabWidget>
#include <QTextBlock>
#include <QVBoxLayout>

#include <algorithm>

namespace {

const QSize stickerSize(64, 64);

/** Pictures with their names below. */
class NamedPictures : public PictureDelegate
{
public:
    using PictureDelegate::PictureDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override
    {
        PictureDelegate::initStyleOption(option, index);
        if (option->text.isEmpty())
            option->features &= ~QStyleOptionViewItem::HasDecoration;
        option->font = Look::smaller(option->font);
        option->fontMetrics = QFontMetrics(option->font);
        option->decorationPosition = QStyleOptionViewItem::Top;
        option->decorationAlignment = Qt::AlignCenter;
        option->displayAlignment = Qt::AlignCenter;
    }
};

/** As they stand in the box, whatever they are made of: a text of the whole would have a line more
 * for each separator of lines that was pasted into one. An empty box has none. */
QStringList linesOf(const QTextDocument& document)
{
    QStringList lines;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
        lines.append(block.text());
    return document.isEmpty() ? QStringList() : lines;
}

} // namespace

ChatPage::ChatPage(const Inspected& inspected, QWidget* parent)
    : Page(parent)
    , m_lines(new ChatLines(this))
    , m_filter(new FilterModel(this))
    , m_text(new QPlainTextEdit)
    , m_masks(new LineMasks(inspected.files))
    , m_view(new RecordView)
    , m_told(new QLabel)
    , m_tabs(new QTabWidget)
    , m_bubbles(new QListView)
    , m_bubble(new BubbleDelegate(inspected.pictures, this))
    , m_messages(new ZRecordModel(QStringLiteral("Message"), this))
    , m_filled(new DerivedColumn(
          m_messages, QT_TRANSLATE_NOOP("DerivedColumn", "filled in"),
          [this](int row) {
              return filled(m_messages->value(row, QStringLiteral("zh_cn")).toString());
          },
          this))
    , m_values(new QLineEdit(QStringLiteral("小明, 星光皇冠, 3")))
{
    auto* typing = new KeptSplitter(QStringLiteral("lines"), Qt::Horizontal,
                                    {makeTyping(), makeLines()}, {560, 560});
    typing->setChildrenCollapsible(false);
    makeBubbles(inspected.pictures);
    makeStickers(inspected.pictures);
    makePhrases();
    makeMessages();
    auto* parts =
        new KeptSplitter(QStringLiteral("chat"), Qt::Vertical, {typing, m_tabs}, {420, 340});
    parts->setChildrenCollapsible(false);
    (new QVBoxLayout(this))->addWidget(parts);
    setFirst(m_text);
    connect(&inspected.host, &ClientHost::sigFilesChanged, this, &ChatPage::refresh);
    ChatPage::refresh();
    tellLines();
    explain();
}

void ChatPage::open(const QString& thing)
{
    m_text->setPlainText(thing);
}

void ChatPage::refresh()
{
    m_masks->readTables();
}

QVector<Page::Scene> ChatPage::scenes()
{
    const auto scene = [this](const QString& name, const QString& tab) {
        return Scene {name, [this, tab] {
                          m_text->setPlainText(QStringLiteral(
                              "主播唱得真好听\n代充金豆找我\n加 群-换.礼物，速来\n"
                              "代。充，金 豆！还能加群换礼物，大家快来\n代（（（充金豆"));
                          goToLine(3);
                          showTab(tab);
                      }};
    };
    return {scene(QStringLiteral("chat"), QStringLiteral("bubbles")),
            scene(QStringLiteral("chat-stickers"), QStringLiteral("stickers")),
            scene(QStringLiteral("chat-messages"), QStringLiteral("messages"))};
}

bool ChatPage::isAtRest() const
{
    return m_lines->waiting() == 0 && !m_masks->isReading();
}

QWidget* ChatPage::makeTyping()
{
    m_text->setObjectName(QStringLiteral("text"));
    m_text->setPlaceholderText(tr("Type or paste lines of a chat"));
    m_text->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_text->setTabChangesFocus(true);
    connect(m_text, &QPlainTextEdit::textChanged, this, [this] {
        m_lines->setLines(linesOf(*m_text->document()));
        explain();
    });
    connect(m_text, &QPlainTextEdit::cursorPositionChanged, this, &ChatPage::explain);
    connect(m_text->verticalScrollBar(), &QScrollBar::valueChanged, this, &ChatPage::markMasks);
    connect(m_masks, &LineMasks::sigOpen, this, &ChatPage::sigOpen);
    QWidget* made = column({m_text, m_masks});
    auto* layout = qobject_cast<QVBoxLayout*>(made->layout());
    layout->setStretch(0, 1);
    layout->setStretch(1, 1);
    return made;
}

QWidget* ChatPage::makeLines()
{
    m_filter->setSourceModel(m_lines);
    m_view->setObjectName(QStringLiteral("lines"));
    m_view->setModel(m_filter);
    m_view->setSortingEnabled(true);
    QHeaderView* header = m_view->horizontalHeader();
    header->setSectionResizeMode(ChatLines::Typed, QHeaderView::Stretch);
    header->setSectionResizeMode(ChatLines::Shown, QHeaderView::Stretch);
    m_view->setColumnWidth(ChatLines::Masks, 70);
    m_view->setColumnWidth(ChatLines::Time, 90);
    m_view->sortByColumn(-1, Qt::AscendingOrder);
    m_told->setObjectName(QStringLiteral("told"));
    auto* search = new SearchBox;
    connect(search, &QLineEdit::textChanged, m_filter, &FilterModel::setSearch);
    connect(m_view->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& row) {
                if (m_view->hasFocus())
                    goToLine(m_filter->mapToSource(row).row());
            });
    for (const auto signal : {&QAbstractItemModel::rowsInserted, &QAbstractItemModel::rowsRemoved})
        connect(m_lines, signal, this, &ChatPage::tellLines);
    connect(m_lines, &QAbstractItemModel::dataChanged, this,
            [this](const QModelIndex& first, const QModelIndex& last) {
                tellLines();
                markMasks();
                if (first.row() <= currentLine() && currentLine() <= last.row())
                    explain();
            });
    return column({search, m_view, m_told});
}

void ChatPage::makeBubbles(Pictures& pictures)
{
    auto* styles = new ZRecordModel(QStringLiteral("BubbleConfig"), this);
    m_bubbles->setObjectName(QStringLiteral("bubbles"));
    m_bubbles->setModel(styles);
    m_bubbles->setItemDelegate(m_bubble);
    m_bubbles->setViewMode(QListView::IconMode);
    m_bubbles->setMovement(QListView::Static);
    m_bubbles->setResizeMode(QListView::Adjust);
    m_bubbles->setSpacing(4);
    connect(&pictures, &Pictures::sigLoaded, m_bubbles, &QListView::doItemsLayout);
    CopiedRows::addActions(*m_bubbles);
    new EmptyNote(m_bubbles, styles->table());
    m_tabs->addTab(m_bubbles, tr("Bubbles"));
}

void ChatPage::makeStickers(Pictures& pictures)
{
    auto* view = new QTableView;
    view->setObjectName(QStringLiteral("stickers"));
    view->setModel(new Stickers(this));
    view->setItemDelegate(
        new NamedPictures(pictures, Stickers::PathRole, Stickers::AddressRole, stickerSize, view));
    view->setShowGrid(false);
    view->setTabKeyNavigation(false);
    CopiedRows::addActions(*view);
    view->horizontalHeader()->setDefaultSectionSize(stickerSize.width() + 50);
    view->verticalHeader()->setDefaultSectionSize(stickerSize.height() + 26);
    new EmptyNote(view, QStringLiteral("Doutu"));
    m_tabs->addTab(view, tr("Stickers"));
}

void ChatPage::makePhrases()
{
    QList<QWidget*> both;
    for (const char* table : {"QuickInputMessage", "GroupWelComeWord"}) {
        auto* phrases = new ZRecordModel(QLatin1String(table), this);
        auto* view = new RecordView;
        view->setObjectName(QLatin1String(table));
        view->setModel(phrases);
        view->sortByColumn(-1, Qt::AscendingOrder);
        view->horizontalHeader()->setStretchLastSection(true);
        view->setToolTip(tr("Enter or a double click adds the phrase to the lines above"));
        connect(view, &QAbstractItemView::activated, this, [this](const QModelIndex& phrase) {
            append(phrase.siblingAtColumn(phrase.model()->columnCount() - 1).data().toString());
        });
        new EmptyNote(view, phrases->table());
        both.append(view);
    }
    m_tabs->addTab(new KeptSplitter(QStringLiteral("phrases"), Qt::Horizontal, both, {560, 560}),
                   tr("Phrases"));
}

void ChatPage::makeMessages()
{
    auto* filter = new FilterModel(this);
    filter->setSourceModel(m_filled);
    auto* view = new RecordView;
    view->setModel(filter);
    view->keepColumns(QStringLiteral("messages"));
    view->horizontalHeader()->setStretchLastSection(true);
    // What it reads as stands beside what it is made of.
    view->horizontalHeader()->moveSection(
        view->horizontalHeader()->visualIndex(m_filled->columnCount() - 1),
        view->horizontalHeader()->visualIndex(m_messages->columnOf(QStringLiteral("zh_cn"))) + 1);
    connect(filter, &QAbstractItemModel::rowsInserted, view, &RecordView::fitColumns);
    new EmptyNote(view, m_messages->table());
    m_values->setObjectName(QStringLiteral("values"));
    auto* stands = new QLabel(tr("What stands for %1, %2 and so on, &between commas:"));
    stands->setBuddy(m_values);
    auto* values = new QHBoxLayout;
    values->addWidget(stands);
    values->addWidget(m_values, 1);
    connect(m_values, &QLineEdit::textChanged, m_filled, &DerivedColumn::tellChange);
    QWidget* page = column({view});
    page->layout()->setContentsMargins(6, 6, 6, 6);
    qobject_cast<QVBoxLayout*>(page->layout())->insertLayout(0, values);
    page->setObjectName(QStringLiteral("messages"));
    m_tabs->addTab(page, tr("Messages"));
}

void ChatPage::showTab(const QString& name)
{
    for (int tab = 0; tab < m_tabs->count(); ++tab) {
        if (m_tabs->widget(tab)->objectName() == name)
            m_tabs->setCurrentIndex(tab);
    }
}

void ChatPage::append(const QString& line)
{
    if (m_text->document()->isEmpty())
        m_text->setPlainText(line);
    else
        m_text->appendPlainText(line);
    goToLine(m_text->blockCount() - 1);
}

int ChatPage::currentLine() const
{
    return std::min(m_text->textCursor().blockNumber(), m_lines->rowCount() - 1);
}

void ChatPage::goToLine(int line)
{
    const QTextBlock block = m_text->document()->findBlockByNumber(line);
    if (block.isValid())
        m_text->setTextCursor(QTextCursor(block));
}

void ChatPage::tellLines()
{
    QString words = tr("Lines: %1, masked: %2, %3 in all")
                        .arg(m_lines->rowCount())
                        .arg(m_lines->masked())
                        .arg(ChatLines::timeText(m_lines->nanoseconds()));
    if (m_lines->waiting() > 0)
        words += tr("; %1 to go").arg(m_lines->waiting());
    m_told->setText(words);
}

void ChatPage::markMasks()
{
    QList<QTextEdit::ExtraSelection> marks;
    QColor colour = palette().color(QPalette::Highlight);
    colour.setAlpha(90);
    const QPoint bottom(0, m_text->viewport()->height());
    const int last = m_text->cursorForPosition(bottom).blockNumber();
    QTextBlock block = m_text->cursorForPosition({0, 0}).block();
    for (; block.isValid() && block.blockNumber() <= last; block = block.next()) {
        if (block.blockNumber() >= m_lines->rowCount())
            break;
        const QVector<stWordMask> masks = m_lines->line(block.blockNumber()).masks;
        for (const stWordMask& mask : masks) {
            QTextEdit::ExtraSelection mark;
            mark.cursor = QTextCursor(block);
            const int start = block.position() + mask.start;
            mark.cursor.setPosition(start);
            mark.cursor.setPosition(start + mask.length, QTextCursor::KeepAnchor);
            mark.format.setBackground(colour);
            marks.append(mark);
        }
    }
    m_text->setExtraSelections(marks);
}

void ChatPage::explain()
{
    markMasks();
    const int line = currentLine();
    m_masks->explain(line < 0 ? ChatLines::Line() : m_lines->line(line));
    m_view->setCurrentIndex(m_filter->mapFromSource(m_lines->index(line, 0)));
    m_bubble->setLine(line < 0 ? QString() : m_lines->line(line).shown);
    m_bubbles->doItemsLayout();
}

QString ChatPage::filled(const QString& message) const
{
    static const QRegularExpression place(QStringLiteral("%([1-9])"));
    const QStringList values = m_values->text().split(u',');
    QString text;
    int from = 0;
    for (auto found = place.globalMatch(message); found.hasNext();) {
        const QRegularExpressionMatch match = found.next();
        const QString value = values.value(match.captured(1).toInt() - 1).trimmed();
        text += message.mid(from, match.capturedStart() - from);
        text += value.isEmpty() ? match.captured() : value;
        from = static_cast<int>(match.capturedEnd());
    }
    return text + message.mid(from);
}
