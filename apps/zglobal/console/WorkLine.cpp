#include "console/WorkLine.h"

#include "console/Interrupt.h"
#include "console/Literals.h"
#include "console/Readable.h"
#include "console/Terminal.h"

WorkLine::WorkLine(const QString& work)
    : m_work(work)
{
    m_clock.start();
}

WorkLine::~WorkLine()
{
    if (m_isShown)
        Terminal::draw(u"\r\x1b[K"_s);
}

void WorkLine::next(const QString& what)
{
    constexpr int second = 1000; // milliseconds
    Interrupt::check();
    if (m_clock.elapsed() < second || Terminal::isQuiet() || !Terminal::isErrorTerminal())
        return;
    m_isShown = true;
    const QString since = Readable::duration(m_clock.elapsed() / second);
    const QString line = u"%1 %2, %3"_s.arg(m_work, what, since);
    Terminal::draw(u"\r\x1b[K"_s + Terminal::cut(line, Terminal::errorWidth() - 1));
}
