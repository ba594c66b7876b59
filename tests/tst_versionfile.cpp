#include "datatable/VersionFile.h"
#include "support/Cases.h"
#include "support/FolderTest.h"
#include "support/Literals.h"

#include <QRandomGenerator>
#include <QSettings>
#include <QtTest>

#ifdef Q_OS_LINUX
#include "faults/Faults.h"

#include <sys/stat.h>
#endif

using Versions = VersionFile::Versions;

namespace {

const int groupLength = QString(u"TableVersion/"_s).size();
const QStringList keys {u"CS_GiftList"_s, u"Doutu"_s, u"Message"_s};

/** Every key and its text, as QSettings reads them from a file of this name. */
QHash<QString, QVariant> settingsIn(const QString& path)
{
    QSettings settings(path, QSettings::IniFormat);
#if QT_VERSION_MAJOR < 6
    settings.setIniCodec("UTF-8");
#endif
    // First ours, one by one: what is asked for decides which sections are taken.
    QHash<QString, QVariant> found;
    for (const QString& key : keys)
        found.insert(key, settings.value(u"TableVersion/"_s + key, -1));
    for (const QString& key : settings.allKeys()) {
        // What it takes for other spellings of ours it then asks for by our name.
        if (!key.isEmpty() && !key.contains(u"//"_s) && !found.contains(key.mid(groupLength)))
            found.insert(u"other "_s + key, settings.value(key));
    }
    return found;
}

/** Why our reading differs from QSettings', or an empty text. */
QString readingFault(const QHash<QString, QVariant>& settings, const QByteArray& bytes)
{
    const QHash<QString, int> versions = VersionFile::parse(bytes, keys);
    for (const QString& key : keys) {
        const QVariant value = settings.value(key);
        const bool wraps = value.toLongLong() != value.toInt();
        const int expected = wraps ? 0 : value.toInt();
        if (versions.value(key, -1) != qMax(expected, -1))
            return u"%1: %2, not %3"_s.arg(key).arg(versions.value(key, -1)).arg(expected);
    }
    return {};
}

/** Of these pieces; there is no group in the group among them, which QSettings mixes up. */
QByteArray randomFile(const QJsonArray& pieces, QRandomGenerator& random)
{
    QByteArray bytes = random.bounded(20) == 0 ? "\xef\xbb\xbf" : "";
    for (int i = random.bounded(25); i > 0; --i)
        bytes += Cases::bytes(pieces.at(random.bounded(pieces.size())).toString());
    return bytes;
}

} // namespace

class TestVersionFile : public FolderTest
{
    Q_OBJECT

private Q_SLOTS:
    void readsAndChanges_data() { Cases::rows("versionfile"); }
    void readsAndChanges()
    {
        QFETCH(QString, before);
        QFETCH(QString, after);
        const QByteArray bytes = Cases::bytes(before);
        const QByteArray expected = Cases::bytes(after);
        const Versions versions {{u"CS_GiftList"_s, 6}, {u"Doutu"_s, 0}};
        ZTestFolder::write(u"before.ini"_s, bytes);
        QCOMPARE(readingFault(settingsIn(u"before.ini"_s), bytes), QString());
        ZTestFolder::write(u"after.ini"_s, bytes);
        QCOMPARE(VersionFile::write(u"after.ini"_s, versions), QString());
        QCOMPARE(ZTestFolder::read(u"after.ini"_s), expected);
        QCOMPARE(readingFault(settingsIn(u"after.ini"_s), expected), QString());
        QCOMPARE(VersionFile::read(u"after.ini"_s, keys).value(keys.first(), -1), 6);
        QCOMPARE(VersionFile::edit(expected, versions), expected);
    }

    void agreesWithQSettings_data() { Cases::rows("versionfile"); }

