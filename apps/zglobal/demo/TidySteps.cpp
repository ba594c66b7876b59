#include "demo/Demo.h"
#include "demo/Steps.h"

#include "command/Tidying.h"
#include "console/Failure.h"
#include "console/Literals.h"
#include "datatable/ZDataTableMgr.h"
#include "gift/ZGiftListMgr.h"
#include "tidy/zTidyMgr.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

/** A file that was last written so many days ago. */
void leaveFile(const QString& path, int days)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    const QDateTime then = QDateTime::currentDateTime().addDays(-days);
    if (!file.open(QIODevice::WriteOnly) || file.write("left over") < 0 || !file.flush()
        || !file.setFileTime(then, QFileDevice::FileModificationTime))
        throw Failure {u"%1 cannot be made: %2"_s.arg(path, file.errorString())};
}

/** An unpacked animation, such as "res/flash/abc_11": its age is that of what bears its name. */
void leaveAnimation(const QString& folder, int days)
{
    const QString versioned = QFileInfo(folder).fileName();
    const QString name = versioned.section(QLatin1Char('_'), 0, -2);
    leaveFile(folder + QLatin1Char('/') + name, days);
    leaveFile(folder + QLatin1Char('/') + versioned, days);
}

} // namespace

void Steps::tidying(Demo& demo)
{
    constexpr int old = 8;
    constexpr int recent = 6;
    const QString used = ZGiftListMgr::getInstance()->getGiftAnimationPathById(u"G1014"_s);
    const QString usedName = QFileInfo(used).fileName();
    const QStringList stale {u"res/dataTable/00112233445566778899AABBCCDDEEFF"_s,
                             u"res/animation/retired_1500000000"_s, u"res/flash/level_up_11"_s,
                             u"res/flash/tmp/download_8"_s, u"res/flashext/car_taxi_run_2"_s};
    const QStringList kept {
        u"res/animation/"_s + usedName,
        u"res/animation/withdrawn_1600000000"_s,
        u"res/flash/level_up_12"_s,
        u"res/flash/rocket_fly_2"_s,
        u"res/flash/tmp/download_9"_s,
        u"res/flashext/car_taxi_run_3"_s,
        ZDataTableMgr::getInstance()->getTableStatus(EDataTable::CS_GiftList).path};
    leaveFile(stale.at(0), old);
    leaveAnimation(stale.at(1), old);
    leaveAnimation(stale.at(2), old);
    leaveFile(stale.at(3), old);
    leaveAnimation(stale.at(4), old);
    leaveAnimation(kept.at(0), old);
    leaveAnimation(kept.at(1), recent);
    leaveAnimation(kept.at(3), recent);
    leaveFile(kept.at(4), recent);
    leaveAnimation(kept.at(5), recent);
    demo.say(u"%1 stale entries of %2 days were put among those in use and those of %3 days."_s.arg(
        QString::number(stale.size()), QString::number(old), QString::number(recent)));
    Tidying::run(demo.client(), [&demo](const QString& line) { demo.say(line); });
    QStringList wrong;
    for (const QString& path : stale) {
        if (QFileInfo::exists(path))
            wrong.append(path);
    }
    for (const QString& path : kept) {
        if (!QFileInfo::exists(path))
            wrong.append(path);
    }
    demo.expect(zTidyMgr::getInstance().isFinished(), u"the thread has ended"_s);
    demo.expect(wrong.isEmpty(),
                wrong.isEmpty() ? u"what is stale is gone, what is used or of this week is there"_s
                                : u"wrong: "_s + wrong.join(u", "_s));
    const QString archive = used + QLatin1Char('/') + usedName;
    demo.expect(!QFileInfo::exists(archive),
                u"the old archive of an animation in use is gone too"_s);
}
