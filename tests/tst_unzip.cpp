#include "host/EntryNames.h"
#include "host/HostLimits.h"
#include "host/ZGlobalConfig.h"
#include "support/CacheName.h"
#include "support/Cases.h"
#include "support/FolderTest.h"
#include "support/Literals.h"

#include <QtTest>

#include <archive.h>
#include <archive_entry.h>
#include <clocale>
#include <future>
#ifdef Q_OS_LINUX
#include "faults/Faults.h"
#include "support/NoRoom.h"

#include <sys/wait.h>
#include <unistd.h>
#endif

namespace {

struct Entry
{
    QByteArray name;
    QByteArray body;
    unsigned type = AE_IFREG;
    QByteArray hardLink = {};
};
using Entries = QVector<Entry>;

void writeArchive(const QString& path, const Entries& entries, const QString& kind = u"tar"_s)
{
    archive* target = archive_write_new();
    if (kind == u"gzipped tar"_s)
        archive_write_add_filter_gzip(target);
    if (kind == u"zip"_s)
        archive_write_set_format_zip(target);
    else
        archive_write_set_format_gnutar(target);
    archive_write_open_filename(target, QFile::encodeName(path).constData());
    for (const Entry& entry : entries) {
        archive_entry* head = archive_entry_new();
        archive_entry_set_pathname(head, entry.name.constData());
        archive_entry_set_filetype(head, entry.type);
        archive_entry_set_perm(head, 0644);
        archive_entry_set_size(head, entry.body.size());
        if (entry.type == AE_IFLNK)
            archive_entry_set_symlink(head, "good.txt");
        if (!entry.hardLink.isEmpty())
            archive_entry_set_hardlink(head, entry.hardLink.constData());
        archive_write_header(target, head);
        archive_write_data(target, entry.body.constData(), size_t(entry.body.size()));
        archive_entry_free(head);
    }
    archive_write_free(target);
}

/** Every name below a folder, hidden ones included, files with their content's size. */
QStringList listing(const QString& folder)
{
    QStringList names;
    QDirIterator all(folder, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                     QDirIterator::Subdirectories);
    while (all.hasNext()) {
        const QString path = all.next();
        const QFileInfo info(path);
        names.append(path.mid(folder.size() + 1)
                     + (info.isDir() ? u"/"_s : u" %1"_s.arg(info.size())));
    }
    names.sort();
    return names;
}

} // namespace

class TestUnzip : public FolderTest
{
    Q_OBJECT

private:
    const QString m_folder = u"flash/abc_12"_s;
    const QString m_archive = u"flash/abc_12/abc_12"_s;

    int m_pictures = 0;

    /** An archive with the description first, over a set of an older one unless that is empty. */
    void makeSet(const QByteArray& before, int pictures)
    {
        m_pictures = pictures;
        QVERIFY(QDir(m_folder).removeRecursively() && QDir().mkpath(m_folder));
        Entries entries {{"abc.flajson", "new!"}, {"deep/er/x.png", "new!"}};
        for (int i = 0; i < pictures; ++i)
            entries.append({QByteArray::number(i) + ".png", "new!"});
        writeArchive(m_archive, entries);
        entries.remove(1);
        for (int i = 0; i < entries.size() && !before.isEmpty(); ++i)
            ZTestFolder::write(m_folder + u"/"_s + QString::fromLatin1(entries.at(i).name), before);
    }

    /** A description that is there has its pictures. */
    bool isSound() const
    {
        const QByteArray description = ZTestFolder::read(m_folder + u"/abc.flajson"_s);
        bool sound = true;
        for (int i = 0; i < m_pictures && !description.isEmpty(); ++i)
            sound = sound && ZTestFolder::read(u"%1/%2.png"_s.arg(m_folder).arg(i)) == description;
        return sound;
    }

private Q_SLOTS:
    void init()
    {
        FolderTest::init();
        QVERIFY(QDir().mkpath(m_folder));
    }

    void cleanup()
    {
        std::setlocale(LC_ALL, "");
        FolderTest::cleanup();
    }

