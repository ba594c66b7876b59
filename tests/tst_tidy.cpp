#include "datatable/ZDataTableMgr.h"
#include "effect/ZFlashConfigMgr.h"
#include "gift/ZGiftListMgr.h"
#include "support/Cases.h"
#include "support/LogLines.h"
#include "support/Patience.h"
#include "support/Tables.h"
#include "tidy/zTidyMgr.h"

#include <QDateTime>
#include <QProcess>
#include <QtTest>

namespace {

constexpr qint64 week = 7 * 24 * 60 * 60;

QString write(const QString& path, qint64 age)
{
    QFile file(ZTestFolder::write(path, "x"));
    if (!file.open(QIODevice::ReadWrite)
        || !file.setFileTime(QDateTime::currentDateTime().addSecs(-age),
                             QFileDevice::FileModificationTime))
        qFatal("cannot set the age of %s", qPrintable(path));
    return path;
}

/** Files below a folder of "res", named in one text. */
void write(const QString& folder, const QString& names, qint64 age)
{
    for (const QString& name : names.split(u' ', Qt::SkipEmptyParts))
        write(u"res/%1/%2"_s.arg(folder, name), age);
}

void tidy()
{
    zTidyMgr::getInstance().startThread();
    QVERIFY(zTidyMgr::getInstance().wait(patience));
}

/** What a run would do, found out without a change or a word. */
TidyPlan planned()
{
    const QStringList files = ZTestFolder::files(u"res"_s);
    const LogLines log;
    const bool started = zTidyMgr::getInstance().startPlanning();
    if (!started || !zTidyMgr::getInstance().wait(patience) || !LogLines::lines().isEmpty()
        || ZTestFolder::files(u"res"_s) != files)
        qFatal("planning has changed or said something");
    return zTidyMgr::getInstance().plan();
}

QStringList entriesOf(const QString& folder)
{
    QStringList paths;
    for (const QString& name : QDir(folder).entryList(QDir::NoDotAndDotDot | QDir::AllEntries))
        paths.append(folder + u'/' + name);
    return paths;
}

/** The entries of "res" of which the plan says something else than a run has done. */
QStringList otherwise(const TidyPlan& plan)
{
    QStringList wrong;
    for (const TidyFolder& folder : plan) {
        for (const TidyDecision& decision : folder.decisions) {
            if (QFileInfo::exists(decision.path) != (decision.action == TidyDecision::Keep))
                wrong.append(decision.path);
        }
    }
    return wrong;
}

/** What the task of this folder has logged, in order of the alphabet. */
QString logged(const QString& folder)
{
    const QString title = u"tidy %1 "_s.arg(folder.toLower());
    QStringList lines;
    for (const QString& line : LogLines::lines().filter(title))
        lines.append(line.mid(title.size()));
    lines.sort();
    return lines.join(u' ');
}

/** One gift with this animation; its version is the answer. */
QString configureGift(const QString& animation)
{
    const QString rows = u"[{'giftId': 'G', 'valid': true, 'animationName': '%1', "
                         "'alterDateTime': '2026-01-02 03:04:05'}]"_s;
    loadTable<ZGiftListMgr>(rows.arg(animation).toUtf8());
    return ZGiftListMgr::getInstance()->getGiftInfoById(u"G"_s).alterDateTime;
}

} // namespace

