#include "demo/Demo.h"
#include "demo/Steps.h"

#include "console/Failure.h"
#include "console/Json.h"
#include "console/Literals.h"
#include "console/Log.h"
#include "console/Wait.h"
#include "datatable/TableCatalogue.h"
#include "datatable/ZDataTableMgr.h"
#include "gift/ZGiftListMgr.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>

namespace {

constexpr int patience = 10 * 1000; // milliseconds
constexpr int newVersion = 58;

QString renamedGift()
{
    return u"G1002"_s;
}
QString renamedTo()
{
    return u"彩虹棒棒糖"_s;
}
QString newGift()
{
    return u"G2001"_s;
}

/** What the operator does: the table first, then its version. */
void publish(const QString& content)
{
    const QString tablePath = content + u"/app/resources/CS_GiftList"_s;
    QJsonObject table = Json::objectInFile(tablePath);
    const QJsonArray columns = table.value(u"columns"_s).toArray();
    QJsonArray rows = table.value(u"rows"_s).toArray();
    QStringList names;
    for (const QJsonValue& column : columns)
        names.append(column.toString());
    const int id = names.indexOf(u"giftId"_s);
    const int name = names.indexOf(u"giftName"_s);
    QJsonArray added;
    for (int i = 0; i < rows.size(); ++i) {
        QJsonArray row = rows.at(i).toArray();
        if (row.at(id).toString() != renamedGift())
            continue;
        added = row;
        row.replace(name, renamedTo());
        rows.replace(i, row);
    }
    added.replace(id, newGift());
    added.replace(name, u"流星雨"_s);
    rows.append(added);
    table.insert(u"rows"_s, rows);
    Json::writeFile(tablePath, table, QJsonDocument::Compact);

    const QString versionsPath = content + u"/app/versions.json"_s;
    QJsonObject file = Json::objectInFile(versionsPath);
    QJsonObject versions = file.value(u"versions"_s).toObject();
    versions.insert(u"CS_GiftList"_s, newVersion);
    file.insert(u"versions"_s, versions);
    Json::writeFile(versionsPath, file);
}

/** Runs this program again, as the user would. */
QStringList runAgain(const QStringList& arguments)
{
    QProcess process;
    process.start(QCoreApplication::applicationFilePath(), arguments);
    const bool ended =
        waitUntil([&process] { return process.state() == QProcess::NotRunning; }, patience);
    if (!ended || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        throw Failure {u"zglobal %1 failed: %2"_s.arg(
            arguments.join(QLatin1Char(' ')),
            QString::fromUtf8(process.readAllStandardError()).trimmed())};
    const QString text = QString::fromUtf8(process.readAllStandardOutput());
    return text.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

} // namespace

void Steps::publishGifts(Demo& demo)
{
    ZGiftListMgr* gifts = ZGiftListMgr::getInstance();
    const QString oldName = gifts->getGiftNameById(renamedGift());
    const bool wasUnknown = gifts->isGiftInvalid(newGift());
    publish(demo.content());
    const auto learnt = settled(demo.client().learnVersions());
    demo.say(
        u"The operator renamed %1, added %2 and raised the version; the client keeps running"_s.arg(
            renamedGift(), newGift()));
    demo.say(u"and learns that CS_GiftList is now %1. loadGiftTable() brings it in:"_s.arg(
        ZDataTableMgr::getInstance()->getTableVersion(EDataTable::CS_GiftList)));
    Log::restart();
    ZDataTableMgr::getInstance()->loadGiftTable();
    const bool loaded = Log::waitFor(u"礼物数据表加载成功"_s, patience);
    const QStringList lines = Log::lines();
    for (const QString& line : lines)
        demo.say(u"log: "_s + line);
    demo.expect(learnt.value.changed
                    == QVector<EDataTable::EDataTableType> {EDataTable::CS_GiftList},
                u"only its version is new"_s);
    demo.expect(loaded, u"the log tells that it is loaded"_s);
    const QString name = gifts->getGiftNameById(renamedGift());
    demo.expect(oldName != name && name == renamedTo(),
                u"%1 was %2 and is %3"_s.arg(renamedGift(), oldName, name));
    demo.expect(wasUnknown && !gifts->isGiftInvalid(newGift()),
                u"%1 %2 is known"_s.arg(newGift(), gifts->getGiftNameById(newGift())));
    settled(demo.client().versionsSaved());
}

void Steps::unchangedGifts(Demo& demo)
{
    const QString path = ZDataTableMgr::getInstance()->getTableStatus(EDataTable::CS_GiftList).path;
    const int before = demo.server().requests();
    const auto outcome = settled(ZDataTableMgr::getInstance()->updateGiftDataTable());
    demo.say(
        u"updateGiftDataTable() asks the server again and is rejected: %1"_s.arg(outcome.error));
    demo.expect(demo.server().requests() == before + 1 && !outcome.ok
                    && outcome.error == u"数据没变化"_s,
                u"the table did not change, so nothing is loaded again"_s);
    demo.expect(QFile(path).size() > 0, u"its file is still there"_s);
}

void Steps::restartOffline(Demo& demo)
{
    demo.server().stop();
    demo.say(u"The server is gone. Two new processes on the same folder:"_s);
    const QStringList folder {u"--data"_s, demo.work()};
    const QStringList gift = runAgain(QStringList {u"gift"_s, newGift()} + folder);
    demo.say(u"$ zglobal gift %1"_s.arg(newGift()));
    for (const QString& line : gift.mid(0, 8))
        demo.say(u"  "_s + line);
    demo.say(u"  ..."_s);
    demo.expect(!gift.filter(u"流星雨"_s).isEmpty(), u"the gift published last is known"_s);

    demo.say(u"$ zglobal status"_s);
    const QStringList status = runAgain(QStringList {u"status"_s} + folder);
    const auto kinds = status.constFirst().indexOf(u"  kind"_s); // would need another line each
    const QRegularExpression blanks(u" +$"_s);
    for (const QString& line : status)
        demo.say(line.left(kinds).remove(blanks));
    const int tables = TableCatalogue::types().size();
    demo.expect(status.size() == tables + 1 && status.filter(u"missing"_s).isEmpty()
                    && status.filter(u"failed"_s).isEmpty(),
                u"all %1 tables have their file, none fails to load"_s.arg(tables));
}
