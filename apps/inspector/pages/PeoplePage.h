#pragma once

#include "inspector/parts/Page.h"

class FrameDay;
class Gallery;
class QTabWidget;

/** What people wear: levels, medals, head frames, cars, stamps. */
class PeoplePage : public Page
{
    Q_OBJECT

public:
    explicit PeoplePage(const Inspected& inspected, QWidget* parent = nullptr);

    /** "level/12", "medal/6", "frame/103", "car/car_jeep", "stamp/1" or "funstamp/1". */
    void open(const QString& thing) override;
    QString opened() const override;
    void refresh() override;
    QVector<Scene> scenes() override;
    bool isAtRest() const override;

private:
    Gallery* gallery(const QString& name) const;

    QTabWidget* m_tabs;
    FrameDay* m_frames;
};
