#pragma once

#include <QWidget>

class TrafficMeter;

/** Bytes, requests and failures of the last two minutes, a bar each second. */
class TrafficPlot : public QWidget
{
    Q_OBJECT

public:
    explicit TrafficPlot(const TrafficMeter& traffic, QWidget* parent = nullptr);

    QSize sizeHint() const override { return {360, 90}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const TrafficMeter& m_traffic;
};
