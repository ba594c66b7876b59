#include "file/FileNames.h"
#include "file/WholeFile.h"
#include "support/Cases.h"
#include "support/FolderTest.h"
#include "support/Literals.h"

#include <QtTest>

#ifdef Q_OS_LINUX
#include "faults/Faults.h"
#include "support/NoRoom.h"
#endif

namespace {

const QByteArray oldBytes(3000, 'o');
const QByteArray newBytes(300 * 1000, 'n');

} // namespace

class TestFile : public FolderTest
{
    Q_OBJECT

private Q_SLOTS:
    void writesWholeFiles()
    {
        QCOMPARE(WholeFile::write(u"图 a"_s, newBytes), QString());
        QVERIFY(QFile::setPermissions(u"图 a"_s, QFile::ReadOwner | QFile::WriteOwner));
        const QFile::Permissions rights = QFile::permissions(u"图 a"_s);
        QCOMPARE(WholeFile::write(u"图 a"_s, oldBytes), QString());
        QCOMPARE(ZTestFolder::read(u"图 a"_s), oldBytes);
        QCOMPARE(QFile::permissions(u"图 a"_s), rights);
        QCOMPARE(WholeFile::write(QDir::currentPath() + u"/图 a"_s, {}), QString());
        QCOMPARE(QFileInfo(u"图 a"_s).size(), 0);
        QCOMPARE(ZTestFolder::files(), QStringList {u"图 a"_s});
    }

    void replacesALinkAndNotItsTarget()
    {
        ZTestFolder::write(u"target"_s, oldBytes);
        QVERIFY(QDir().mkdir(u"folder"_s));
        for (const QString& target : {u"target"_s, u"folder"_s, u"nothing"_s}) {
            QVERIFY(QFile::link(target, u"link"_s));
            QCOMPARE(WholeFile::write(u"link"_s, newBytes), QString());
            QVERIFY(!QFileInfo(u"link"_s).isSymLink());
            QCOMPARE(ZTestFolder::read(u"link"_s), newBytes);
            QVERIFY(QFile::remove(u"link"_s));
        }
        QCOMPARE(ZTestFolder::read(u"target"_s), oldBytes);
        QCOMPARE(ZTestFolder::files(), QStringList {u"target"_s});
    }

    void leavesWhatWasThere_data() { Cases::rows("file"); }

    void leavesWhatWasThere()
    {
#ifdef Q_OS_LINUX
        QFETCH(QString, path);
        QFETCH(QString, cause);
        ZTestFolder::write(u"file"_s, oldBytes);
        ZTestFolder::write(u"folder/old"_s, oldBytes);
        QVERIFY(QDir().mkdir(u"disk"_s) && QDir().mkdir(u"closed"_s));
        QVERIFY(QFile::setPermissions(u"folder/old"_s, QFile::ReadOwner));
        QVERIFY(QFile::setPermissions(u"closed"_s, QFile::ReadOwner | QFile::ExeOwner));
        if (QFileInfo(u"closed"_s).isWritable() && QTest::currentDataTag()[0] == 'w')
            QSKIP("nothing is write-protected for this user");
        QStringList expected {u"file"_s, u"folder/old"_s};
        std::optional<SmallDisk> disk;
        if (path == u"disk/old"_s) {
            disk.emplace("disk");
            if (!disk->isMounted())
                QSKIP("this user may not mount a small disk");
            expected.prepend(ZTestFolder::write(path, oldBytes));
        }
        std::optional<FileSizeLimit> limit;
        if (path == u"file"_s)
            limit.emplace(10000);
        const QString answer = WholeFile::write(path, newBytes);
        limit.reset();
        QFile::setPermissions(u"closed"_s, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        QCOMPARE(answer, path + u": "_s + cause);
        QCOMPARE(ZTestFolder::files(), expected);
        QCOMPARE(ZTestFolder::read(path), expected.contains(path) ? oldBytes : QByteArray());
#else
        QSKIP("the causes are told in this system's own words");
#endif
    }

    void standsEveryFailingCall()
    {
#ifdef Q_OS_LINUX
        const QByteArray folder = QFile::encodeName(QDir::currentPath());
        int failures = 0;
        for (int i = 0; i < 2 * Faults::callKinds; ++i) {
            Faults::Fault fault {Faults::Call(i / 2), 0, ENOSPC, i % 2 == 0 ? 1 : Faults::forGood};
            int calls = 1;
            for (fault.at = 1; fault.at <= calls; ++fault.at) {
                ZTestFolder::write(u"file"_s, oldBytes);
                Faults::arm(fault, folder.constData());
                const QString cause = WholeFile::write(u"file"_s, newBytes);
                calls = Faults::disarm();
                const QByteArray where = QByteArray(Faults::name(fault.call)) + ' '
                    + QByteArray::number(fault.at) + " of " + QByteArray::number(calls);
                const bool failed = calls >= fault.at;
                failures += failed ? 1 : 0;
                QVERIFY2(cause == (failed ? u"file: No space left on device"_s : QString()),
                         where + ": " + cause.toUtf8());
                QVERIFY2(ZTestFolder::read(u"file"_s) == (failed ? oldBytes : newBytes), where);
                QVERIFY2(ZTestFolder::files() == QStringList {u"file"_s}, where);
            }
        }
        // Open, write, fsync, close and rename, once and for good.
        QVERIFY2(failures >= 10, qPrintable(QString::number(failures)));
#else
        QSKIP("no calls can be made to fail here");
#endif
    }

    void namesThatNoSystemMisreads_data()
    {
        Cases::rows("file");
    }

    void namesThatNoSystemMisreads()
    {
        QFETCH(QString, name);
        QFETCH(QString, fault);
        QCOMPARE(FileNames::fault(name), fault);
        const bool good = fault.isEmpty();
        QCOMPARE(FileNames::staysBelow(u"res/flash/"_s + name + u"/x.flajson"_s, u"res/"_s),
                 good || name.isEmpty());
        QCOMPARE(FileNames::staysBelow(u"res//"_s + name, u"res"_s), good);
        QVERIFY(!FileNames::staysBelow(u"/res/"_s + name, u"res/"_s));
        QVERIFY(!FileNames::staysBelow(u"resource/"_s + name, u"res/"_s));
    }
};

QTEST_GUILESS_MAIN(TestFile)
#include "tst_file.moc"
