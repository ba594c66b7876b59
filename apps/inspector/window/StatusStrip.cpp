#include "inspector/window/StatusStrip.h"

#include "inspector/host/ClientHost.h"
#include "inspector/parts/Look.h"

#include <QDir>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>

StatusStrip::StatusStrip(const ClientHost& host, QWidget* parent)
    : QFrame(parent)
    , m_place(new QLabel)
    , m_words(new QLabel)
    , m_progress(new QProgressBar)
{
    setObjectName(QStringLiteral("status"));
    m_words->setObjectName(QStringLiteral("failure"));
    m_words->setTextInteractionFlags(Qt::TextSelectableByMouse);
    // A long line must not widen the window; its tool tip has the whole of it.
    m_words->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_place->setObjectName(QStringLiteral("place"));
    m_place->setTextInteractionFlags(Qt::TextSelectableByMouse);
    for (QLabel* label : {m_words, m_place})
        label->setTextFormat(Qt::PlainText);
    m_progress->setObjectName(QStringLiteral("progress"));
    m_progress->setFixedWidth(240);
    m_progress->hide();
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(8, 2, 8, 2);
    layout->addWidget(m_words, 1);
    layout->addWidget(m_progress);
    layout->addWidget(m_place);

    connect(&host, &ClientHost::sigTask, this, &StatusStrip::tellTask);
    connect(&host, &ClientHost::sigFailure, this, &StatusStrip::tellFailure);
    connect(&host, &ClientHost::sigProgress, this, [this](int finished, int started) {
        m_progress->setRange(0, started);
        m_progress->setValue(finished);
    });
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
    m_progress->setRange(0, 0);
    m_progress->setFormat(task + QStringLiteral(" %v/%m"));
    m_place->setText(
        tr("%1 in %2").arg(ClientHost::server(), QDir::toNativeSeparators(QDir::currentPath())));
}

void StatusStrip::showWords()
{
    const QString words = m_failure.isEmpty() ? m_advice : m_failure;
    QPalette colours = palette();
    if (!words.isEmpty())
        colours.setColor(QPalette::WindowText, Look::faultColour(colours));
    m_words->setPalette(colours);
    const QStringList lines = words.split(u'\n');
    m_words->setText(
        lines.size() > 1
            ? tr("%1 (and %2 more)").arg(lines.first(), QString::number(lines.size() - 1))
            : words);
    m_words->setToolTip(Look::toolTip(words));
}
