#include "decoration/ZImageFrameInfoListMgr.h"

#include "datatable/CacheFolders.h"
#include "datatable/DeclaredTable.h"
#include "datatable/ResourceServer.h"

#include <QJsonDocument>

namespace {

constexpr char pictureFolder[] = "app/logo/headframe/";

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
        .arg(CacheFolders::logos(), QString::number(version), icon);
}

QString urlOf(const QString& icon)
{
    return ResourceServer::zzRes() + QLatin1String(pictureFolder) + icon;
}

} // namespace

QSharedPointer<ZImageFrameInfoListMgr> ZImageFrameInfoListMgr::m_instance;

ZImageFrameInfoListMgr* ZImageFrameInfoListMgr::getInstance()
{
    if (m_instance.isNull())
        m_instance = QSharedPointer<ZImageFrameInfoListMgr>(new ZImageFrameInfoListMgr);
    return m_instance.data();
}

const TableDeclaration& ZImageFrameInfoListMgr::declaration()
{
    using namespace Cells;
    using namespace TableParts;
    static const DeclaredTable<ZImageFrameInfoListMgr, ZImageFrameInfo> table {
        {
            {Required, Integer(), Z_FIELD(ZImageFrameInfo, headFrameId)},
            {Required, Integer(), Z_FIELD(ZImageFrameInfo, headFrameType)},
            {Required, Text(), Z_FIELD(ZImageFrameInfo, name)},
            {Required, Text(), Z_FIELD(ZImageFrameInfo, description)},
            {Required, Text(), Z_FIELD(ZImageFrameInfo, icon2),
             FileOn {"ZZResServer", pictureFolder}},
            {Required, Text(), Z_FIELD(ZImageFrameInfo, flash)},
            {Required, Integer(), Z_FIELD(ZImageFrameInfo, version)},
            {Optional, Text(), Z_FIELD(ZImageFrameInfo, micAnimation)},
            {Optional, Text(), Z_FIELD(ZImageFrameInfo, timePeriodConfig),
             "JSON, parsed at every lookup"},
        },
        KeyedBy {&ZImageFrameInfo::headFrameId, &ZImageFrameInfoListMgr::m_frames},
        Logs {"ImageFrameInfoListTable.json加载完毕"}};
    return table;
}

bool ZImageFrameInfoListMgr::loadImageFrameInfoListTable(const QString& path)
{
    return declaration().load(path);
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
    return getPeriodStartTimeAt(id, QTime::currentTime());
}

QTime ZImageFrameInfoListMgr::getPeriodStartTimeAt(int id, const QTime& at)
{
    const auto period = periodAt(getInfoById(id).timePeriodConfig, at);
    return period ? period->start : QTime();
}

QString ZImageFrameInfoListMgr::getEffectiveIconById(int id)
{
    return getEffectiveIconAt(id, QTime::currentTime());
}

QString ZImageFrameInfoListMgr::getEffectiveIconAt(int id, const QTime& at)
{
    const ZImageFrameInfo info = getInfoById(id);
    const auto period = periodAt(info.timePeriodConfig, at);
    return period ? period->icon : info.icon2;
}

QString ZImageFrameInfoListMgr::getEffectiveFlashById(int id)
{
    return getEffectiveFlashAt(id, QTime::currentTime());
}

QString ZImageFrameInfoListMgr::getEffectiveFlashAt(int id, const QTime& at)
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
