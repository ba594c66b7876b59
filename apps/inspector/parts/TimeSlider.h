#pragma once

#include <QVector>
#include <QWidget>

class QDateTimeEdit;
class QLabel;
class QSlider;

/**
 * A moment to be chosen: written, by a slider, or step by step. On the slider every stretch between
 * two moments at which something changes has the same width, however many years it lasts.
 */
class TimeSlider : public QWidget
{
    Q_OBJECT

public:
    explicit TimeSlider(QWidget* parent = nullptr);

    /** The moments at which something changes, in seconds since the epoch and any order. */
    void setChanges(QVector<qint64> changes);

    qint64 time() const { return m_time; }
    void setTime(qint64 seconds);

Q_SIGNALS:
    void sigTimeChanged(qint64 seconds);

private:
    QWidget* makeButtons();
    qint64 at(int position) const;
    int positionOf(qint64 seconds) const;
    void step(int direction);
    void showTime();

    QVector<qint64> m_changes; // ascending, each once, with one before the first and after the last
    qint64 m_time;
    QDateTimeEdit* m_edit;
    QSlider* m_slider;
    QLabel* m_first;
    QLabel* m_last;
};
