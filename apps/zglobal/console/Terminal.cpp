#include "console/Terminal.h"

#include "console/Literals.h"

#include <QMutex>
#include <QVector>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <cstdio>

#ifdef Q_OS_WIN
#include <io.h>
#include <qt_windows.h>
#else
#include <sys/ioctl.h>
#include <unistd.h>
#endif

namespace {

struct Range
{
    uint first;
    uint last;
};

/** Scripts, then the signs among others that terminals draw as pictures. */
constexpr std::array<Range, 60> wideRanges {
    {{0x1100, 0x115F},   {0x2E80, 0x303E},   {0x3041, 0xA4CF},   {0xA960, 0xA97C},
     {0xAC00, 0xD7A3},   {0xF900, 0xFAFF},   {0xFE30, 0xFE6F},   {0xFF00, 0xFF60},
     {0xFFE0, 0xFFE6},   {0x16FE0, 0x18CD5}, {0x1B000, 0x1B2FB}, {0x20000, 0x3FFFD},
     {0x231A, 0x231B},   {0x2329, 0x232A},   {0x23E9, 0x23EC},   {0x23F0, 0x23F0},
     {0x23F3, 0x23F3},   {0x25FD, 0x25FE},   {0x2614, 0x2615},   {0x2648, 0x2653},
     {0x267F, 0x267F},   {0x2693, 0x2693},   {0x26A1, 0x26A1},   {0x26AA, 0x26AB},
     {0x26BD, 0x26BE},   {0x26C4, 0x26C5},   {0x26CE, 0x26CE},   {0x26D4, 0x26D4},
     {0x26EA, 0x26EA},   {0x26F2, 0x26F3},   {0x26F5, 0x26F5},   {0x26FA, 0x26FA},
     {0x26FD, 0x26FD},   {0x2705, 0x2705},   {0x270A, 0x270B},   {0x2728, 0x2728},
     {0x274C, 0x274C},   {0x274E, 0x274E},   {0x2753, 0x2755},   {0x2757, 0x2757},
     {0x2795, 0x2797},   {0x27B0, 0x27B0},   {0x27BF, 0x27BF},   {0x2B1B, 0x2B1C},
     {0x2B50, 0x2B50},   {0x2B55, 0x2B55},   {0x1F004, 0x1F004}, {0x1F0CF, 0x1F0CF},
     {0x1F18E, 0x1F18E}, {0x1F191, 0x1F19A}, {0x1F200, 0x1F265}, {0x1F300, 0x1F64F},
     {0x1F680, 0x1F6C5}, {0x1F6CC, 0x1F6CC}, {0x1F6D0, 0x1F6D7}, {0x1F6DC, 0x1F6DF},
     {0x1F6EB, 0x1F6FC}, {0x1F7E0, 0x1F7F0}, {0x1F90C, 0x1F9FF}, {0x1FA70, 0x1FAFF}}};

int columnsOf(uint character)
{
    const QChar::Category category = QChar::category(character);
    if (category == QChar::Mark_NonSpacing || category == QChar::Mark_Enclosing
        || category == QChar::Other_Format)
        return 0;
    const bool wide =
        std::any_of(wideRanges.begin(), wideRanges.end(), [character](const Range& range) {
            return range.first <= character && character <= range.last;
        });
    return wide ? 2 : 1;
}

Terminal::Manner wanted;
std::atomic<bool> printFailed {false};

bool isTerminal(FILE* stream)
{
#ifdef Q_OS_WIN
    const bool is = _isatty(_fileno(stream)) != 0;
#else
    const bool is = isatty(fileno(stream)) != 0;
#endif
    return is && qgetenv("TERM") != "dumb";
}

int widthOf(FILE* stream)
{
    constexpr int usual = 80;
    const int asked = qEnvironmentVariableIntValue("COLUMNS");
    if (asked > 0)
        return asked;
#ifdef Q_OS_WIN
    CONSOLE_SCREEN_BUFFER_INFO info;
    auto* console = reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(stream)));
    const int columns = GetConsoleScreenBufferInfo(console, &info) != 0
        ? info.srWindow.Right - info.srWindow.Left + 1
        : 0;
#else
    winsize size {};
    const int columns = ioctl(fileno(stream), TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
#endif
    return columns > 0 ? columns : usual;
}

