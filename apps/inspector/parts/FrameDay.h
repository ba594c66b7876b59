#pragma once

#include "inspector/parts/Page.h"

#include <QTimer>
#include <QWidget>

class ExplanationView;
class FilterModel;
class QListView;
class QSlider;
class QTimeEdit;
class RawTables;
class SearchBox;
class ZRecordModel;

/** The head frames on the line of a day: who wears what at which hour, and which rule says so. */
class FrameDay : public QWidget
{
    Q_OBJECT

public:
    explicit FrameDay(const Inspected& inspected, QWidget* parent = nullptr);

    /** Whether there is a frame of this id, which is selected then. */
    bool select(const QString& id);
    QString selected() const;
    QTime time() const;
    void setTime(const QTime& time);
    bool isAtRest() const;

Q_SIGNALS:
    /** Somebody wants to see "Table/id". */
    void sigOrigin(const QString& thing);

private:
    class Line;
    class HourEdit;

    QWidget* makeTime();
    void explain();
    QString idOf(const QModelIndex& shown) const;

    ClientHost& m_host;
    RawTables& m_files;
    ZRecordModel* m_frames;
    FilterModel* m_filter;
    SearchBox* m_search;
    QListView* m_view;
    QTimeEdit* m_time;
    QSlider* m_slider;
    ExplanationView* m_explanation;
    QTimer m_explain;
};
