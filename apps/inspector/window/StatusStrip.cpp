#include "inspector/window/StatusStrip.h"

#include "inspector/host/ClientHost.h"
#include "inspector/parts/Look.h"
#include "inspector/window/FailureList.h"

#include <QDir>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QToolButton>

StatusStrip::StatusStrip(ClientHost& host, QWidget* parent)
    : QFrame(parent)
    , m_host(host)
    , m_place(new QLabel)
    , m_words(new QLabel)
    , m_more(new QToolButton)
    , m_progress(new QProgressBar)
    , m_stop(new QPushButton(tr("&Stop")))
    , m_all(new FailureList(this))
{
    setObjectName(QStringLiteral("status"));
    makeLine();
    connect(&m_host, &ClientHost::sigTask, this, &StatusStrip::tellTask);
    connect(&m_host, &ClientHost::sigFailure, this, &StatusStrip::tellFailure);
    connect(&m_host, &ClientHost::sigProgress, this, [this](int finished, int started) {
        m_progress->setRange(0, started);
        m_progress->setValue(finished);
    });
    connect(m_stop, &QPushButton::clicked, &m_host, &ClientHost::stop);
    connect(m_more, &QToolButton::clicked, this, [this] { m_all->openAbove(*this); });
}

void StatusStrip::changeEvent(QEvent* event)
{
    QFrame::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        showWords(); // whose colour depends on it
}

bool StatusStrip::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_words && event->type() == QEvent::Resize)
        showMore();
    return QFrame::eventFilter(watched, event);
}

void StatusStrip::makeLine()
{
    m_words->setObjectName(QStringLiteral("failure"));
    m_words->setTextInteractionFlags(Qt::TextSelectableByMouse);
    // A long line must not widen the window; the list has the whole of it.
    m_words->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_place->setObjectName(QStringLiteral("place"));
    m_place->setTextInteractionFlags(Qt::TextSelectableByMouse);
    for (QLabel* label : {m_words, m_place})
        label->setTextFormat(Qt::PlainText);
    m_more->setObjectName(QStringLiteral("more"));
    m_more->setToolTip(tr("Show all that could not be done"));
    m_progress->setObjectName(QStringLiteral("progress"));
    m_progress->setFixedWidth(240);
    m_stop->setObjectName(QStringLiteral("stop"));
    m_stop->setToolTip(tr("End the update; what is not there yet fails as cancelled"));
    m_stop->setFocusPolicy(
        Qt::TabFocus); // it goes with the task, and must not take the focus along
    for (QWidget* each : std::initializer_list<QWidget*> {m_more, m_progress, m_stop})
        each->hide();
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(8, 2, 8, 2);
    setMinimumHeight(m_stop->sizeHint().height() + 4); // or pages would move with every task
    layout->addWidget(m_words, 1);
    layout->addWidget(m_more);
    layout->addWidget(m_progress);
    layout->addWidget(m_stop);
    layout->addWidget(m_place);
    m_words->installEventFilter(this);
}

void StatusStrip::tellFailure(const QString& words)
{
    m_failure = words;
    showWords();
}

void StatusStrip::tellAdvice(const QString& words)
{
    m_advice = words;
    showWords();
}

void StatusStrip::tellTask(const QString& task)
{
    m_progress->setVisible(!task.isEmpty());
    m_stop->setVisible(!task.isEmpty());
    m_stop->setEnabled(m_host.canStop());
    m_progress->setRange(0, 0);
    m_progress->setFormat(task + QStringLiteral(" %v/%m"));
    m_place->setText(
        tr("%1 in %2").arg(ClientHost::server(), QDir::toNativeSeparators(QDir::currentPath())));
}

void StatusStrip::showWords()
{
    QPalette colours = palette();
    if (!words().isEmpty())
        colours.setColor(QPalette::WindowText, Look::faultColour(colours));
    m_words->setPalette(colours);
    m_words->setText(words().section(u'\n', 0, 0));
    m_words->setToolTip(Look::toolTip(words()));
    m_all->setWords(words());
    showMore();
}

void StatusStrip::showMore()
{
    const auto others = words().count(u'\n');
    m_more->setText(others > 0 ? tr("and %1 more").arg(others) : tr("more"));
    // One long line has more to it where it does not fit, with the button or without it.
    const int given = m_more->isHidden() ? 0 : m_more->width() + layout()->spacing();
    m_more->setVisible(others > 0 || m_words->sizeHint().width() > m_words->width() + given);
}