    void unpacksBesideTheArchive_data() { Cases::rows("unzip"); }

    void unpacksBesideTheArchive()
    {
        QFETCH(QString, kind);
        QFETCH(bool, plainLocale);
        writeArchive(m_archive,
                     {{"./", {}, AE_IFDIR},
                      {"./图/一.png", "one"},
                      {"empty", {}, AE_IFDIR},
                      {"图/深/二.png", "two!"},
                      {"none.txt", ""},
                      {"abc.flajson", "{}"}},
                     kind);
        const QByteArray bytes = ZTestFolder::read(m_archive);
        // What a run that was killed leaves behind.
        ZTestFolder::write(
            u"%1/.unpack-%2/new/abc.flajson"_s.arg(m_folder, cacheName(u"abc_12"_s).toLower()),
            "half");
        if (plainLocale)
            std::setlocale(LC_ALL, "C");
        QString error;
        QVERIFY2(ZGlobalConfig::unZipFile(m_archive, false, &error), qPrintable(error));
        QCOMPARE(listing(m_folder).join(QLatin1Char('|')),
                 u"abc.flajson 2|abc_12 %1|empty/|none.txt 0|图/|图/一.png 3|图/深/|"
                 "图/深/二.png 4"_s.arg(bytes.size()));
        QCOMPARE(ZTestFolder::read(m_archive), bytes);
        QCOMPARE(ZTestFolder::read(m_folder + u"/图/深/二.png"_s), QByteArray("two!"));
    }

    void replacesOnlyWhenAsked()
    {
        writeArchive(m_archive, {{"new.txt", "new"}, {"sub/old.txt", "replaced"}});
        ZTestFolder::write(m_folder + u"/sub/old.txt"_s, "old");
        ZTestFolder::write(m_folder + u"/sub/foreign.txt"_s, "stays");
        const QStringList before = listing(m_folder);
        QString error;
        QVERIFY(!ZGlobalConfig::unZipFile(m_archive, false, &error));
        QCOMPARE(error, m_archive + u": \"sub/old.txt\" exists already"_s);
        QCOMPARE(listing(m_folder), before);
        QVERIFY(ZGlobalConfig::unZipFile(m_archive, true));
        QCOMPARE(ZTestFolder::read(m_folder + u"/sub/old.txt"_s), QByteArray("replaced"));
        QCOMPARE(ZTestFolder::read(m_folder + u"/sub/foreign.txt"_s), QByteArray("stays"));
        QCOMPARE(listing(m_folder).size(), before.size() + 1);
    }

    void refusesHostileArchives_data() { Cases::rows("unzip"); }

    void refusesHostileArchives()
    {
        QFETCH(QJsonValue, entries); // name, kind unless a file, target of a hard link
        QFETCH(QString, cause);
        const QHash<QString, unsigned> types {
            {u"link"_s, AE_IFLNK}, {u"pipe"_s, AE_IFIFO}, {u"device"_s, AE_IFCHR}};
        Entries all {{"good.txt", "good"}};
        for (const QJsonValue& entry : entries.toArray()) {
            const QByteArray name = Cases::bytes(entry[0].toString());
            const unsigned type = types.value(entry[1].toString(), AE_IFREG);
            all.append({name, type == AE_IFREG ? "x" : "", type, entry[2].toString().toUtf8()});
            if (name == "zeros")
                all.last().body = QByteArray(3 << 20, 0);
        }
        writeArchive(m_archive, all, u"gzipped tar"_s);
        const QString outside = QDir::current().filePath(u"outside"_s);
        QVERIFY(QDir().mkpath(outside));
        QVERIFY(QFile::link(outside, m_folder + u"/trap"_s));
        const QStringList before = listing(u"."_s);
        QString error;
        QVERIFY(!ZGlobalConfig::unZipFile(m_archive, true, &error));
        QVERIFY2(error.contains(cause), qPrintable(error));
        QCOMPARE(listing(u"."_s), before);
    }