void write(FILE* stream, const QString& text)
{
    static QMutex mutex;
    const QMutexLocker lock(&mutex);
#ifdef Q_OS_WIN
    static const bool utf8 = SetConsoleOutputCP(CP_UTF8);
    Q_UNUSED(utf8)
#endif
    const QByteArray bytes = text.toUtf8();
    const auto size = static_cast<size_t>(bytes.size());
    const bool written = fwrite(bytes.constData(), 1, size, stream) == size && fflush(stream) == 0;
    // Who has seen enough closes the pipe.
    if (!written && stream == stdout && errno != EPIPE)
        printFailed = true;
}

} // namespace

void Terminal::setManner(Manner manner)
{
    wanted = manner;
}

bool Terminal::isQuiet()
{
    return wanted.quiet;
}

void Terminal::print(const QString& line)
{
    write(stdout, line + QLatin1Char('\n'));
}

bool Terminal::isPrinted()
{
    return !printFailed;
}

void Terminal::tell(const QString& line)
{
    if (!wanted.quiet)
        complain(line);
}

void Terminal::complain(const QString& line)
{
    const QString wipe = isErrorTerminal() ? u"\r\x1b[K"_s : QString();
    QStringList lines = line.split(QLatin1Char('\n'));
    for (QString& text : lines) // which may hold what a server has sent
        text = legible(text);
    write(stderr, wipe + lines.join(QLatin1Char('\n')) + QLatin1Char('\n'));
}

void Terminal::draw(const QString& text)
{
    write(stderr, text);
}

bool Terminal::isErrorTerminal()
{
    static const bool answer = isTerminal(stderr);
    return answer && !wanted.plain;
}

int Terminal::width()
{
    static const int answer = isTerminal(stdout) ? widthOf(stdout) : 0;
    return wanted.plain ? 0 : answer;
}

int Terminal::errorWidth()
{
    return widthOf(stderr); // asked anew: a window changes while progress is shown
}

QString Terminal::styled(Style style, const QString& text)
{
    static const bool bare = !isTerminal(stdout) || !qEnvironmentVariableIsEmpty("NO_COLOR");
    static const QVector<QString> codes {u"0"_s, u"1"_s, u"2"_s, u"32"_s, u"31"_s};
    if (bare || wanted.plain || style == Plain)
        return text;
    return u"\x1b[%1m%2\x1b[0m"_s.arg(codes.at(style), text);
}

int Terminal::columns(const QString& text)
{
    int sum = 0;
    for (const uint character : text.toUcs4())
        sum += columnsOf(character);
    return sum;
}

QString Terminal::legible(QString text)
{
    constexpr ushort pictures = 0x2400; // of the control characters
    constexpr ushort del = 0x7F;
    for (QChar& character : text) {
        const ushort code = character.unicode();
        if (code < ' ')
            character = QChar(pictures + code);
        else if (code == del)
            character = QChar(pictures + 0x21);
        else if (character.category() == QChar::Other_Control || (code >= 0x2028 && code <= 0x202E)
                 || (code >= 0x2066 && code <= 0x2069))
            character = QChar::ReplacementCharacter;
    }
    return text;
}

QString Terminal::padded(const QString& text, int width)
{
    return text + QString(std::max(0, width - columns(text)), QLatin1Char(' '));
}

QString Terminal::cut(const QString& text, int width)
{
    if (columns(text) <= width)
        return text;
    QVector<uint> kept;
    int sum = 0;
    for (const uint character : text.toUcs4()) {
        sum += columnsOf(character);
        if (sum >= width)
            break;
        kept.append(character);
    }
    return QString::fromUcs4(kept.constData(), kept.size()) + QChar(0x2026);
}

QStringList Terminal::wrapped(const QString& text, int width)
{
    if (width <= 0 || columns(text) <= width)
        return {text};
    QStringList lines {QString()};
    const QStringList words = text.split(QLatin1Char(' '));
    for (const QString& word : words) {
        QString& line = lines.last();
        if (columns(line) + 1 + columns(word) <= width) {
            line += line.isEmpty() ? word : QLatin1Char(' ') + word;
            continue;
        }
        if (!line.isEmpty())
            lines.append(QString());
        for (const uint character : word.toUcs4()) {
            if (columns(lines.constLast()) + columnsOf(character) > width)
                lines.append(QString());
            lines.last() += QString::fromUcs4(&character, 1);
        }
    }
    return lines;
}
