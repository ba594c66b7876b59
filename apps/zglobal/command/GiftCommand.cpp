#include "command/Commands.h"
#include "command/Session.h"
#include "console/Failure.h"
#include "console/Json.h"
#include "console/Literals.h"
#include "console/Readable.h"
#include "console/Terminal.h"
#include "console/TextTable.h"
#include "gift/ZGiftListMgr.h"
#include "why/Subjects.h"

#include <QDateTime>

namespace {

/** What is told of a gift: for people, and under which name in JSON. */
struct Fact
{
    QString label;
    QString key;
    QJsonValue value;
    QString more {}; ///< only for people
};

Fact moment(const QString& label, const QString& key, qint64 seconds)
{
    return {label, key, Readable::time(seconds), u" (%1)"_s.arg(Readable::age(seconds))};
}

QVector<Fact> recordFacts(const ZGiftInfo& gift)
{
    return {
        {u"gift"_s, u"giftId"_s, gift.giftId},
        {u"name"_s, u"giftName"_s, gift.giftName},
        {u"description"_s, u"descs"_s, gift.descs},
        {u"price"_s, u"price"_s, gift.price},
        moment(u"on sale from"_s, u"startTime"_s, gift.startTime),
        moment(u"on sale until"_s, u"endTime"_s, gift.endTime),
        moment(u"changed"_s, u"alterDateTime"_s, gift.alterDateTime.toLongLong()),
        {u"type"_s, u"giftType"_s, gift.giftType},
        {u"label"_s, u"giftLabelId"_s, gift.giftLabelId},
        {u"visible"_s, u"isVisible"_s, gift.isVisible},
        {u"tab"_s, u"showTab"_s, gift.showTab},
        {u"family"_s, u"giftFamily"_s, gift.giftFamily},
        {u"display location"_s, u"giftDisplayLocation"_s, gift.giftDisplayLocation},
        {u"at most at once"_s, u"maxGiftGroup"_s, gift.maxGiftGroup},
        {u"animation scale"_s, u"animScaleRate"_s, gift.animScaleRate},
        {u"activity page"_s, u"activityPage"_s, gift.activityPage},
        {u"client parameters"_s, u"clientParam"_s, gift.clientParam},
    };
}

QVector<Fact> answers(const QString& id, qint64 now)
{
    ZGiftListMgr* gifts = ZGiftListMgr::getInstance();
    return {
        {u"on sale now"_s, u"onSaleNow"_s, gifts->checkGiftTimeValid(id, now)},
        {u"  and visible"_s, u"visibleNow"_s, gifts->checkGiftValid(id, now, false, true)},
        {u"  and in the panel"_s, u"inPanelNow"_s, gifts->checkGiftValid(id, now, true, true)},
    };
}

QVector<Fact> resources(const QString& id)
{
    ZGiftListMgr* gifts = ZGiftListMgr::getInstance();
    return {
        {u"picture"_s, u"imageUrl"_s, gifts->getGiftImageUrlById(id)},
        {u"  file"_s, u"imagePath"_s, gifts->getGiftImagePathById(id)},
        {u"animation"_s, u"animationUrl"_s, gifts->getGiftAnimationUrlById(id)},
        {u"  folder"_s, u"animationPath"_s, gifts->getGiftAnimationPathById(id)},
        {u"broadcast"_s, u"bgAnimationUrl"_s, gifts->getGiftBGAnimationUrlById(id)},
        {u"  folder"_s, u"bgAnimationPath"_s, gifts->getGiftBGAnimationPathById(id)},
        {u"with background"_s, u"bgAndAnimationUrl"_s, gifts->getGiftBGAndAnimationUrlById(id)},
        {u"  folder"_s, u"bgAndAnimationPath"_s, gifts->getGiftBGAndAnimationPathById(id)},
        {u"background"_s, u"bgImageUrl"_s, gifts->getGiftBGImageUrlById(id)},
        {u"tab icon"_s, u"showTabIconUrl"_s, gifts->getGiftShowTabIconUrlById(id)},
        {u"  file"_s, u"showTabIconPath"_s, gifts->getGiftShowTabIconPathById(id)},
    };
}

QString textOf(const QJsonValue& value)
{
    return value.isBool() ? Readable::yesNo(value.toBool()) : value.toVariant().toString();
}

/** Of the gift that is meant; a Failure where there is none or more than one. */
QString idOf(const QString& idOrName)
{
    QVector<Why::Subject> all;
    const QVector<ZGiftInfo>& gifts = ZGiftListMgr::getInstance()->getGiftList();
    for (const ZGiftInfo& gift : gifts)
        all.append({{}, {}, gift.giftId, gift.giftName});
    const QVector<Why::Subject> found = Why::answering(all, idOrName);
    if (found.isEmpty())
        throw Failure {
            u"there is no gift \"%1\"; \"zglobal why gift %1\" looks for its row"_s.arg(idOrName)};
    if (found.size() == 1)
        return found.constFirst().id;
    TextTable table;
    for (const Why::Subject& gift : found)
        table.add({gift.id, gift.name});
    table.print();
    throw Failure {
        u"%1 may be meant; ask for one of them"_s.arg(Readable::counted(found.size(), u"gift"_s))};
}

int run(const QCommandLineParser& line)
{
    Session session(line);
    session.load();
    const QString id = idOf(line.positionalArguments().constFirst());
    ZGiftListMgr* gifts = ZGiftListMgr::getInstance();
    const qint64 now = QDateTime::currentSecsSinceEpoch();
    const QVector<Fact> facts =
        recordFacts(gifts->getGiftInfoById(id)) + answers(id, now) + resources(id);
    QJsonObject object;
    TextTable table;
    for (const Fact& fact : facts) {
        object.insert(fact.key, fact.value);
        const QString text = textOf(fact.value);
        if (!text.isEmpty())
            table.add({fact.label, text + fact.more});
    }
    if (CommandLine::wantsJson(line)) {
        Json::print(object);
        return 0;
    }
    table.print();
    return 0;
}

} // namespace

Command giftCommand()
{
    Command command;
    command.name = u"gift"_s;
    command.arguments = u"ID"_s;
    command.fewest = command.most = 1;
    command.summary = u"Show everything about a gift."_s;
    command.details = u"ID may be a name, or a part of one that no other has. Price, period, "
                      u"whether it may be sent now, addresses and local paths; "
                      "what is empty is left\nout, but not with --json. Times are local. Works "
                      "without the content server."_s;
    command.examples = QStringList {u"zglobal gift G1014"_s};
    command.options = Session::options() + QList {CommandLine::jsonOption()};
    command.run = &run;
    return command;
}
