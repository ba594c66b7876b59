#pragma once

#include "inspector/parts/Animations.h"

#include <QLabel>
#include <QTimer>

#include <functional>

/** Plays frames over and over while it is visible. */
class FramePlayer : public QLabel
{
    Q_OBJECT

public:
    explicit FramePlayer(QWidget* parent = nullptr);

    using Read = std::function<Animations::Frames(const QSize& size)>;

    /** Begins with what read() brings, which is called in another thread; nothing shows nothing. */
    void play(const Read& read = {});

    /** How many frames are being played; none while they are read. */
    int frames() const { return static_cast<int>(m_frames.shown.size()); }
    bool isReading() const { return m_reads; }

Q_SIGNALS:
    /** The frames are there, or it is known why not; empty for the former. */
    void sigRead(const QString& fault);

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void take(const Animations::Frames& frames);
    void showFrame();

    Animations::Frames m_frames;
    QTimer m_time;
    int m_shown = 0;
    int m_asked = 0; // how many times; an answer to an earlier one is no longer wanted
    bool m_reads = false;
};
