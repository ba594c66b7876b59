#include "inspector/parts/TimeSlider.h"

#include <QDateTimeEdit>
#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QSlider>
#include <QToolButton>

#include <algorithm>

namespace {

constexpr int stretch = 64;             // positions between two changes
constexpr qint64 margin = 30LL * 86400; // seconds before the first change and after the last

QString dayOf(qint64 seconds)
{
    return QDateTime::fromSecsSinceEpoch(seconds).toString(QStringLiteral("yyyy-MM-dd"));
}

} // namespace

TimeSlider::TimeSlider(QWidget* parent)
    : QWidget(parent)
    , m_time(QDateTime::currentSecsSinceEpoch())
    , m_edit(new QDateTimeEdit)
    , m_slider(new QSlider(Qt::Horizontal))
    , m_first(new QLabel)
    , m_last(new QLabel)
{
    m_edit->setObjectName(QStringLiteral("moment"));
    m_edit->setDisplayFormat(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    m_slider->setObjectName(QStringLiteral("time"));
    m_slider->setTickPosition(QSlider::TicksBelow);
    m_slider->setTickInterval(stretch);
    m_slider->setPageStep(stretch);
    m_slider->setToolTip(tr("A mark for every moment at which something changes"));
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(makeButtons());
    layout->addWidget(m_first);
    layout->addWidget(m_slider, 1);
    layout->addWidget(m_last);
    connect(m_edit, &QDateTimeEdit::dateTimeChanged, this,
            [this](const QDateTime& moment) { setTime(moment.toSecsSinceEpoch()); });
    connect(m_slider, &QSlider::valueChanged, this,
            [this](int position) { setTime(at(position)); });
    setChanges({m_time});
}

void TimeSlider::setChanges(QVector<qint64> changes)
{
    if (changes.isEmpty())
        changes = {m_time};
    std::sort(changes.begin(), changes.end());
    changes.erase(std::unique(changes.begin(), changes.end()), changes.end());
    changes.prepend(changes.constFirst() - margin);
    changes.append(changes.constLast() + margin);
    if (changes == m_changes)
        return;
    m_changes = changes;
    m_first->setText(dayOf(m_changes.constFirst()));
    m_last->setText(dayOf(m_changes.constLast()));
    const QSignalBlocker silent(m_slider);
    m_slider->setRange(0, static_cast<int>(m_changes.size() - 1) * stretch);
    showTime();
}

void TimeSlider::setTime(qint64 seconds)
{
    if (seconds == m_time)
        return;
    m_time = seconds;
    showTime();
    Q_EMIT sigTimeChanged(m_time);
}

QWidget* TimeSlider::makeButtons()
{
    auto* buttons = new QWidget;
    auto* layout = new QHBoxLayout(buttons);
    layout->setContentsMargins(0, 0, 0, 0);
    const auto add = [layout](const char* name, const QString& text, const QString& hint) {
        auto* button = new QToolButton;
        button->setObjectName(QLatin1String(name));
        button->setText(text);
        button->setToolTip(hint);
        layout->addWidget(button);
        return button;
    };
    const auto* earlier = add("earlier", QStringLiteral("◀"), tr("The change before"));
    layout->addWidget(m_edit);
    const auto* later = add("later", QStringLiteral("▶"), tr("The change after"));
    const auto* now = add("now", tr("Now"), tr("The present moment"));
    connect(earlier, &QToolButton::clicked, this, [this] { step(-1); });
    connect(later, &QToolButton::clicked, this, [this] { step(1); });
    connect(now, &QToolButton::clicked, this,
            [this] { setTime(QDateTime::currentSecsSinceEpoch()); });
    return buttons;
}

qint64 TimeSlider::at(int position) const
{
    const int place = qMin(position / stretch, static_cast<int>(m_changes.size()) - 2);
    const qint64 from = m_changes.at(place);
    const qint64 length = m_changes.at(place + 1) - from;
    return from + length * (position - place * stretch) / stretch;
}

int TimeSlider::positionOf(qint64 seconds) const
{
    const auto after = std::upper_bound(m_changes.begin(), m_changes.end(), seconds);
    if (after == m_changes.begin())
        return 0;
    if (after == m_changes.end())
        return m_slider->maximum();
    const auto place = static_cast<int>(after - m_changes.begin()) - 1;
    const qint64 from = m_changes.at(place);
    return place * stretch + static_cast<int>((seconds - from) * stretch / (*after - from));
}

void TimeSlider::step(int direction)
{
    if (direction > 0) {
        const auto next = std::upper_bound(m_changes.begin(), m_changes.end(), m_time);
        setTime(next == m_changes.end() ? m_changes.constLast() : *next);
    } else {
        const auto same = std::lower_bound(m_changes.begin(), m_changes.end(), m_time);
        setTime(same == m_changes.begin() ? *same : *(same - 1));
    }
}

void TimeSlider::showTime()
{
    const QSignalBlocker silentEdit(m_edit);
    const QSignalBlocker silentSlider(m_slider);
    m_edit->setDateTime(QDateTime::fromSecsSinceEpoch(m_time));
    // What has moved to this time stays where it is: a stretch may have odd seconds.
    if (at(m_slider->value()) != m_time)
        m_slider->setValue(positionOf(m_time));
}
