#include "inspector/window/OldCache.h"

#include "gift/ZGiftListMgr.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

struct Leftover
{
    const char* path;
    int days; ///< since it was written
    int kilobytes;
};

constexpr Leftover files[] {
    {"res/dataTable/1F0B5A6D94C24E7BB1C53A0E7D28F96C", 96, 116},
    {"res/dataTable/8D77C0E4A1B34F5D9E62C8F3051BD7A2", 41, 24},
    {"res/dataTable/C3D9E17F60584B0A8F2E6B94D7A150E8", 17, 9},
    {"res/dataTable/E65A02BC7F914D38A40C1D9B3E8F7265", 3, 117},
    {"res/flash/tmp/level_up_13", 22, 18},
    {"res/flash/tmp/rocket_fly_4", 2, 7},
};

constexpr Leftover animations[] {
    {"res/animation/crown_pc_1735689600", 61, 52},
    {"res/animation/snowfall_1700000000", 203, 38},
    {"res/animation/lantern_1762000000", 4, 44},
    {"res/flash/level_up_11", 61, 64},
    {"res/flash/parade_2", 160, 30},
    {"res/flash/parade_3", 61, 33},
    {"res/flashext/car_taxi_run_2", 61, 28},
    {"res/flashext/car_taxi_run_3", 25, 28},
};

void write(const QString& path, int days, int kilobytes)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return; // the picture shows what could be written
    file.write(QByteArray(kilobytes * 1024, '\0'));
    file.flush();
    file.setFileTime(QDateTime::currentDateTime().addDays(-days),
                     QFileDevice::FileModificationTime);
}

/** What comes out of an archive bears its name without the version, and tells its age. */
void unpacked(const QString& folder, int days, int kilobytes)
{
    const QString name = QFileInfo(folder).fileName().section(u'_', 0, -2);
    write(folder + u'/' + name, days, kilobytes);
}

} // namespace

void OldCache::leave()
{
    for (const Leftover& each : files)
        write(QString::fromLatin1(each.path), each.days, each.kilobytes);
    for (const Leftover& each : animations)
        unpacked(QString::fromLatin1(each.path), each.days, each.kilobytes);
    // One that is in use, with the archive that it came from.
    const QString used = QDir::cleanPath(
        ZGiftListMgr::getInstance()->getGiftAnimationPathById(QStringLiteral("G1019")));
    unpacked(used, 61, 47);
    write(used + u'/' + QFileInfo(used).fileName(), 61, 40);
}
