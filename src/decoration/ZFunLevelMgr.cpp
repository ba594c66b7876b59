#include "decoration/ZFunLevelMgr.h"

#include "datatable/CacheNames.h"
#include "datatable/DeclaredTable.h"
#include "datatable/ResourceServer.h"
#include "host/ZGlobalConfig.h"

#include <QRegularExpression>
#include <QVector>

#include <algorithm>
#include <iterator>

namespace {

constexpr char badgeFolder[] = "rn/level/funlevel/";

constexpr int maxLevelWithoutTable = 200;

/** A rank of the built-in ladder: the levels after the rank before it, up to its last. */
struct Rank
{
    int lastLevel;
    const char* title;
    const char* badge;
    const char* animation = "";
};

const Rank ladder[] = {
    {5, "平民%1", "lv_pm.png"},
    {10, "富商%1", "lv_fs.png"},
    {15, "勋爵%1", "lv_xj.png"},
    {20, "男爵%1", "lv_nj.png"},
    {25, "子爵%1", "lv_zj.png"},
    {30, "伯爵%1", "lv_bj.png"},
    {35, "侯爵%1", "lv_hj.png"},
    {40, "公爵%1", "lv_gj.png"},
    {45, "郡侯%1", "lv_jh.png"},
    {50, "郡公%1", "lv_jg.png"},
    {55, "国公%1", "lv_gg.png", "cfxzgg99"},
    {60, "郡王%1", "lv_jw.png", "cfxzjw88"},
    {65, "藩王%1", "lv_pw.png", "cfxzfw77"},
    {70, "亲王%1", "lv_qw.png", "cfxzqw66"},
    {80, "国王%1", "lv_gw.png", "cfxzgw55"},
    {90, "帝王%1", "lv_dw.png", "cfxzdw44"},
    {100, "帝尊%1", "lv_dz.png", "cfxzdz33"},
    {110, "皇帝%1", "lv_hd.png", "cfxzhd22"},
    {120, "天帝%1", "lv_td.png", "cfxztd11"},
    {130, "仙帝%1", "lv_xd.png", "cfdjxddxz"},
    {140, "仙尊%1", "lv_xz.png", "cfdjxzzxz"},
    {150, "圣皇%1", "lv_sz_new.png", "app_150cfdj_xz"},
    {160, "神君%1", "lv_sj.png", "app_160cfdj_xz"},
    {170, "创世神%1", "lv_css.png", "app_170cfdj_xz"},
    {180, "万象神%1", "lv_wxs.png"},
    {190, "无极神%1", "lv_wjs.png"},
};

/** The rank of a level, or null above the ladder. */
const Rank* rankOf(int level)
{
    const auto* rank =
        std::find_if(std::begin(ladder), std::end(ladder),
                     [level](const Rank& candidate) { return level <= candidate.lastLevel; });
    return rank == std::end(ladder) ? nullptr : rank;
}

QString titleOf(const Rank* rank, int level)
{
    const int number = rank == std::begin(ladder) ? level : level - (rank - 1)->lastLevel;
    return QString::fromUtf8(rank->title).arg(number);
}

/** The titles of the ladder's levels, from level 0 on. */
QVector<QString> ladderTitles()
{
    QVector<QString> titles;
    while (const Rank* rank = rankOf(titles.size()))
        titles.append(titleOf(rank, titles.size()));
    return titles;
}

} // namespace

QSharedPointer<ZFunLevelMgr> ZFunLevelMgr::m_instance;

ZFunLevelMgr* ZFunLevelMgr::getInstance()
{
    if (m_instance.isNull())
        m_instance = QSharedPointer<ZFunLevelMgr>(new ZFunLevelMgr);
    return m_instance.data();
}