    void agreesWithQSettings()
    {
        QFETCH(QJsonValue, pieces);
        QRandomGenerator random(1);
        int refused = 0;
        for (int i = 0; i < 1500; ++i) {
            const QByteArray bytes = randomFile(pieces.toArray(), random);
            const QHash<QString, QVariant> before =
                settingsIn(ZTestFolder::write(u"%1"_s.arg(i), bytes));
            QVERIFY2(readingFault(before, bytes).isEmpty(), bytes.toPercentEncoding());

            Versions versions;
            QHash<QString, QVariant> expected = before;
            for (const QString& key : keys) {
                const int version = random.bounded(3);
                versions.append({key, version});
                if (before.value(key).toInt() != version)
                    expected.insert(key, QString::number(version));
            }
            const QByteArray edited = VersionFile::edit(bytes, versions);
            const QHash<QString, QVariant> after =
                settingsIn(ZTestFolder::write(u"%1 after"_s.arg(i), edited));
            const QByteArray both = bytes.toPercentEncoding() + "\n" + edited.toPercentEncoding();
            QVERIFY2(readingFault(after, edited).isEmpty(), both);
            bool written = true;
            for (const QString& key : keys)
                written = written && after.value(key).toInt() == expected.value(key).toInt();
            // Only a quote may keep ours out, and only what runs over lines may change.
            QVERIFY2(written || bytes.contains('"'), both);
            refused += written ? 0 : 1;
            if (!QRegularExpression(u"\"|\\\\[\r\n]"_s)
                     .match(QString::fromLatin1(bytes))
                     .hasMatch())
                QVERIFY2(after == expected, both);
        }
        QVERIFY2(refused < 300, qPrintable(QString::number(refused)));
    }

    void leavesWhatItCannotChange_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("cause");
        QTest::newRow("a folder") << QByteArray("folder") << u"is no file"_s;
        QTest::newRow("a pipe") << QByteArray("pipe") << u"is no file"_s;
        QTest::newRow("too large") << QByteArray(16 * 1024 * 1024 + 1, '\n') << u"is too large"_s;
        QTest::newRow("no place") << QByteArray("title=5\" screen\n[TableVersion]\nDoutu=1\n")
                                  << u"holds a quote that nothing closes"_s;
    }

    void leavesWhatItCannotChange()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, cause);
        if (bytes == "folder")
            QVERIFY(QDir().mkdir(u"common.ini"_s));
#ifdef Q_OS_LINUX
        else if (bytes == "pipe")
            QCOMPARE(mkfifo("common.ini", S_IRUSR | S_IWUSR), 0);
#endif
        else
            ZTestFolder::write(u"common.ini"_s, bytes);
        QVERIFY(VersionFile::read(u"common.ini"_s, keys).isEmpty());
        QCOMPARE(VersionFile::write(u"common.ini"_s, {{keys.first(), 6}}),
                 u"common.ini: "_s + cause);
        if (QFileInfo(u"common.ini"_s).isFile())
            QCOMPARE(ZTestFolder::read(u"common.ini"_s), bytes);
        QVERIFY(QDir(u"."_s).entryList(QDir::Files | QDir::Hidden).size() <= 1);
    }

    void standsEveryFailingCall()
    {
#ifdef Q_OS_LINUX
        const QByteArray before("[a]\nb=C:\\Users\n");
        const QByteArray after = before + "\n[TableVersion]\nDoutu=4\n";
        const QByteArray folder = QFile::encodeName(QDir::currentPath());
        const QStringList files {u"common.ini"_s, u"common.ini.lock"_s, u"kept"_s};
        ZTestFolder::write(u"common.ini.lock"_s, "1\n");
        QVERIFY(QFile::link(u"kept"_s, u"common.ini"_s));
        int failures = 0;
        for (int call = 0; call < Faults::callKinds; ++call) {
            int at = 0;
            int calls = 0;
            do {
                ++at;
                ZTestFolder::write(u"kept"_s, before);
                Faults::arm({Faults::Call(call), at, ENOSPC, 1}, folder.constData());
                const QString cause = VersionFile::write(u"common.ini"_s, {{ u"Doutu"_s, 4 }});
                calls = Faults::disarm();
                const QByteArray where = Faults::name(Faults::Call(call));
                const bool written = cause.isEmpty();
                QVERIFY2(ZTestFolder::read(u"kept"_s) == (written ? after : before), where);
                QCOMPARE(ZTestFolder::files(), files);
                failures += written ? 0 : 1;
            } while (calls >= at);
        }
        // Two opens, write, rename, fsync and close at the least.
        QVERIFY2(failures >= 6, qPrintable(QString::number(failures)));
        QVERIFY(QFileInfo(u"common.ini"_s).isSymLink());

        Faults::arm({Faults::Write, 1, ENOSPC, 1}, folder.constData());
        QCOMPARE(VersionFile::write(u"common.ini"_s, {{ u"Doutu"_s, 4 }}), QString());
        QCOMPARE(Faults::disarm(), 0); // nothing to change, so nothing was written
#else
        QSKIP("no calls can be made to fail here");
#endif
    }
};

QTEST_GUILESS_MAIN(TestVersionFile)
#include "tst_versionfile.moc"