    void refusesDamage_data() { Cases::rows("unzip"); }

    void refusesDamage()
    {
        QFETCH(int, from);
        QFETCH(int, count);
        QFETCH(QString, by);
        QByteArray noise;
        for (int i = 0; i < 500; ++i)
            noise.append(char(i * i * 31 + i / 3));
        writeArchive(m_archive, {{"first.txt", noise}, {"second.txt", noise}}, u"zip"_s);
        QByteArray bytes = ZTestFolder::read(m_archive);
        ZTestFolder::write(m_archive,
                           bytes.replace(from, count < 0 ? bytes.size() : count, by.toLatin1()));
        const QStringList before = listing(m_folder);
        QVERIFY(!ZGlobalConfig::unZipFile(m_archive, true));
        QCOMPARE(listing(m_folder), before);
        QVERIFY(!ZGlobalConfig::unZipFile(m_folder + u"/absent"_s, true));
        QVERIFY(!ZGlobalConfig::unZipFile(m_folder, true));
    }

    void noRoom_data() { Cases::rows("unzip"); }
    void noRoom()
    {
#ifdef Q_OS_LINUX
        QFETCH(bool, onDisk);
        QFETCH(QString, cause);
        std::optional<SmallDisk> disk;
        std::optional<FileSizeLimit> limit;
        if (onDisk && !disk.emplace(m_folder.toUtf8()).isMounted())
            QSKIP("this user may not mount a small disk");
        writeArchive(m_archive,
                     {{"abc.flajson", "new!"},
                      {"1.png", "new!"},
                      { "2.png",
                        QByteArray(99999, 'x') }},
                     u"gzipped tar"_s);
        ZTestFolder::write(m_folder + u"/abc.flajson"_s, "old");
        const QStringList before = listing(m_folder);
        if (!onDisk)
            limit.emplace(64000);
        QString error;
        const bool unpacked = ZGlobalConfig::unZipFile(m_archive, true, &error);
        limit.reset();
        QCOMPARE(error, u"%1: \"2.png\" cannot be written: %2"_s.arg(m_archive, cause));
        QVERIFY(!unpacked);
        QCOMPARE(listing(m_folder), before);
#else
        QSKIP("no disk can be made to fill up here");
#endif
    }

    void entryNames()
    {
        QString path;
        EntryNames many(u"abc_12"_s);
        for (int i = 0; i < HostLimits::maxArchiveEntries / 2; ++i) // with a folder each
            QCOMPARE(many.add(u"%1/file"_s.arg(i), false, path), QString());
        QCOMPARE(many.add(u"0/"_s, true, path), QString());
        QCOMPARE(many.add(u"0/more"_s, false, path), u"is one entry more than the 10000 allowed"_s);

        EntryNames names(u"飞_机_12"_s); // the description is moved last
        for (const char* name : {"飞_机.flajson", "x.FLAJSON", "a.png", "飞_机.png",
                                 "d/e/f.flajson", "d/飞_机.flajson", "z.png"})
            QCOMPARE(names.add(QString::fromUtf8(name), false, path), QString());
        QCOMPARE(names.files().join(QLatin1Char(' ')),
                 u"d/e/f.flajson d/飞_机.flajson a.png 飞_机.png z.png x.FLAJSON 飞_机.flajson"_s);
    }

    void isWholeOrHasNoDescription_data()
    {
        QTest::addColumn<int>("call");
        QTest::addColumn<int>("error");
        QTest::addColumn<int>("times");
#ifdef Q_OS_LINUX
        for (const int call : {Faults::Open, Faults::Write, Faults::Rename, Faults::Unlink,
                               Faults::Mkdir, Faults::Close}) {
            const char* name = Faults::name(Faults::Call(call));
            QTest::addRow("killed before %s", name) << call << Faults::kill << 1;
            for (const int times : {1, 2, Faults::forGood})
                QTest::addRow("%s fails, times %d", name, times) << call << EIO << times;
        }
#endif
    }

