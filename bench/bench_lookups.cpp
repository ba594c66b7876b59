#include "Measured.h"
#include "SampleTables.h"

#include "datatable/ZDataTableMgr.h"
#include "decoration/ZFunLevelMgr.h"
#include "decoration/ZImageFrameInfoListMgr.h"
#include "gift/ZGiftListMgr.h"
#include "presentation/ZOtherBannerMgr.h"
#include "privilege/ZNobilityListMgr.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>
#include <QRegularExpression>
#include <QSet>

#include <benchmark/benchmark.h>

// What the views ask all day, beside the plain form of each rule or a look into the map alone.

namespace {

constexpr int giftCount = 10000;
constexpr int rankCount = 50;
constexpr int pageCount = 200;
constexpr int periodCount = 8;

template <class Argument, class Ask>
void time(benchmark::State& state, const QVector<Argument>& arguments, Ask ask)
{
    int next = 0;
    for (auto _ : state) {
        auto answer = ask(arguments.at(next));
        benchmark::DoNotOptimize(answer);
        next = next + 1 < arguments.size() ? next + 1 : 0;
    }
}

template <class Argument, class Ask>
void add(const char* subject, const char* side, int size, const QVector<Argument>& arguments,
         Ask ask)
{
    benchmark::RegisterBenchmark(qPrintable(Measured::name(subject, side, size)),
                                 [=](benchmark::State& state) { time(state, arguments, ask); });
}

/** A look-up and the plain form of its rule, which have to agree on every argument. */
template <class Argument, class Ask, class AskPlainly>
void addPair(const char* subject, int size, const QVector<Argument>& arguments, Ask ours,
             AskPlainly plain)
{
    for (const Argument& argument : arguments)
        Measured::same(subject, ours(argument), plain(argument));
    add(subject, "ours", size, arguments, ours);
    add(subject, "plain", size, arguments, plain);
}

void addGifts()
{
    for (const TableStatus& table : ZDataTableMgr::getInstance()->getTableStatuses()) {
        if (table.table == QLatin1String("CS_GiftList"))
            Measured::loaded(ZGiftListMgr::declaration(), SampleTables::bytes(table, giftCount));
    }
    ZGiftListMgr* gifts = ZGiftListMgr::getInstance();
    QVector<QString> ids;
    for (int i = 0; i < giftCount; i += 97)
        ids.append(gifts->getGiftList().at(i).giftId);
    const qint64 time = gifts->getGiftList().at(0).startTime + 1;
    const auto inMap = [gifts](const QString& id) { return gifts->getGiftMap().value(id); };
    const auto check = [=](const QString& id) {
        return gifts->checkGiftValid(id, time, true, true);
    };
    for (const QString& id : qAsConst(ids)) {
        const ZGiftInfo gift = inMap(id);
        const bool valid = gift.startTime <= time && time <= gift.endTime && gift.isVisible
            && (gift.giftDisplayLocation == 0 || gift.giftDisplayLocation == 2);
        Measured::same("checkGiftValid", check(id), valid);
    }
    add("getGiftInfoById", "ours", giftCount, ids,
        [gifts](const QString& id) { return gifts->getGiftInfoById(id); });
    add("getGiftInfoById", "QHash", giftCount, ids, inMap);
    add("checkGiftValid", "ours", giftCount, ids, check);
    add("checkGiftValid", "QHash", giftCount, ids, inMap);
}

/** The ladder's titles by the last level of each rank. */
QMap<int, QString> ladder()
{
    QMap<int, QString> ladder;
    for (int last = 5, first = 1; last <= 190; first = last + 1, last += last < 70 ? 5 : 10) {
        const QString title = ZFunLevelMgr::getInstance()->getFunLevelNameById(first);
        ladder.insert(last, title.left(title.size() - 1) + QStringLiteral("%1"));
    }
    return ladder;
}

void addLevelNames()
{
    QJsonArray rows;
    for (int level = 191; level <= 210; ++level)
        rows.append(QJsonArray {level, 0, 0, QStringLiteral("L%1").arg(level), QString(), 0,
                                QString(), QString()});
    Measured::loaded(
        ZFunLevelMgr::declaration(),
        {"level", "exp", "ingots", "levelName", "carId", "upgradeType", "iconName", "bigIconName"},
        rows);
    ZFunLevelMgr* levels = ZFunLevelMgr::getInstance();
    const auto plain = [levels, titles = ladder()](int level) {
        const auto rank = titles.lowerBound(level);
        if (rank == titles.end())
            return levels->getFunLevelItem(level).levelName;
        return rank->arg(rank == titles.begin() ? level : level - std::prev(rank).key());
    };
    QVector<int> all;
    for (int level = 1; level <= 210; ++level)
        all.append(level);
    addPair(
        "getFunLevelNameById", all.size(), all,
        [levels](int level) { return levels->getFunLevelNameById(level); }, plain);
}

void addEmbeddedPages()
{
    QJsonArray rows;
    QSet<QString> pages;
    for (int i = 0; i < pageCount; ++i) {
        const QString page = QStringLiteral("https://h5.example.com/activity/%1/index").arg(i);
        rows.append(QJsonArray {i, page, 1});
        pages.insert(page);
    }
    Measured::loaded(ZOtherBannerMgr::declaration(), {"id", "targetObject", "isCefOpen"}, rows);
    const auto plain = [pages](const QString& url) {
        static const QRegularExpression pattern(QStringLiteral("^https?://[^/]+(/.+)"));
        for (const QString& page : pages) {
            const QString path = pattern.match(page).captured(1);
            if (!path.isEmpty() && url.contains(path))
                return true;
        }
        return false;
    };
    QVector<QString> urls;
    for (int i = 0; i < 2 * pageCount; i += 10)
        urls.append(QStringLiteral("https://h5.example.com/activity/%1/index?userId=1").arg(i));
    ZOtherBannerMgr* banners = ZOtherBannerMgr::getInstance();
    addPair(
        "otherBannerIsByCef", pageCount, urls,
        [banners](const QString& url) { return banners->otherBannerIsByCef(url); }, plain);
}

void addExclusiveCars()
{
    QJsonArray rows;
    QMap<QString, stNobleConfig> ranks;
    for (int i = 0; i < rankCount; ++i) {
        const QString id = QString::number(i);
        const QString car = i % 5 == 0 ? QString() : QStringLiteral("noble_car_%1").arg(i);
        rows.append(QJsonArray {id, QString(), QString(), car, QString::number(i % 2)});
        ranks.insert(id, {id, QString(), QString(), car, i % 2 == 1});
    }
    Measured::loaded(ZNobilityListMgr::configDeclaration(),
                     {"nobleId", "chatSkinList", "headFrameId", "exclusiveCar", "customCar"}, rows);
    const auto plain = [ranks](const QString& id) {
        for (const stNobleConfig& rank : ranks) {
            const QString& car = rank.exclusiveCar;
            const QString asked = rank.customCar ? id.left(car.size()) : id;
            if (!id.isEmpty() && !car.isEmpty() && asked.compare(car, Qt::CaseInsensitive) == 0)
                return true;
        }
        return false;
    };
    QVector<QString> cars;
    for (int i = 0; i < rankCount; i += 3) {
        cars.append(QStringLiteral("NOBLE_car_%1_gold").arg(i));
        cars.append(QStringLiteral("car_%1").arg(i));
    }
    ZNobilityListMgr* nobility = ZNobilityListMgr::getInstance();
    addPair(
        "isExclusiveCar", rankCount, cars,
        [nobility](const QString& id) { return nobility->isExclusiveCar(id); }, plain);
}

QJsonArray periods()
{
    QJsonArray periods;
    for (int i = 0; i < periodCount; ++i) {
        periods.append(
            QJsonObject {{QStringLiteral("startTime"),
                          QStringLiteral("%1:00:00").arg(2 * i + 4, 2, 10, QLatin1Char('0'))},
                         {QStringLiteral("endTime"),
                          QStringLiteral("%1:59:59").arg(2 * i + 4, 2, 10, QLatin1Char('0'))},
                         {QStringLiteral("icon1"), QStringLiteral("%1.png").arg(i)},
                         {QStringLiteral("flash"), QStringLiteral("flash%1").arg(i)}});
    }
    return periods;
}

QString plainIcon(const QTime& at)
{
    const ZImageFrameInfo frame = ZImageFrameInfoListMgr::getInstance()->getInfoById(1);
    const QJsonObject config = QJsonDocument::fromJson(frame.timePeriodConfig.toUtf8()).object();
    const QString format = QStringLiteral("HH:mm:ss");
    for (const QJsonValue& value : config.value(QStringLiteral("periodConfigs")).toArray()) {
        const QJsonObject period = value.toObject();
        const QString startText = period.value(QStringLiteral("startTime")).toString();
        const QString endText = period.value(QStringLiteral("endTime")).toString();
        const QTime start = QTime::fromString(startText, format);
        const QTime end = QTime::fromString(endText, format);
        if (start.isValid() && end.isValid() && start <= at && at <= end)
            return period.value(QStringLiteral("icon1")).toString();
    }
    return frame.icon2;
}

void addFrames()
{
    const QJsonObject schedule {{QStringLiteral("periodConfigs"), periods()}};
    QJsonArray rows;
    rows.append(QJsonArray {1, 0, QString(), QString(), QStringLiteral("frame.png"), QString(), 1,
                            QString::fromUtf8(QJsonDocument(schedule).toJson())});
    Measured::loaded(ZImageFrameInfoListMgr::declaration(),
                     {"headFrameId", "headFrameType", "name", "description", "icon2", "flash",
                      "version", "timePeriodConfig"},
                     rows);
    Measured::same("periods", plainIcon(QTime(4, 30)), QStringLiteral("0.png"));
    QVector<QTime> times;
    for (int hour = 0; hour < 24; ++hour)
        times.append(QTime(hour, 30));
    ZImageFrameInfoListMgr* frames = ZImageFrameInfoListMgr::getInstance();
    addPair(
        "getEffectiveIconAt", periodCount, times,
        [frames](const QTime& at) { return frames->getEffectiveIconAt(1, at); }, &plainIcon);
}

} // namespace

int main(int argc, char** argv)
{
    return Measured::run(argc, argv, [] {
        addGifts();
        addLevelNames();
        addEmbeddedPages();
        addExclusiveCars();
        addFrames();
    });
}
