#include "gift/ZGiftLabelMgr.h"
#include "gift/ZGiftListMgr.h"
#include "why/Moments.h"
#include "why/Subjects.h"
#include "why/Why.h"

namespace {

/** What a rule looks at, said so that it is a cause. */
QString valueFor(const stGiftRule& rule, const ZGiftInfo& gift)
{
    const QString column = QString::fromLatin1(rule.column);
    const QString is = column + QStringLiteral(" is ");
    if (column == QLatin1String("startTime"))
        return is + Moments::text(gift.startTime);
    if (column == QLatin1String("endTime"))
        return is + Moments::text(gift.endTime);
    if (column == QLatin1String("isVisible") && !gift.isVisible && rule.holds(gift, 0))
        return is + QStringLiteral("false, but it is one of those that count all the same");
    if (column == QLatin1String("isVisible"))
        return is + (gift.isVisible ? QStringLiteral("true") : QStringLiteral("false"));
    return is + QStringLiteral("%1; the panel has 0 and 2").arg(gift.giftDisplayLocation);
}

QString labelOf(const ZGiftInfo& gift, const QDateTime& moment)
{
    const ZGiftLabelInfo label = ZGiftLabelMgr::getInstance().getInfoById(gift.giftLabelId);
    if (label.id.isEmpty()) {
        const TableStatus labels = Why::statusOf(QStringLiteral("CS_GiftLabel"));
        const QString fault = Why::loadFault(labels);
        return QStringLiteral("%1: %2").arg(
            gift.giftLabelId,
            fault.isEmpty() ? QStringLiteral("no label of CS_GiftLabel has this id")
                            : QStringLiteral("CS_GiftLabel is not loaded: %1").arg(fault));
    }
    const qint64 time = moment.toSecsSinceEpoch();
    const bool holds = gift.labelStartTime <= time && time <= gift.labelEndTime;
    return QStringLiteral("%1 “%2”, from %3 to %4, which %5 the moment")
        .arg(label.id, label.giftLabelName, Moments::text(gift.labelStartTime),
             Moments::text(gift.labelEndTime),
             holds ? QStringLiteral("holds") : QStringLiteral("does not hold"));
}

void addResources(const ZGiftInfo& gift, QVector<Why::Resource>& resources)
{
    ZGiftListMgr* gifts = ZGiftListMgr::getInstance();
    const QString& id = gift.giftId;
    resources.append(Why::resourceAt(QStringLiteral("picture"), gifts->getGiftImagePathById(id),
                                     gifts->getGiftImageUrlById(id)));
    if (gift.animationName.isEmpty())
        resources.append(
            Why::noResource(QStringLiteral("animation"), QStringLiteral("animationName is empty")));
    else
        resources.append(Why::resourceAt(QStringLiteral("animation"),
                                         gifts->getGiftAnimationPathById(id),
                                         gifts->getGiftAnimationUrlById(id)));
    if (!gift.broadcastAnimationName.isEmpty())
        resources.append(Why::resourceAt(QStringLiteral("broadcast"),
                                         gifts->getGiftBGAnimationPathById(id),
                                         gifts->getGiftBGAnimationUrlById(id)));
    if (!gift.broadcastBgAndAnimationName.isEmpty())
        resources.append(Why::resourceAt(QStringLiteral("broadcast with background"),
                                         gifts->getGiftBGAndAnimationPathById(id),
                                         gifts->getGiftBGAndAnimationUrlById(id)));
    if (!gift.showTabIcon.isEmpty())
        resources.append(Why::resourceAt(QStringLiteral("tab icon"),
                                         gifts->getGiftShowTabIconPathById(id),
                                         gifts->getGiftShowTabIconUrlById(id)));
}

Why::Explanation explain(const Why::Subject& subject, const Why::RawTable& table,
                         const QDateTime& moment)
{
    Why::Explanation explanation = Why::explanationOf(subject, table);
    ZGiftListMgr* gifts = ZGiftListMgr::getInstance();
    const bool isHeld = !gifts->isGiftInvalid(subject.id);
    const ZGiftInfo gift = gifts->getGiftInfoById(subject.id);
    askForRecord(explanation, table, isHeld);
    const QVector<stGiftRule> rules = ZGiftListMgr::validityRules();
    for (const stGiftRule& rule : rules)
        explanation.ask(QString::fromUtf8(rule.words), rule.holds(gift, moment.toSecsSinceEpoch()),
                        valueFor(rule, gift));
    explanation.holds = !explanation.isDecided();
    explanation.verdict =
        QStringLiteral("%1 %2 be sent from the gift panel at %3")
            .arg(Why::called(subject),
                 explanation.holds ? QStringLiteral("can") : QStringLiteral("cannot"),
                 Moments::text(moment.toSecsSinceEpoch()));
    if (explanation.isDecided())
        explanation.verdict +=
            QStringLiteral(": ") + explanation.steps.at(explanation.deciding).value;
    if (!isHeld)
        return explanation;
    addResources(gift, explanation.resources);
    if (!gift.giftLabelId.isEmpty())
        explanation.remarks.append({QStringLiteral("label"), labelOf(gift, moment)});
    return explanation;
}

} // namespace

Why::Reply Why::gift(const QString& idOrName, const QDateTime& moment, const Failures& failures,
                     const Files& files)
{
    return replyTo(QStringLiteral("gift"), idOrName, failures, files,
                   [&moment](const Subject& subject, const RawTable& table) {
                       return explain(subject, table, moment);
                   });
}