const TableDeclaration& ZFunLevelMgr::declaration()
{
    using namespace Cells;
    using namespace TableParts;
    static const DeclaredTable<ZFunLevelMgr, stFunLevelItem> table {
        {
            {Required, Integer(), Z_FIELD(stFunLevelItem, level)},
            {Required, Integer(), Z_FIELD(stFunLevelItem, exp)},
            {Required, Integer(), Z_FIELD(stFunLevelItem, ingots)},
            {Required, Text(), Z_FIELD(stFunLevelItem, levelName), TextUse::Name},
            {Required, Text(), Z_FIELD(stFunLevelItem, carId),
             RefersTo {EDataTable::CS_CarList, "id"}},
            {Required, Integer(), Z_FIELD(stFunLevelItem, upgradeType)},
            {Required, Text(), Z_FIELD(stFunLevelItem, iconName)},
            {Required, Text(), Z_FIELD(stFunLevelItem, bigIconName),
             FileOn {"ImageResServer", badgeFolder}},
            {Optional, Text(), Z_FIELD(stFunLevelItem, name), TextUse::Name},
            {Optional, Text(), Z_FIELD(stFunLevelItem, iconFlashName)},
            {Optional, Text(), Z_FIELD(stFunLevelItem, levelBackgroundColor), TextUse::Colour},
            {Optional, Text(), Z_FIELD(stFunLevelItem, levelBorderColor), TextUse::Colour},
            {Optional, Text(), Z_FIELD(stFunLevelItem, bcFlashName)},
            {Optional, Text(), Z_FIELD(stFunLevelItem, enterFlashName)},
        },
        KeyedBy {&stFunLevelItem::level, &ZFunLevelMgr::m_levels},
        Logs {"loadFunLevelInfoListTable.json加载完毕"}};
    return table;
}

bool ZFunLevelMgr::loadFunLevelInfoListTable(const QString& path)
{
    return declaration().load(path);
}

void ZFunLevelMgr::clear()
{
    m_levels.clear();
}

stFunLevelItem ZFunLevelMgr::getFunLevelItem(int level) const
{
    return m_levels.value(level);
}

QString ZFunLevelMgr::getLevelNameByLevel(int level, bool stripNumber)
{
    static const QRegularExpression number(QStringLiteral("[0-9]+\\z"));
    if (m_levels.isEmpty())
        return {};
    const int nearest = qBound(m_levels.firstKey(), level, m_levels.lastKey());
    QString name = m_levels.value(nearest).levelName;
    if (stripNumber)
        name.remove(number);
    return name;
}

int ZFunLevelMgr::getLevelByLevelName(QString levelName)
{
    if (levelName.isEmpty())
        return 0;
    for (const stFunLevelItem& item : qAsConst(m_levels)) {
        if (item.levelName == levelName)
            return item.level;
    }
    return 0;
}

QString ZFunLevelMgr::getFunLevelNameById(int level)
{
    static const QVector<QString> titles = ladderTitles();
    if (level < 0)
        return titleOf(std::begin(ladder), level);
    if (level < titles.size())
        return titles.at(level);
    const auto item = m_levels.constFind(level);
    return item == m_levels.constEnd() ? QString() : item->levelName;
}

QString ZFunLevelMgr::getLocalFunLevelImagePathById(int level)
{
    QString folder = QStringLiteral("%1/funlevel/new/").arg(QStringLiteral("ui/"));
    if (const Rank* rank = rankOf(level))
        return folder + QString::fromUtf8(rank->badge);
    const QString icon = getFunLevelItem(level).bigIconName;
    if (icon.isEmpty())
        return folder;
    return ResourceServer::imageRes() + QLatin1String(badgeFolder) + icon;
}

QString ZFunLevelMgr::getLocalFunLevelNumberPathById(int level)
{
    int number = level;
    if (level > 130)
        number -= 20;
    else if (level > 120)
        number -= 10;
    return QStringLiteral("%1/funlevel/number/num%2.png")
        .arg(QStringLiteral("ui/"), QString::number(number));
}

int ZFunLevelMgr::getMaxLevel()
{
    return m_levels.isEmpty() ? maxLevelWithoutTable : m_levels.lastKey();
}

QString ZFunLevelMgr::getFunLevelImagePathById(int level)
{
    const QString address = getFunLevelImageUrlById(level);
    const QString folder = ZGlobalConfig::getInstance().getConfig(QStringLiteral("funlevelDir"));
    if (address.isEmpty() || folder.isEmpty())
        return CacheNames::imagePath(address);
    return QStringLiteral("%1/lv%2.png").arg(folder, QString::number(level));
}

QString ZFunLevelMgr::getFunLevelFlashUrlById(int level)
{
    QString animation = getFunLevelItem(level).iconFlashName;
    const Rank* rank = rankOf(level);
    if (animation.isEmpty() && rank != nullptr)
        animation = QString::fromUtf8(rank->animation);
    if (animation.isEmpty())
        return {};
    return QStringLiteral("%1/app/logo/flash/%2").arg(ResourceServer::zzRes(), animation);
}

QString ZFunLevelMgr::getFunLevelImageUrlById(int level)
{
    if (getFunLevelItem(level).iconName.isEmpty())
        return {};
    return QStringLiteral("%1app/images/newzz/funlevel/lv%2.png")
        .arg(ResourceServer::zzRes(), QString::number(level));
}
