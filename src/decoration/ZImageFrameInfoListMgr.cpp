#include "decoration/ZImageFrameInfoListMgr.h"

#include "datatable/ResourceServer.h"
#include "datatable/TableColumns.h"

#include <QDebug>
#include <QJsonDocument>

namespace {

const TableColumns<ZImageFrameInfo>& columns()
{
    using namespace Cells;
    static const TableColumns<ZImageFrameInfo> declared {
        {Required, "headFrameId", Integer(), Z_FIELD(ZImageFrameInfo, headFrameId)},
        {Required, "headFrameType", Integer(), Z_FIELD(ZImageFrameInfo, headFrameType)},
        {Required, "name", Text(), Z_FIELD(ZImageFrameInfo, name)},
        {Required, "description", Text(), Z_FIELD(ZImageFrameInfo, description)},
        {Required, "icon2", Text(), Z_FIELD(ZImageFrameInfo, icon2)},
        {Required, "flash", Text(), Z_FIELD(ZImageFrameInfo, flash)},
        {Required, "version", Integer(), Z_FIELD(ZImageFrameInfo, version)},
        {Optional, "micAnimation", Text(), Z_FIELD(ZImageFrameInfo, micAnimation)},
        {Optional, "timePeriodConfig", Text(), Z_FIELD(ZImageFrameInfo, timePeriodConfig),
         "JSON, parsed at every lookup"},
    };
    return declared;
}

struct Period
{
    QTime start;
    QTime end;
    QString icon;
    QString flash;

    explicit Period(const QJsonObject& period)
        : start(time(period, QStringLiteral("startTime")))
        , end(time(period, QStringLiteral("endTime")))
        , icon(period.value(QStringLiteral("icon1")).toString())
        , flash(period.value(QStringLiteral("flash")).toString())
    {
    }

    bool holds(const QTime& at) const
    {
        if (!start.isValid() || !end.isValid())
            return false;
        return start > end ? at >= start || at <= end : at >= start && at <= end;
    }

private:
    static QTime time(const QJsonObject& period, const QString& member)
    {
        return QTime::fromString(period.value(member).toString(), QStringLiteral("HH:mm:ss"));
    }
};

std::optional<Period> periodAt(const QString& schedule, const QTime& at)
{
    if (!at.isValid())
        return std::nullopt;
    const QJsonObject object = QJsonDocument::fromJson(schedule.toUtf8()).object();
    const QJsonArray periods = object.value(QLatin1String("periodConfigs")).toArray();
    for (const QJsonValue& value : periods) {
        const Period period(value.toObject());
        if (period.holds(at))
            return period;
    }
    return std::nullopt;
}

QString pathOf(int version, const QString& icon)
{
    return QStringLiteral("%1/frame/%2_%3")
        .arg(QStringLiteral("res/logo/"), QString::number(version), icon);
}

QString urlOf(const QString& icon)
{
    return ResourceServer::others() + QStringLiteral("app/logo/headframe/") + icon;
}

} // namespace

QSharedPointer<ZImageFrameInfoListMgr> ZImageFrameInfoListMgr::m_instance;

ZImageFrameInfoListMgr* ZImageFrameInfoListMgr::getInstance()
{
    if (m_instance.isNull())
        m_instance = QSharedPointer<ZImageFrameInfoListMgr>(new ZImageFrameInfoListMgr);
    return m_instance.data();
}

bool ZImageFrameInfoListMgr::loadImageFrameInfoListTable(const QString& path)
{
    const auto table = columns().read(path);
    if (!table)
        return false;
    clear();
    table->forEach(
        [this](const ZImageFrameInfo& info) { m_frames.insert(info.headFrameId, info); });
    qDebug().noquote() << QStringLiteral("ImageFrameInfoListTable.json加载完毕");
    return true;
}

void ZImageFrameInfoListMgr::clear()
{
    m_frames.clear();
}

const QHash<int, ZImageFrameInfo>& ZImageFrameInfoListMgr::getImageFrameMap()
{
    return m_frames;
}

ZImageFrameInfo ZImageFrameInfoListMgr::getInfoById(int id)
{
    return m_frames.value(id);
}

QTime ZImageFrameInfoListMgr::getCurrentPeriodStartTime(int id)
{
    return getCurrentPeriodStartTime(id, QTime::currentTime());
}

QTime ZImageFrameInfoListMgr::getCurrentPeriodStartTime(int id, const QTime& at)
{
    const auto period = periodAt(getInfoById(id).timePeriodConfig, at);
    return period ? period->start : QTime();
}

QString ZImageFrameInfoListMgr::getEffectiveIconById(int id)
{
    return getEffectiveIconById(id, QTime::currentTime());
}

QString ZImageFrameInfoListMgr::getEffectiveIconById(int id, const QTime& at)
{
    const ZImageFrameInfo info = getInfoById(id);
    const auto period = periodAt(info.timePeriodConfig, at);
    return period ? period->icon : info.icon2;
}

QString ZImageFrameInfoListMgr::getEffectiveFlashById(int id)
{
    return getEffectiveFlashById(id, QTime::currentTime());
}

QString ZImageFrameInfoListMgr::getEffectiveFlashById(int id, const QTime& at)
{
    const ZImageFrameInfo info = getInfoById(id);
    const auto period = periodAt(info.timePeriodConfig, at);
    return period ? period->flash : info.flash;
}

QString ZImageFrameInfoListMgr::getFramePathById(int id)
{
    const auto frame = m_frames.constFind(id);
    return frame == m_frames.constEnd() ? QString() : pathOf(frame->version, frame->icon2);
}

QString ZImageFrameInfoListMgr::getFrameUrlById(int id)
{
    const auto frame = m_frames.constFind(id);
    return frame == m_frames.constEnd() ? QString() : urlOf(frame->icon2);
}

QString ZImageFrameInfoListMgr::getEffectiveFramePathById(int id)
{
    const QString icon = getEffectiveIconById(id);
    return icon.isEmpty() ? QString() : pathOf(getInfoById(id).version, icon);
}

QString ZImageFrameInfoListMgr::getEffectiveFrameUrlById(int id)
{
    const QString icon = getEffectiveIconById(id);
    return icon.isEmpty() ? QString() : urlOf(icon);
}

TableDescription ZImageFrameInfoListMgr::describeTable()
{
    return columns().describe(QStringLiteral("headFrameId"), laterRowWins(),
                              [] { return getInstance()->m_frames; });
}
