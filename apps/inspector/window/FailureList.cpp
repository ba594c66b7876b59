#include "inspector/window/FailureList.h"

#include <QPlainTextEdit>
#include <QTextBlock>
#include <QVBoxLayout>

namespace {

constexpr int mostLines = 14; // before it scrolls

} // namespace

FailureList::FailureList(QWidget* parent)
    : QFrame(parent, Qt::Popup)
    , m_words(new QPlainTextEdit)
{
    setObjectName(QStringLiteral("failures"));
    setFrameShape(QFrame::StyledPanel);
    m_words->setFrameShape(QFrame::NoFrame);
    m_words->setReadOnly(true);
    m_words->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(1, 1, 1, 1);
    layout->addWidget(m_words);
    setFocusProxy(m_words);
}

void FailureList::setWords(const QString& words)
{
    m_words->setPlainText(words);
    if (words.isEmpty())
        hide();
}

void FailureList::openAbove(const QWidget& widget)
{
    resize(widget.width(), height());
    layout()->activate(); // lines are broken at the width
    int lines = 0;
    for (QTextBlock block = m_words->document()->begin(); block.isValid(); block = block.next()) {
        m_words->document()->documentLayout()->blockBoundingRect(block);
        lines += block.layout()->lineCount();
    }
    const int margins = 2 * (1 + frameWidth() + qRound(m_words->document()->documentMargin()));
    resize(widget.width(),
           qMin(lines + 1, mostLines) * m_words->fontMetrics().lineSpacing() + margins);
    move(widget.mapToGlobal(QPoint(0, -height())));
    show();
    m_words->setFocus(Qt::PopupFocusReason);
}
