#include "demo/Demo.h"

#include "console/Failure.h"
#include "console/Literals.h"
#include "console/Terminal.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

namespace {

void copyFolder(const QString& from, const QString& to)
{
    const QDir source(from);
    QDirIterator files(from, QDir::Files, QDirIterator::Subdirectories);
    int copied = 0;
    while (files.hasNext()) {
        const QString file = files.next();
        const QString target = to + QLatin1Char('/') + source.relativeFilePath(file);
        if (!QDir().mkpath(QFileInfo(target).path()) || !QFile::copy(file, target))
            throw Failure {u"%1 cannot be copied to %2"_s.arg(file, target)};
        ++copied;
    }
    if (copied == 0)
        throw Failure {u"there is no content in %1"_s.arg(from)};
}

} // namespace

Demo::Demo(const QString& content, const QString& keep)
    : m_work(keep.isEmpty() ? m_temporary.path() : QDir(keep).absolutePath())
    , m_start(QDir::currentPath())
{
    if (!m_content.isValid() || !m_temporary.isValid())
        throw Failure {u"no temporary folder can be made: "_s + m_content.errorString()};
    if (QDir(m_work).exists() && !QDir(m_work).isEmpty())
        throw UsageFailure(u"the folder %1 is not empty"_s.arg(keep));
    copyFolder(content, m_content.path());
    if (!QDir().mkpath(m_work) || !QDir::setCurrent(m_work))
        throw Failure {u"the folder %1 cannot be made or entered"_s.arg(m_work)};
}

Demo::~Demo()
{
    // Some systems do not remove a folder that a process is in.
    QDir::setCurrent(m_start);
}

void Demo::step(const QString& title, const std::function<void(Demo&)>& body)
{
    ++m_steps;
    m_checks = 0;
    m_broken = 0;
    const QString number = u"%1  "_s.arg(m_steps, 2);
    Terminal::print(QString());
    Terminal::print(Terminal::styled(Terminal::Bold, number + title));
    try {
        body(*this);
    } catch (const Failure& failure) {
        expect(false, failure.message);
    }
    if (m_checks > 0 && m_broken == 0)
        ++m_asExpected;
}

void Demo::say(const QString& line) const
{
    constexpr int widest = 96;
    const QStringList parts = Terminal::wrapped(line, widest);
    for (const QString& part : parts)
        Terminal::print(u"    "_s + part);
}

void Demo::say(const QStringList& lines) const
{
    for (const QString& line : lines)
        say(line);
}

void Demo::show(const TextTable& table) const
{
    say(table.lines());
}

void Demo::expect(bool held, const QString& what)
{
    ++m_checks;
    if (!held)
        ++m_broken;
    const QString sign = held ? u"ok "_s : u"NOT"_s;
    say(Terminal::styled(held ? Terminal::Good : Terminal::Bad, sign) + QLatin1Char(' ') + what);
}

bool Demo::finish() const
{
    const bool all = m_asExpected == m_steps;
    const QString text = u"%1 of %2 steps as expected"_s.arg(m_asExpected).arg(m_steps);
    Terminal::print(QString());
    Terminal::print(Terminal::styled(all ? Terminal::Good : Terminal::Bad, text));
    return all;
}

void Demo::serve()
{
    QString error;
    m_server = std::make_unique<ContentServer>();
    if (!m_server->start(content(), 0, &error))
        throw Failure {error};
}

ContentServer& Demo::server() const
{
    if (!m_server)
        throw Failure {u"there is no content server"_s};
    return *m_server;
}

QString Demo::shortened(const QString& address) const
{
    const QString base = server().baseUrl();
    return address.startsWith(base) ? address.mid(base.size()) : address;
}
