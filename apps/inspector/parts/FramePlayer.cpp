#include "inspector/parts/FramePlayer.h"

#include "inspector/parts/Background.h"

#include <QDir>

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

void FramePlayer::play(const QString& folder)
{
    m_time.stop();
    m_frames = {};
    clear();
    const int asked = ++m_asked;
    m_reads = !folder.isEmpty();
    if (folder.isEmpty())
        return;
    const QSize size = maximumSize().boundedTo({512, 512}) * devicePixelRatioF();
    const QString place = QDir(folder).absolutePath();
    inBackground(
        *QThreadPool::globalInstance(), this,
        [place, size] { return Animations::read(place, size); },
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
    m_time.setInterval(1000 / frames.framesPerSecond);
    if (!frames.images.isEmpty())
        showFrame();
    if (frames.images.size() > 1 && isVisible())
        m_time.start();
    Q_EMIT sigRead(frames.fault);
}

void FramePlayer::showFrame()
{
    QPixmap picture = QPixmap::fromImage(m_frames.images.at(m_shown));
    picture.setDevicePixelRatio(devicePixelRatioF());
    setPixmap(picture);
}