/** The tidying of real trees. What one run has learnt of a flash, the later ones know. */
class tst_tidy : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QDir(u"res"_s).removeRecursively(); }

    void trees_data() { Cases::rows("tidy"); }

    /** Folders are met in the file system's own order; the lines are right in any. */
    void trees()
    {
        QFETCH(QString, folder);
        loadTable<ZFlashConfigMgr>("[['abc', '12'], ['two_words', '3']]");
        const QString version = configureGift(u"rose.json"_s);
        const QString table = ZDataTableMgr::getInstance()->getTableFileName(EDataTable::Message);
        const auto filled = [&](const char* column) {
            QString text = *static_cast<QString*>(QTest::qData(column, qMetaTypeId<QString>()));
            return text.replace(u"$TABLE"_s, table.toLower()).replace(u"$V"_s, version);
        };
        write(folder, filled("stale"), week + 60);
        write(folder, filled("fresh"), week - 60);
        const TidyPlan plan = planned();
        QStringList entries = entriesOf(u"res/"_s + folder);
        for (const TidyFolder& part : plan) {
            for (const TidyDecision& decision : part.decisions)
                entries.removeOne(decision.path);
        }
        QCOMPARE(entries, QStringList());
        const LogLines log;
        tidy();
        QCOMPARE(otherwise(plan), QStringList());
        QCOMPARE(logged(folder), filled("lines"));
        QCOMPARE(ZTestFolder::files(u"res/"_s + folder).join(u' '), filled("left"));
    }

    void laterRun()
    {
        write(u"flashext"_s, u"gone_10/gone equal_4/equal"_s, 2 * week);
        tidy();
        init();
        write(u"flashext"_s, u"gone_11/gone equal_4/equal"_s, 2 * week);
        const LogLines log;
        tidy();
        QCOMPARE(LogLines::count(u"LowVersion remove=res/flashext/gone_10,result=1"_s), 1);
        QCOMPARE(LogLines::count(u"tidy flashext end:use=0,delete=1,delay=0,ignore=0"_s), 1);
    }

    /** Which of them is met first, and kept so far without its archive, is the file system's. */
    void whatGoesIsCountedOnce()
    {
        const auto bytes = [] {
            qint64 sum = 0;
            for (const QString& file : ZTestFolder::files(u"res"_s))
                sum += QFileInfo(u"res/"_s + file).size();
            return sum;
        };
        for (int version = 1; version <= 20; ++version) {
            write(u"flash"_s, u"many_%1/many"_s.arg(version), 2 * week);
            ZTestFolder::write(u"res/flash/many_%1/many_%1"_s.arg(version), "archive");
        }
        const qint64 before = bytes();
        qint64 going = 0;
        for (const TidyFolder& folder : planned()) {
            for (const TidyDecision& decision : folder.decisions)
                going += decision.action == TidyDecision::Remove ? decision.bytes : 0;
        }
        tidy();
        QCOMPARE(going, before - bytes());
    }

    void oneRunAtATime()
    {
        for (int i = 0; i < 300; ++i)
            write(u"res/dataTable/%1"_s.arg(i), 0);
        const QString used =
            write(u"res/animation/first_%1/first"_s.arg(configureGift(u"first"_s)), 2 * week);
        const LogLines log;
        zTidyMgr::getInstance().startThread();
        configureGift(u"second"_s);
        zTidyMgr::getInstance().startThread();
        QVERIFY(zTidyMgr::getInstance().wait(patience));
        QCOMPARE(LogLines::count(u"tidy thread has running"_s), 1);
        QCOMPARE(LogLines::count(u"tidy thread start"_s), 1);
        QVERIFY(QFile::exists(used));
        tidy();
        QVERIFY(!QFile::exists(used));
    }

    void processEnd_data() { Cases::rows("tidy"); }

    void processEnd()
    {
        QFETCH(QString, how);
        QFETCH(QString, files);
        QFETCH(int, count); // more of a folder's files, as there is a pause only after each entry
        for (int i = 0; i < count; ++i)
            write(files.arg(i), 2 * week);
        QProcess child;
        child.start(QCoreApplication::applicationFilePath(), {QFileInfo(files).path(), how});
        QVERIFY(child.waitForFinished(patience));
        QVERIFY(child.exitStatus() == QProcess::NormalExit && child.exitCode() == 0);
        const QByteArray log = child.readAllStandardError();
        QVERIFY2(!log.contains("end") && !log.contains("QThread"), log.right(500).constData());
        const int left = ZTestFolder::files(u"res"_s).size();
        QVERIFY2(left > 0 && left < count, qPrintable(QString::number(left)));
    }

private:
    ZTestFolder m_folder;
};

/** The child: starts a run and, once it has removed something, leaves. */
int tidyAnd(QFileInfo folder, const QByteArray& how)
{
    folder.setCaching(false);
    const QDateTime before = folder.lastModified();
    zTidyMgr::getInstance().startThread();
    while (folder.lastModified() == before)
        QThread::yieldCurrentThread();
    if (how == "exit")
        std::exit(0);
    return 0;
}

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    if (argc == 3 && QByteArray(argv[1]).startsWith("res/"))
        return tidyAnd(QFileInfo(QFile::decodeName(argv[1])), argv[2]);
    tst_tidy test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_tidy.moc"
