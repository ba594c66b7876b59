#include "command/Commands.h"
#include "console/Readable.h"
#include "console/Terminal.h"
#include "console/TextTable.h"
#include "server/ContentServer.h"
#include "support/Cases.h"
#include "support/Literals.h"
#include "support/Patience.h"
#include "testing/ZTestFolder.h"

#include <QProcess>
#include <QRegularExpression>
#include <QtTest>

#include <fcntl.h>
#include <stdlib.h>
#include <sys/ioctl.h>
#include <thread>
#include <unistd.h>

namespace {

const QString program = QStringLiteral(ZGLOBAL_PROGRAM);
const QString content = QStringLiteral(ZGLOBAL_CONTENT);

/** A terminal of so many columns, and what a program writes to it. */
class Pseudo
{
public:
    explicit Pseudo(int columns)
        : m_master(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC))
    {
        if (m_master < 0 || grantpt(m_master) != 0 || unlockpt(m_master) != 0)
            qFatal("no terminal");
        m_slave = open(ptsname(m_master), O_RDWR | O_NOCTTY | O_CLOEXEC);
        const winsize size {24, static_cast<unsigned short>(columns), 0, 0};
        ioctl(m_master, TIOCSWINSZ, &size);
    }
    ~Pseudo() { close(m_master); }
    Q_DISABLE_COPY(Pseudo)

    QString run(const QStringList& arguments, const QProcessEnvironment& environment, int& status)
    {
        QProcess process;
        process.setProcessEnvironment(environment);
        process.setStandardOutputFile(QString::fromLocal8Bit(ptsname(m_master)));
        process.setStandardErrorFile(QString::fromLocal8Bit(ptsname(m_master)));
        QByteArray all;
        std::thread reader([this, &all] {
            char block[4096];
            for (auto got = read(m_master, block, sizeof block); got > 0;
                 got = read(m_master, block, sizeof block))
                all.append(block, static_cast<int>(got));
        });
        process.start(program, arguments);
        process.waitForFinished(patience);
        status = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
        close(m_slave); // the reader's end, once all is read
        reader.join();
        return QString::fromUtf8(all).replace(u"\r\n"_s, u"\n"_s);
    }

private:
    int m_master = -1;
    int m_slave = -1;
};

/** What a person sees in the end: without orders, and of what was drawn over the last. */
QStringList seen(QString text)
{
    static const QRegularExpression style(u"\x1b\\[[0-9;]*m"_s);
    static const QRegularExpression wiped(u"[^\n\r]*\r\x1b\\[K"_s);
    return text.remove(style).remove(wiped).split(u'\n');
}

} // namespace

/** The program in front of a person: columns, styles, numbers, mistakes, pipes. */
class tst_console : public QObject
{
    Q_OBJECT

    static QProcessEnvironment environment(const QString& more)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"TERM"_s, u"xterm"_s);
        for (const QString& name : {u"NO_COLOR"_s, u"COLUMNS"_s})
            environment.remove(name);
        for (const QString& each : more.split(u' ', Qt::SkipEmptyParts))
            environment.insert(each.section(u'=', 0, 0), each.section(u'=', 1));
        return environment;
    }

    ZTestFolder m_folder;
    ContentServer m_server;

