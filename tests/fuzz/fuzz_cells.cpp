#include "decoration/ZImageFrameInfoListMgr.h"
#include "fuzz/Fuzz.h"
#include "gift/ZGiftListMgr.h"
#include "presentation/zH5WebConfigMgr.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTime>

namespace {

/** Has the manager of the table load one row in which every cell is this text, but for the key. */
bool load(const TableDeclaration& table, const QJsonValue& key, const QString& text)
{
    QJsonArray columns;
    QJsonArray row;
    for (const ColumnSchema& column : table.schema().columns) {
        columns.append(column.name);
        row.append(column.name == table.schema().key ? key : QJsonValue(text));
    }
    QFile file(QStringLiteral("table"));
    return file.open(QIODevice::WriteOnly)
        && file.write(QJsonDocument(QJsonObject {{QStringLiteral("columns"), columns},
                                                 {QStringLiteral("rows"), QJsonArray {row}}})
                          .toJson())
        > 0
        && file.flush() && table.load(file.fileName());
}

} // namespace

/** The texts inside cells: a schedule, a gift's client parameters, a page's address. */
ZGLOBAL_FUZZER
{
    static const QTemporaryDir work;
    require(QDir::setCurrent(work.path()), "a working folder");
    const QString text = QString::fromUtf8(bytes);

    require(load(ZImageFrameInfoListMgr::declaration(), 7, text), "a frame");
    ZImageFrameInfoListMgr* frames = ZImageFrameInfoListMgr::getInstance();
    for (int hour = 0; hour < 24; hour += 5) {
        const QTime at(hour, 30);
        const QTime start = frames->getPeriodStartTimeAt(7, at);
        require(start.isValid() || frames->getEffectiveFlashAt(7, at).isEmpty()
                    || frames->getEffectiveFlashAt(7, at) == frames->getInfoById(7).flash,
                "outside all periods the frame's own animation");
        frames->getEffectiveIconAt(7, at);
    }

    load(ZGiftListMgr::declaration(), QStringLiteral("G"), text);
    ZGiftListMgr::getInstance()->checkGiftValid(QStringLiteral("G"), 0, true, true);
    ZGiftListMgr::getInstance()->getAllAnimationName();

    require(load(zH5WebConfigMgr::declaration(), QStringLiteral("1"), text), "a page");
    zH5WebConfigMgr& pages = zH5WebConfigMgr::getInstance();
    for (const QString& address :
         {pages.getURLByDefine(E_H5Recharge),
          pages.getAppURLByDefine(E_H5Recharge, QStringLiteral("H5Server"))})
        require(address.isEmpty() || address.contains(QLatin1String("version=0")),
                "every address carries the version");
}
