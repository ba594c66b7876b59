#include "decoration/ZImageFrameInfoListMgr.h"

#include "datatable/CacheFolders.h"
#include "datatable/DeclaredTable.h"
#include "datatable/ResourceServer.h"

#include <QJsonDocument>

#include <algorithm>

namespace {

constexpr char pictureFolder[] = "app/logo/headframe/";

QTime timeOf(const QJsonObject& period, const QString& member)
{
    return QTime::fromString(period.value(member).toString(), QStringLiteral("HH:mm:ss"));
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

bool stFramePeriod::holds(const QTime& at) const
{
    if (!start.isValid() || !end.isValid())
        return false;
    return start > end ? at >= start || at <= end : at >= start && at <= end;
}

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
            {Required, Text(), Z_FIELD(ZImageFrameInfo, name), TextUse::Name},
            {Required, Text(), Z_FIELD(ZImageFrameInfo, description), TextUse::Words},
            {Required, Text(), Z_FIELD(ZImageFrameInfo, icon2),
             FileOn {"ZZResServer", pictureFolder}},
            {Required, Text(), Z_FIELD(ZImageFrameInfo, flash)},
            {Required, Integer(), Z_FIELD(ZImageFrameInfo, version)},
            {Optional, Text(), Z_FIELD(ZImageFrameInfo, micAnimation)},
            {Optional, Text(), Z_FIELD(ZImageFrameInfo, timePeriodConfig),
             "JSON, parsed when first asked for", TextUse::Schedule,
             FileOn {"ZZResServer", pictureFolder}},
        },
        KeyedBy {&ZImageFrameInfo::headFrameId, &ZImageFrameInfoListMgr::m_frames},
        Emptied {&ZImageFrameInfoListMgr::m_periods},
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
    m_periods.clear();
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
    const auto frame = m_frames.constFind(id);
    const stFramePeriod* period = frame == m_frames.constEnd() ? nullptr : periodAt(*frame, at);
    return period == nullptr ? QTime() : period->start;
}

QVector<stFramePeriod> ZImageFrameInfoListMgr::periodsOf(const QString& schedule)
{
    const QJsonObject object = QJsonDocument::fromJson(schedule.toUtf8()).object();
    const QJsonArray list = object.value(QLatin1String("periodConfigs")).toArray();
    QVector<stFramePeriod> periods;
    for (const QJsonValue& value : list) {
        const QJsonObject period = value.toObject();
        periods.append({timeOf(period, QStringLiteral("startTime")),
                        timeOf(period, QStringLiteral("endTime")),
                        period.value(QLatin1String("icon1")).toString(),
                        period.value(QLatin1String("flash")).toString()});
    }
    return periods;
}

QString ZImageFrameInfoListMgr::getEffectiveIconById(int id)
{
    return getEffectiveIconAt(id, QTime::currentTime());
}

QString ZImageFrameInfoListMgr::getEffectiveIconAt(int id, const QTime& at)
{
    return effective(id, at, &stFramePeriod::icon, &ZImageFrameInfo::icon2);
}

QString ZImageFrameInfoListMgr::getEffectiveFlashById(int id)
{
    return getEffectiveFlashAt(id, QTime::currentTime());
}

QString ZImageFrameInfoListMgr::getEffectiveFlashAt(int id, const QTime& at)
{
    return effective(id, at, &stFramePeriod::flash, &ZImageFrameInfo::flash);
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
    return getEffectiveFramePathAt(id, QTime::currentTime());
}

QString ZImageFrameInfoListMgr::getEffectiveFramePathAt(int id, const QTime& at)
{
    const QString icon = getEffectiveIconAt(id, at);
    return icon.isEmpty() ? QString() : pathOf(getInfoById(id).version, icon);
}

QString ZImageFrameInfoListMgr::getEffectiveFrameUrlById(int id)
{
    return getEffectiveFrameUrlAt(id, QTime::currentTime());
}

QString ZImageFrameInfoListMgr::getEffectiveFrameUrlAt(int id, const QTime& at)
{
    const QString icon = getEffectiveIconAt(id, at);
    return icon.isEmpty() ? QString() : urlOf(icon);
}

const stFramePeriod* ZImageFrameInfoListMgr::periodAt(const ZImageFrameInfo& frame, const QTime& at)
{
    if (!at.isValid() || frame.timePeriodConfig.isEmpty())
        return nullptr;
    auto periods = m_periods.find(frame.headFrameId);
    if (periods == m_periods.end())
        periods = m_periods.insert(frame.headFrameId, periodsOf(frame.timePeriodConfig));
    const auto found =
        std::find_if(periods->cbegin(), periods->cend(),
                     [&at](const stFramePeriod& period) { return period.holds(at); });
    return found == periods->cend() ? nullptr : &*found;
}

QString ZImageFrameInfoListMgr::effective(int id, const QTime& at, QString stFramePeriod::*ofPeriod,
                                          QString ZImageFrameInfo::*ofFrame)
{
    const auto frame = m_frames.constFind(id);
    if (frame == m_frames.constEnd())
        return {};
    const stFramePeriod* period = periodAt(*frame, at);
    return period == nullptr ? (*frame).*ofFrame : period->*ofPeriod;
}
