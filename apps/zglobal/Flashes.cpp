#include "Flashes.h"

#include "Literals.h"
#include "Log.h"
#include "Traffic.h"
#include "Words.h"
#include "effect/ZFlashConfigMgr.h"

#include <QFile>
#include <QJsonObject>
#include <QThreadPool>

#include <algorithm>

namespace {

QList<ZFlashConfigInfo> all()
{
    return ZFlashConfigMgr::getInstance().getMessageMap().values();
}

bool isPresent(const ZFlashConfigInfo& flash)
{
    const QString folder = ZFlashConfigMgr::getInstance().getFlashPath(flash.flashName);
    return QFile::exists(u"%1/%2.flajson"_s.arg(folder, flash.flashName));
}

} // namespace

Flashes::Pass Flashes::run()
{
    constexpr int patience = 60 * 1000; // milliseconds
    const Traffic traffic;
    Pass pass;
    ZFlashConfigMgr& flashes = ZFlashConfigMgr::getInstance();
    QObject::connect(&flashes, &ZFlashConfigMgr::sigDownloadFlash, &traffic,
                     [&pass] { pass.allPresent = true; });
    Log::restart();
    flashes.loadFlash();
    // The pass begins a while later.
    Log::waitFor(u"开始下载flash"_s, patience);
    traffic.waitUntilQuiet(patience);
    QThreadPool::globalInstance()->waitForDone(patience);
    pass.downloads = traffic.started();
    return pass;
}

int Flashes::present()
{
    const QList<ZFlashConfigInfo> flashes = all();
    return static_cast<int>(std::count_if(flashes.begin(), flashes.end(), &isPresent));
}

int Flashes::missing()
{
    return all().size() - present();
}

TextTable Flashes::asTable()
{
    TextTable table({u"flash"_s, u">version"_s, u"present"_s, u"folder"_s});
    const QList<ZFlashConfigInfo> flashes = all();
    for (const ZFlashConfigInfo& flash : flashes)
        table.add({flash.flashName, QString::number(flash.flashVersion),
                   Words::yesNo(isPresent(flash)),
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
