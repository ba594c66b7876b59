#include "inspector/parts/TrafficPlot.h"

#include "inspector/host/TrafficMeter.h"
#include "inspector/parts/Look.h"

#include <QLocale>
#include <QPainter>
#include <QTimer>

#include <algorithm>

namespace {

constexpr int redrawnEvery = 1000;

/** One quantity over time: bars from the bottom of a stripe, its highest value written above. */
struct Stripe
{
    QString name;
    QColor colour;
    QVector<qint64> values;

    void paint(QPainter& painter, const QRectF& place) const
    {
        const qint64 highest = *std::max_element(values.begin(), values.end());
        const qreal line = painter.fontMetrics().height();
        const QRectF words(place.left(), place.top(), place.width(), line);
        painter.drawText(words, Qt::AlignLeft, name);
        painter.drawText(words, Qt::AlignRight, QLocale().toString(highest));
        const QRectF bars = place.adjusted(0, line, 0, -2);
        const qreal width = bars.width() / TrafficMeter::secondsKept;
        painter.drawLine(bars.bottomLeft(), bars.bottomRight());
        for (int i = 0; i < values.size(); ++i) {
            if (values.at(i) == 0)
                continue;
            const qreal height = std::max(1.0, bars.height() * values.at(i) / highest);
            const qreal right = bars.right() - width * (values.size() - 1 - i);
            painter.fillRect(QRectF(right - width, bars.bottom() - height, width, height), colour);
        }
    }
};

} // namespace

TrafficPlot::TrafficPlot(const TrafficMeter& traffic, QWidget* parent)
    : QWidget(parent)
    , m_traffic(traffic)
{
    setObjectName(QStringLiteral("traffic"));
    setMinimumHeight(60);
    setToolTip(tr("The last two minutes, second by second; the number is that of the highest bar"));
    connect(&traffic, &TrafficMeter::sigChanged, this, QOverload<>::of(&QWidget::update));
    auto* time = new QTimer(this); // bars move on when nothing comes
    connect(time, &QTimer::timeout, this, QOverload<>::of(&QWidget::update));
    time->start(redrawnEvery);
}

void TrafficPlot::paintEvent(QPaintEvent* /*event*/)
{
    Stripe bytes {tr("bytes a second"), palette().color(QPalette::Highlight), {}};
    Stripe requests {
        tr("requests a second"), palette().color(QPalette::Highlight).lighter(130), {}};
    Stripe failures {tr("failures a second"), Look::faultColour(palette()), {}};
    const auto seconds = m_traffic.seconds();
    for (const TrafficMeter::Second& second : seconds) {
        bytes.values.append(second.bytes);
        requests.values.append(second.requests);
        failures.values.append(second.failures);
    }
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::WindowText));
    const qreal gap = 12;
    const qreal width = (rect().width() - 2 * gap) / 3;
    QRectF place(0, 0, width, rect().height());
    for (const Stripe* stripe : {&bytes, &requests, &failures}) {
        stripe->paint(painter, place);
        place.translate(width + gap, 0);
    }
}
