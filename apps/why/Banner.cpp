#include "presentation/ZBannerMgr.h"
#include "why/Subjects.h"
#include "why/Why.h"

#include <algorithm>

namespace {

QString tableOf(bool isNew)
{
    return isNew ? QStringLiteral("CS_BannerConfigNew") : QStringLiteral("CS_BannerConfig");
}

/** The place in a list, from 1; 0 where it is not. */
int placeOf(int id, bool isNew)
{
    const QVector<ZBannerInfo>& list = ZBannerMgr::getInstance()->getList(isNew);
    const auto found = std::find_if(list.begin(), list.end(),
                                    [id](const ZBannerInfo& banner) { return banner.id == id; });
    return found == list.end() ? 0 : static_cast<int>(found - list.begin()) + 1;
}

Why::Resource pictureOf(const ZBannerInfo& banner)
{
    const QString what = QStringLiteral("picture");
    if (!ZBannerMgr::hasPicture(banner))
        return Why::noResource(
            what, QStringLiteral("bannerType is %1; 1 and 2 carry one").arg(banner.bannerType));
    if (banner.bannerContent.isEmpty())
        return Why::noResource(what, QStringLiteral("bannerContent is empty"));
    ZBannerMgr* banners = ZBannerMgr::getInstance();
    return Why::resourceAt(what, banners->getBannerImagePathById(banner.id),
                           banners->getBannerImageUrlById(banner.id));
}

void describe(const ZBannerInfo& banner, bool isNew, Why::Explanation& explanation)
{
    ZBannerMgr* banners = ZBannerMgr::getInstance();
    explanation.resources.append(pictureOf(banners->getBannerMap().value(banner.id)));
    if (placeOf(banner.id, !isNew) > 0)
        explanation.remarks.append(
            {QStringLiteral("shared id"),
             QStringLiteral("%1 has it too; the picture is that of the banner loaded last")
                 .arg(tableOf(!isNew))});
    const bool isEmbedded = banners->bannerIsByCef(banner.landingPage);
    explanation.remarks.append(
        {QStringLiteral("page"),
         QStringLiteral("%1, which opens %2")
             .arg(banner.landingPage.trimmed(),
                  isEmbedded ? QStringLiteral("embedded") : QStringLiteral("outside"))});
    explanation.remarks.append(
        {QStringLiteral("period"),
         QStringLiteral("startDate %1, endDate %2; kept as they are, whoever shows it judges them")
             .arg(QString::number(banner.startDate), QString::number(banner.endDate))});
}

Why::Explanation explain(const Why::Subject& subject, const Why::RawTable& table)
{
    const bool isNew = subject.table == tableOf(true);
    const int place = placeOf(subject.id.toInt(), isNew);
    const QVector<ZBannerInfo>& list = ZBannerMgr::getInstance()->getList(isNew);
    Why::Explanation explanation = Why::explanationOf(subject, table);
    askForRecord(explanation, table, place > 0);
    const QString order =
        isNew ? QStringLiteral("the order of the table") : QStringLiteral("the order of weights");
    const ZBannerInfo banner = place > 0 ? list.at(place - 1) : ZBannerInfo();
    QString where = QStringLiteral("place %1 of %2 in %3")
                        .arg(QString::number(place), QString::number(list.size()), order);
    if (!isNew)
        where += QStringLiteral("; its weight is %1").arg(banner.weight);
    explanation.ask(QStringLiteral("it is in the list of banners"), place > 0, where);
    explanation.holds = !explanation.isDecided();
    explanation.verdict = explanation.holds
        ? QStringLiteral("%1 is shown: %2").arg(Why::called(subject), where)
        : QStringLiteral("%1 is not shown: %2")
              .arg(Why::called(subject), explanation.steps.at(explanation.deciding).value);
    if (explanation.holds)
        describe(banner, isNew, explanation);
    return explanation;
}

} // namespace

Why::Reply Why::banner(const QString& idOrName, const Failures& failures, const Files& files)
{
    return replyTo(QStringLiteral("banner"), idOrName, failures, files, &explain);
}
