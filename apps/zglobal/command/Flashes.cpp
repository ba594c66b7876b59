#include "command/Flashes.h"

#include "console/Literals.h"
#include "console/Readable.h"
#include "effect/ZFlashConfigMgr.h"

#include <QJsonObject>

namespace {

QList<ZFlashConfigInfo> all()
{
    return ZFlashConfigMgr::getInstance().getMessageMap().values();
}

bool isPresent(const ZFlashConfigInfo& flash)
{
    return ZFlashConfigMgr::getInstance().isPresent(flash.flashName);
}

} // namespace

TextTable Flashes::asTable()
{
    TextTable table({u"flash"_s, u">version"_s, u"present"_s, u"folder"_s});
    const QList<ZFlashConfigInfo> flashes = all();
    for (const ZFlashConfigInfo& flash : flashes)
        table.add({flash.flashName, QString::number(flash.flashVersion),
                   Readable::yesNo(isPresent(flash)),
                   ZFlashConfigMgr::getInstance().getFlashPath(flash.flashName)});
    return table;
}

QJsonArray Flashes::asJson()
{
    QJsonArray array;
    const QList<ZFlashConfigInfo> flashes = all();
    for (const ZFlashConfigInfo& flash : flashes)
        array.append(QJsonObject {
            {u"flashName"_s, flash.flashName},
            {u"flashVersion"_s, flash.flashVersion},
            {u"present"_s, isPresent(flash)},
            {u"folder"_s, ZFlashConfigMgr::getInstance().getFlashPath(flash.flashName)}});
    return array;
}