    /** At every eleventh call of a kind, over nothing and over an older set. */
    void isWholeOrHasNoDescription()
    {
#ifdef Q_OS_LINUX
        QFETCH(int, call);
        QFETCH(int, error);
        QFETCH(int, times);
        const auto names = [this] {
            return listing(m_folder).filter(QRegularExpression(u"^[^.]"_s));
        };
        const int soak = qEnvironmentVariableIntValue("ZGLOBAL_SOAK"); // how many pictures instead
        const QByteArray folder = QFile::encodeName(QDir(m_folder).absolutePath());
        // The first write is the lock's: one without an owner counts for ten minutes as being made.
        for (int at = call == Faults::Write ? 2 : 1, reached = 1; reached != 0; at += 11) {
            reached = 0;
            for (const QByteArray& before : {QByteArray(), QByteArray("old")}) {
                Faults::arm({}, folder.constData());
                makeSet(before, soak > 0 ? soak : 12);
                const QStringList namesBefore = names();
                const pid_t child = fork();
                if (child == 0) {
                    Faults::arm({Faults::Call(call), at, error, times}, folder.constData());
                    const bool unpacked = ZGlobalConfig::unZipFile(m_archive, true);
                    _exit((unpacked ? 0 : 1) + (Faults::disarm() < at ? 2 : 0));
                }
                int status = 0;
                QVERIFY(child > 0 && waitpid(child, &status, 0) == child);
                const int end = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
                const QByteArray what = QByteArray::number(at) + " over \"" + before
                    + "\" ended with " + QByteArray::number(end);
                const QByteArray now = ZTestFolder::read(m_folder + u"/abc.flajson"_s);
                QVERIFY2(isSound() && end != 3 && ((end != 0 && end != 2) || now == "new!"), what);
                QVERIFY2(end != 1 || times > 1 || (now == before && names() == namesBefore), what);
                // A leftover harms nobody, and nobody minds how a file that was read is closed.
                const bool mayBeIgnored =
                    call == Faults::Unlink || (call == Faults::Close && at > m_pictures);
                QVERIFY2(end != 0 || mayBeIgnored, what);
                reached += end == 2 ? 0 : 1;

                // Whatever archive comes next here clears up.
                writeArchive(m_folder + u"/b_1"_s, {{ "b.txt", "b" }});
                QVERIFY2(ZGlobalConfig::unZipFile(m_folder + u"/b_1"_s, true), what);
                QVERIFY2(listing(m_folder).filter(u".unpack"_s).isEmpty(), what);
            }
        }
        Faults::disarm();
#else
        QSKIP("no process can be stopped between two calls here");
#endif
    }

    void worksOnSeveralThreads()
    {
        const QString other = ZTestFolder::write(u"flash/other_1/other_1"_s, {});
        Entries entries;
        for (int i = 0; i < 200; ++i)
            entries.append({"图/" + QByteArray::number(i), QByteArray(2000, char('a' + i % 26))});
        writeArchive(m_archive, entries, u"zip"_s);
        writeArchive(other, entries, u"zip"_s);
        const QString living = m_folder + u"/.unpack-00000000000000000000000000000000"_s;
        ZTestFolder::write(living + u"/new/picture"_s, "1");
        QLockFile lock(living + u".lock"_s);
        QVERIFY(lock.tryLock());
        std::vector<std::future<bool>> unpacked;
        for (const QString& path : {m_archive, other, m_archive, other})
            unpacked.push_back(std::async(std::launch::async,
                                          [path] { return ZGlobalConfig::unZipFile(path, true); }));
        for (std::future<bool>& each : unpacked)
            QVERIFY(each.get());
        QCOMPARE(listing(m_folder).size(), 206);
        lock.unlock();
        QVERIFY(ZGlobalConfig::unZipFile(m_archive, true));
        QCOMPARE(listing(m_folder).size(), 202);
        QCOMPARE(listing(QFileInfo(other).path()).size(), 202);
    }
};

QTEST_GUILESS_MAIN(TestUnzip)
#include "tst_unzip.moc"
