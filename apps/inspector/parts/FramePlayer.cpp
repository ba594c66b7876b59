#include "inspector/parts/FramePlayer.h"

#include "inspector/parts/Background.h"

FramePlayer::FramePlayer(QWidget* parent)
    : QLabel(parent)
{
    setObjectName(QStringLiteral("frames"));
    setAlignment(Qt::AlignCenter);
    connect(&m_time, &QTimer::timeout, this, [this] {
        m_shown = (m_shown + 1) % frames();
        showFrame();
    });
}

void FramePlayer::play(const Read& read)
{
    m_time.stop();
    m_frames = {};
    clear();
    const int asked = ++m_asked;
    m_reads = read != nullptr;
    if (!m_reads)
        return;
    const QSize size = maximumSize().boundedTo({512, 512}) * devicePixelRatioF();
    inBackground(
        *QThreadPool::globalInstance(), this, [read, size] { return read(size); },
        [this, asked](const Animations::Frames& frames) {
            if (asked == m_asked)
                take(frames);
        });
}

void FramePlayer::showEvent(QShowEvent* event)
{
    QLabel::showEvent(event);
    if (frames() > 1)
        m_time.start();
}

void FramePlayer::hideEvent(QHideEvent* event)
{
    QLabel::hideEvent(event);
    m_time.stop();
}

void FramePlayer::take(const Animations::Frames& frames)
{
    m_frames = frames;
    m_shown = 0;
    m_reads = false;
    if (!frames.shown.isEmpty())
        showFrame();
    if (frames.shown.size() > 1 && isVisible())
        m_time.start();
    Q_EMIT sigRead(frames.fault);
}

void FramePlayer::showFrame()
{
    QPixmap picture = QPixmap::fromImage(m_frames.shown.at(m_shown).image);
    // As large as it is, unless that does not fit; what has been read is for this screen then.
    const QSizeF room(size());
    picture.setDevicePixelRatio(
        qMax(1.0, qMax(picture.width() / room.width(), picture.height() / room.height())));
    setPixmap(picture);
    m_time.setInterval(qMax(m_frames.shown.at(m_shown).milliseconds, 10));
}
