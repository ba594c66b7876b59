#include "content/Content.h"
#include "datatable/TableList.h"
#include "decoration/ZImageFrameInfoListMgr.h"
#include "gift/ZGiftListMgr.h"
#include "lint/ContentChecks.h"
#include "lint/Findings.h"
#include "presentation/ZBannerMgr.h"

#include <QFile>
#include <QMap>
#include <QPair>
#include <QTemporaryDir>
#include <QVector>

#include <algorithm>

namespace {

/** What is said of a thing, by its table and what it is called there. */
using Things = QMap<QPair<QString, QString>, QString>;

/** What clients may have, the newest first. */
using Contents = QVector<const Content*>;

/** The reader's own operation; of a table that it refuses the manager holds what it held. */
bool load(const Content& content, const QString& table)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(table));
    const QByteArray bytes = content.tables.value(table);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        return false;
    file.close();
    const TableEntry* entry = tableEntry(table);
    return entry != nullptr && entry->reader.load(file.fileName());
}

/** A client stays with its table where there is no better one. */
void loadFirst(const Contents& contents, const QString& table)
{
    std::any_of(contents.begin(), contents.end(),
                [&table](const Content* content) { return load(*content, table); });
}

void addGifts(const Contents& contents, const QDateTime& moment, Things& things)
{
    const QString table = QStringLiteral("CS_GiftList");
    ZGiftListMgr* gifts = ZGiftListMgr::getInstance();
    gifts->clear();
    loadFirst(contents, table);
    for (const ZGiftInfo& gift : gifts->getGiftList()) {
        if (gifts->checkGiftValid(gift.giftId, moment.toSecsSinceEpoch(), true, true))
            things.insert({table, gift.giftId}, QStringLiteral("on sale"));
    }
}

void addFrames(const Contents& contents, const QDateTime& moment, Things& things)
{
    const QString table = QStringLiteral("CS_HeadframeList");
    ZImageFrameInfoListMgr* frames = ZImageFrameInfoListMgr::getInstance();
    frames->clear();
    loadFirst(contents, table);
    for (const ZImageFrameInfo& frame : frames->getImageFrameMap())
        things.insert({table, QString::number(frame.headFrameId)},
                      frames->getEffectiveIconAt(frame.headFrameId, moment.time()));
}

// Loading banners also asks the web service for pages; without a configured server that is in vain.
void addBanners(const Contents& contents, Things& things)
{
    ZBannerMgr* banners = ZBannerMgr::getInstance();
    banners->clear();
    for (const bool isNew : {false, true}) {
        const QString table =
            isNew ? QStringLiteral("CS_BannerConfigNew") : QStringLiteral("CS_BannerConfig");
        loadFirst(contents, table);
        QStringList ids;
        for (const ZBannerInfo& banner : banners->getList(isNew))
            ids.append(QString::number(banner.id));
        things.insert({table, QString()}, ids.join(QStringLiteral(", ")));
    }
}

Things shownAt(const QDateTime& moment, const Contents& contents)
{
    Things things;
    addGifts(contents, moment, things);
    addFrames(contents, moment, things);
    addBanners(contents, things);
    return things;
}

} // namespace

void ContentChecks::checkShown(const Content& content, const Content& published,
                               const QDateTime& moment, Findings& findings)
{
    const Things before = shownAt(moment, {&published});
    const Things after = shownAt(moment, {&content, &published});
    Things all = before;
    for (auto thing = after.begin(); thing != after.end(); ++thing)
        all.insert(thing.key(), *thing);
    const QString time = moment.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    const auto said = [](const QString& text) {
        return text.isEmpty() ? QStringLiteral("not shown") : text;
    };
    for (auto thing = all.begin(); thing != all.end(); ++thing) {
        const QString& name = thing.key().second;
        if (before.value(thing.key()) == after.value(thing.key()))
            continue;
        const QString subject =
            name.isEmpty() ? QStringLiteral("the banners are ") : name + QStringLiteral(" is ");
        findings.add(
            Rule::ShownOtherwise, {thing.key().first, 0, QString()},
            subject
                + QStringLiteral("%1 at %2; by the published table %3")
                      .arg(said(after.value(thing.key())), time, said(before.value(thing.key()))));
    }
}