private Q_SLOTS:
    /** A client that is up to date, and content with a change and a fault. */
    void initTestCase()
    {
        QString error;
        QVERIFY(m_server.start(content, 0, &error));
        QCOMPARE(QProcess::execute(program,
                                   {u"update"_s, u"--quiet"_s, u"--server"_s, m_server.baseUrl()}),
                 0);
        for (const QString& file : ZTestFolder::files(content + u"/app/resources"_s))
            ZTestFolder::write(u"next/"_s + file,
                               ZTestFolder::read(content + u"/app/resources/"_s + file)
                                   .replace("星光皇冠", "皇冠\\u001b[2J\\u009b1m\\u202e🚀"));
    }

    void widths_data() { Cases::rows("console"); }

    void widths()
    {
        QFETCH(QString, text);
        QTEST(Terminal::columns(text), "width");
        for (int width = 1; width < 12; ++width) {
            const QString cut = Terminal::cut(text, width);
            QVERIFY(Terminal::columns(cut) <= width);
            QVERIFY(text.startsWith(cut) ? cut == text : cut.endsWith(QChar(0x2026)));
            QVERIFY(text.startsWith(cut == text ? cut : cut.chopped(1)));
            const QStringList lines = Terminal::wrapped(text, width);
            for (const QString& line : lines)
                QVERIFY(Terminal::columns(line) <= std::max(width, 2));
            QCOMPARE(lines.join(QString()).remove(u' '), QString(text).remove(u' '));
        }
        TextTable table({u"name"_s, u">n"_s, u"?more"_s});
        table.add({text, u"1234567"_s, text});
        for (int width = 20; width < 60; ++width) {
            const QStringList lines = table.lines(width);
            QCOMPARE(lines.size(), 2);
            for (const QString& line : lines)
                QVERIFY(Terminal::columns(line) <= width);
            QVERIFY(lines.at(1).contains(u"1234567"_s)); // a number that is cut is another
        }
    }

    /** None moves the cursor, none turns the direction, and each leaves something to be seen. */
    void legible()
    {
        for (ushort code = 0; code < 0x3000; ++code) {
            const QChar shown = Terminal::legible(QString(QChar(code))).at(0);
            const bool isOrder = code < 0x20 || (code >= 0x7F && code < 0xA0)
                || (code >= 0x2028 && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
            QVERIFY2((shown != QChar(code)) == isOrder, qPrintable(QString::number(code, 16)));
            QVERIFY(!isOrder || shown.isPrint() || shown == QChar::ReplacementCharacter);
        }
    }

    void readable_data() { Cases::rows("console"); }

    void readable()
    {
        QFETCH(QString, kind);
        QFETCH(double, number);
        const auto value = static_cast<qint64>(number);
        QTEST(kind == u"size"_s      ? Readable::size(value)
                  : kind == u"age"_s ? Readable::age(1'000'000'000 - value, 1'000'000'000)
                                     : Readable::duration(value),
              "text");
    }

    void onTerminals_data() { Cases::rows("console"); }

    /** Into a terminal, by its columns and what its environment wants. */
    void onTerminals()
    {
        QFETCH(QString, arguments);
        QFETCH(int, columns);
        QFETCH(bool, styled);
        QFETCH(int, fits);
        int status = -1;
        const QStringList words = QString(arguments)
                                      .replace(u"SERVER"_s, m_server.baseUrl())
                                      .replace(u"CONTENT"_s, content)
                                      .split(u' ');
        QFETCH(QString, variables);
        const QString told = Pseudo(columns).run(words, environment(variables), status);
        QVERIFY2(status == 0 || status == 1, qPrintable(told));
        QVERIFY(told.size() > 100);
        static const QRegularExpression style(u"\x1b\\[[1-9]+m"_s);
        QVERIFY2(told.contains(style) == styled, qPrintable(told));
        QTEST(told.contains(u"\r\x1b[K["_s), "draws");
        static const QRegularExpression order(u"[\x01-\x09\x0b\x0c\x0e-\x1a\x1c-\x1f\x7f-\x9f]"_s);
        QVERIFY(!told.contains(order));
        static const QRegularExpression foreign(u"\x1b(?!\\[([0-9;]*m|K))"_s);
        QVERIFY(!told.contains(foreign));
        for (const QString& line : seen(told))
            QVERIFY2(fits == 0 || Terminal::columns(line) <= fits, qPrintable(line));
    }

    /** Who has seen enough is no failure, who has no room left is. */
    void pipes()
    {
        for (const QString& command :
             {u"show CS_GiftList"_s, u"show 24 --json"_s, u"status"_s, u"lint next"_s, u"--help"_s,
              u"diff next "_s + content, u"export "_s + content + u" CS_GiftList"_s}) {
            const auto shell = [&command](const QString& script) {
                QProcess process;
                process.start(u"sh"_s, {u"-c"_s, script.arg(program, command)});
                process.waitForFinished(patience);
                return QString::fromUtf8(process.readAllStandardOutput()
                                         + process.readAllStandardError());
            };
            const QString first = shell(u"%1 %2 2>&1 | { read line; exec 0<&-; echo read; }"_s);
            QCOMPARE(first, u"read\n"_s);
            // Where nobody is told by a signal, the write fails instead.
            const QString deaf =
                shell(u"trap '' PIPE; exec 3>&1; { %1 %2 2>&3; echo done >&3; } | :"_s);
            QVERIFY2(deaf.endsWith(u"done\n"_s) && !deaf.contains(u"takes no more"_s),
                     qPrintable(deaf));
            const QString full = shell(u"%1 %2 >/dev/full; echo $?"_s);
            QVERIFY2(full.startsWith(u"1\n"_s)
                         && full.contains(u"zglobal: standard output takes no more\n"_s),
                     qPrintable(full));
        }
    }

    /** Every command, called wrongly: 2, one line that says what, and nothing done. */
    void mistakes()
    {
        const QStringList before = ZTestFolder::files();
        const auto refused = [](const QStringList& arguments, const QString& says) {
            QProcess process;
            process.start(program, arguments);
            process.waitForFinished(patience);
            const QString told = QString::fromUtf8(process.readAllStandardError());
            QVERIFY2(told.startsWith(u"zglobal: "_s) && told.contains(says), qPrintable(told));
            QCOMPARE(process.exitCode(), 2);
            QCOMPARE(told.count(u'\n'), 1);
            QCOMPARE(process.readAllStandardOutput(), QByteArray());
        };
        const QList<Command> commands = allCommands();
        for (const Command& command : commands) {
            const QStringList enough(QVector<QString>(command.fewest, u"x"_s).toList());
            refused(QStringList {command.name, u"--dance"_s} + enough, u"'dance'. See"_s);
            refused(QStringList {command.name, u"--quite"_s} + enough,
                    u", but there is \"quiet\"."_s);
            if (command.fewest > 0)
                refused(QStringList {command.name} + enough.mid(1), u" is missing; see"_s);
            if (command.most != Command::anyNumber)
                refused(QStringList {command.name} + enough
                            + QVector<QString>(command.most - command.fewest + 1, u"x"_s).toList(),
                        u"takes no more than "_s);
            if (command.name.size() > 3)
                refused({command.name.left(1) + command.name}, u", but there is \""_s);
        }
        QCOMPARE(ZTestFolder::files(), before);
    }
};

QTEST_GUILESS_MAIN(tst_console)

#include "tst_console.moc"
