#include "inspector/parts/ChatLines.h"

#include "datatable/ZDataTableMgr.h"
#include "inspector/host/ColumnTitle.h"
#include "inspector/parts/Look.h"

#include <QElapsedTimer>
#include <QLocale>

#include <algorithm>

namespace {

constexpr int turnMilliseconds = 8;
constexpr qint64 millisecond = 1000000; // in nanoseconds

} // namespace

ChatLines::ChatLines(QObject* parent)
    : QAbstractTableModel(parent)
{
    connect(&m_turn, &QTimer::timeout, this, &ChatLines::maskSome);
    connect(ZDataTableMgr::getInstance(), &ZDataTableMgr::sigTableLoaded, this,
            [this](const QString& table) {
                if (table.endsWith(QLatin1String("ChatFilterWordKey")))
                    maskAnew();
            });
}

void ChatLines::setLines(const QStringList& typed)
{
    QVector<Line> now;
    for (const QString& line : typed)
        now.append({line, {}, {}, -1});
    const int old = rowCount();
    const int all = static_cast<int>(now.size());
    const int shorter = std::min(old, all);
    int before = 0;
    while (before < shorter && m_lines.at(before).typed == now.at(before).typed)
        ++before;
    int after = 0;
    while (after < shorter - before
           && m_lines.at(old - 1 - after).typed == now.at(all - 1 - after).typed)
        ++after;
    const int place = shorter - after; // where lines come in or go; those between are others now
    if (old > all) {
        beginRemoveRows({}, place, place + old - all - 1);
        m_lines.remove(place, old - all);
        endRemoveRows();
    } else if (all > old) {
        beginInsertRows({}, place, place + all - old - 1);
        m_lines.insert(place, all - old, {});
        std::copy_n(now.begin() + place, all - old, m_lines.begin() + place);
        endInsertRows();
    }
    std::copy(now.begin() + before, now.begin() + place, m_lines.begin() + before);
    if (place > before)
        Q_EMIT dataChanged(index(before, 0), index(place - 1, ColumnCount - 1));
    m_next = std::min(m_next, before);
    maskSome();
}

int ChatLines::masked() const
{
    return static_cast<int>(std::count_if(m_lines.begin(), m_lines.end(),
                                          [](const Line& line) { return !line.masks.isEmpty(); }));
}

int ChatLines::waiting() const
{
    return static_cast<int>(std::count_if(m_lines.begin(), m_lines.end(),
                                          [](const Line& line) { return line.nanoseconds < 0; }));
}

qint64 ChatLines::nanoseconds() const
{
    qint64 sum = 0;
    for (const Line& line : m_lines)
        sum += std::max<qint64>(0, line.nanoseconds);
    return sum;
}

QString ChatLines::timeText(qint64 nanoseconds)
{
    const QLocale locale;
    return nanoseconds < millisecond
        ? tr("%1 µs").arg(locale.toString(static_cast<double>(nanoseconds) / 1e3, 'f', 1))
        : tr("%1 ms").arg(locale.toString(static_cast<double>(nanoseconds) / 1e6, 'f', 1));
}

int ChatLines::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_lines.size());
}

int ChatLines::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant ChatLines::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const Line& line = m_lines.at(index.row());
    const bool isNumber = index.column() == Masks || index.column() == Time;
    if (role == Qt::TextAlignmentRole)
        return isNumber ? QVariant(Qt::AlignRight | Qt::AlignVCenter) : QVariant();
    if (role == Qt::ToolTipRole && !isNumber)
        return Look::toolTip(data(index, Qt::DisplayRole).toString());
    if (role != Qt::DisplayRole && role != Qt::UserRole)
        return {};
    if (line.nanoseconds < 0 && index.column() != Typed)
        return {};
    switch (index.column()) {
    case Typed:
        return line.typed;
    case Shown:
        return line.shown;
    case Masks:
        return static_cast<int>(line.masks.size());
    default:
        return role == Qt::UserRole ? QVariant(line.nanoseconds) : timeText(line.nanoseconds);
    }
}

QVariant ChatLines::headerData(int section, Qt::Orientation orientation, int role) const
{
    static constexpr const char* titles[] {QT_TR_NOOP("line"), QT_TR_NOOP("as the room sees it"),
                                           QT_TR_NOOP("masks"), QT_TR_NOOP("time")};
    return orientation == Qt::Horizontal && section >= 0 && section < ColumnCount
        ? columnTitle(staticMetaObject.className(), titles[section], role)
        : QAbstractTableModel::headerData(section, orientation, role);
}

void ChatLines::maskAnew()
{
    for (Line& line : m_lines)
        line.nanoseconds = -1;
    m_next = 0;
    maskSome();
}

void ChatLines::maskSome()
{
    QElapsedTimer turn;
    turn.start();
    const int first = m_next;
    while (m_next < m_lines.size() && turn.elapsed() < turnMilliseconds) {
        if (m_lines.at(m_next).nanoseconds < 0)
            mask(m_lines[m_next]);
        ++m_next;
    }
    if (m_next > first)
        Q_EMIT dataChanged(index(first, 0), index(m_next - 1, ColumnCount - 1));
    if (m_next < m_lines.size())
        m_turn.start(0);
    else
        m_turn.stop();
}

void ChatLines::mask(Line& line)
{
    ZSensitiveWordsInfoListMgr* words = ZSensitiveWordsInfoListMgr::getInstance();
    QElapsedTimer clock;
    clock.start();
    line.shown = words->sensitiveWordsCheck(line.typed);
    line.nanoseconds = clock.nsecsElapsed();
    line.masks = words->explainSensitiveWords(line.typed);
}
