#include "datatable/VersionFile.h"

#include "file/WholeFile.h"

#include <QFile>
#include <QFileInfo>
#include <QSet>

namespace {

constexpr qint64 maxSize = qint64(16) * 1024 * 1024;
constexpr int octal = 8;
constexpr int hexadecimal = 16;

QByteArray sectionName()
{
    return QByteArrayLiteral("TableVersion");
}

QString folded(const QString& key)
{
#ifdef Q_OS_WIN
    return key.toLower();
#else
    return key;
#endif
}

bool isBlank(char c)
{
    return c == ' ' || c == '\t';
}

bool isLineEnd(char c)
{
    return c == '\n' || c == '\r';
}

int findLineEnd(const QByteArray& text, int position)
{
    while (position < text.size() && !isLineEnd(text.at(position)))
        ++position;
    return position;
}

/** Behind the one or two characters of the line end at position. */
int skipLineEnd(const QByteArray& text, int position)
{
    const char first = text.at(position++);
    if (position < text.size() && isLineEnd(text.at(position)) && text.at(position) != first)
        ++position;
    return position;
}

/** Behind the backslash at position and the character or line end that it takes with it. */
int skipEscape(const QByteArray& text, int position)
{
    if (++position == text.size())
        return position;
    return isLineEnd(text.at(position)) ? skipLineEnd(text, position) : position + 1;
}

int skipBlanks(const QByteArray& text, int position, int end)
{
    while (position < end && isBlank(text.at(position)))
        ++position;
    return position;
}

/** One entry or section head, which may run over several lines of the file. */
struct Line
{
    int start = 0;
    int end = 0; ///< before its line end or the comment behind it
    int equals = -1;
    bool quoted = false; ///< nothing closes its last quote
};

Line lineFrom(const QByteArray& text, int position)
{
    while (position < text.size()) {
        const char c = text.at(position);
        if (c == ';')
            position = findLineEnd(text, position);
        else if (isBlank(c) || isLineEnd(c))
            ++position;
        else
            break;
    }
    Line line;
    line.start = position;
    while (position < text.size()) {
        const char c = text.at(position);
        if (!line.quoted && (isLineEnd(c) || c == ';'))
            break;
        if (c == '"')
            line.quoted = !line.quoted;
        else if (c == '=' && !line.quoted && line.equals < 0)
            line.equals = position;
        position = c == '\\' ? skipEscape(text, position) : position + 1;
    }
    line.end = position;
    return line;
}

QString unescapedKey(const QByteArray& key)
{
    QString result;
    for (int i = 0; i < key.size();) {
        const bool wide = i + 1 < key.size() && key.at(i + 1) == 'U';
        const int start = i + (wide ? 2 : 1);
        const int digits = wide ? 4 : 2;
        bool escape = key.at(i) == '%' && start + digits <= key.size();
        const int code = escape ? key.mid(start, digits).toInt(&escape, hexadecimal) : 0;
        result += escape ? QChar(code) : QChar(QLatin1Char(key.at(i) == '\\' ? '/' : key.at(i)));
        i = escape ? start + digits : i + 1;
    }
    return result;
}

int digitOf(char c, int base)
{
    int digit = base;
    if (c >= '0' && c <= '9')
        digit = c - '0';
    else if ((c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F'))
        digit = (c | 0x20) - 'a' + 10;
    return digit < base ? digit : -1;
}

/** The character of a number's digits from position on, if there is any. */
QString numberedCharacter(const QByteArray& text, int& position, int end, int base)
{
    const int start = position;
    ushort code = 0;
    for (; position < end && digitOf(text.at(position), base) >= 0; ++position)
        code = static_cast<ushort>(code * base + digitOf(text.at(position), base));
    return position > start ? QString(QChar(code)) : QString();
}

/** What the backslash at position stands for; position goes behind it. */
QString unescaped(const QByteArray& text, int& position, int end)
{
    static const QByteArray letters("abfnrtv\"?'\\");
    static const QByteArray meanings("\a\b\f\n\r\t\v\"?'\\");
    const char c = position + 1 < end ? text.at(position + 1) : '\n';
    if (c == 'x' || digitOf(c, octal) >= 0) {
        position += c == 'x' ? 2 : 1;
        return numberedCharacter(text, position, end, c == 'x' ? hexadecimal : octal);
    }
    position = qMin(skipEscape(text, position), end);
    const int index = letters.indexOf(c);
    return index < 0 ? QString() : QString(QLatin1Char(meanings.at(index)));
}

/** The value's text; a list keeps its commas and so is no number. */
QString valueText(const QByteArray& text, int position, int end)
{
    static const QByteArray special("\\\",");
    QString result;
    bool quoted = false;
    position = skipBlanks(text, position, end);
    while (position < end) {
        const char c = text.at(position);
        if (c == '\\') {
            result += unescaped(text, position, end);
        } else if (c == '"') {
            quoted = !quoted;
            position = quoted ? position + 1 : skipBlanks(text, position + 1, end);
        } else if (c == ',' && !quoted) {
            result += QLatin1Char(c);
            position = skipBlanks(text, position + 1, end);
        } else {
            int next = position + 1;
            while (next < end && !special.contains(text.at(next)))
                ++next;
            result += QString::fromLocal8Bit(text.constData() + position, next - position);
            position = next;
        }
    }
    return result;
}

/** Goes through the lines of our sections. */
class SectionLines
{
public:
    explicit SectionLines(const QByteArray& text)
        : m_text(text)
    {
        if (text.startsWith("\xef\xbb\xbf"))
            m_line.end = 3;
    }

    /** To the next head or entry of a section of ours. */
    bool next()
    {
        do {
            m_line = lineFrom(m_text, m_line.end);
            if (m_line.start == m_text.size())
                return false;
            m_lastQuoted = m_line.quoted;
            if (isHead())
                enterSection();
        } while (!m_ours);
        return true;
    }

    /** Empty for a line that is no entry. */
    QString key() const
    {
        if (isHead() || m_line.equals < 0)
            return {};
        int end = m_line.equals;
        while (end > m_line.start && isBlank(m_text.at(end - 1)))
            --end;
        return folded(unescapedKey(m_text.mid(m_line.start, end - m_line.start)));
    }

    int version() const { return valueText(m_text, m_line.equals + 1, m_line.end).toInt(); }

    int valueStart() const
    {
        const int start = skipBlanks(m_text, m_line.equals + 1, m_line.end);
        return start < m_line.end ? start : m_line.equals + 1;
    }

    /** Ends the line behind what its first line holds of the value, and answers where. */
    int cutBehindValue()
    {
        const int start = valueStart();
        int end = qMin(findLineEnd(m_text, start), m_line.end);
        while (end > start && isBlank(m_text.at(end - 1)))
            --end;
        m_line.quoted = m_lastQuoted = false;
        m_line.end = end;
        return end;
    }

    /** Where the line after this one may start; -1 when this one runs to the end of the file. */
    int followingLine() const
    {
        const int end = findLineEnd(m_text, m_line.end);
        return end < m_text.size() ? skipLineEnd(m_text, end) : -1;
    }

    /** After the last line: the head of the section that ends in an open quote, -1 for none. */
    int openSection() const { return m_lastQuoted ? m_section : -1; }

private:
    bool isHead() const { return m_text.at(m_line.start) == '['; }

    void enterSection()
    {
        const QByteArray head = m_text.mid(m_line.start + 1, m_line.end - m_line.start - 1);
        m_section = m_line.start;
        m_ours = folded(unescapedKey(head.left(head.indexOf(']')).trimmed()))
            == folded(QString::fromLatin1(sectionName()));
    }

    const QByteArray& m_text;
    Line m_line;
    int m_section = -1;
    bool m_ours = false;
    bool m_lastQuoted = false;
};

QByteArray lineEndOf(const QByteArray& bytes)
{
    for (int i = bytes.size() - 1; i >= 0; --i) {
        if (isLineEnd(bytes.at(i)))
            return i > 0 && bytes.mid(i - 1, 2) == "\r\n" ? bytes.mid(i - 1, 2) : bytes.mid(i, 1);
    }
#ifdef Q_OS_WIN
    return QByteArrayLiteral("\r\n");
#else
    return QByteArrayLiteral("\n");
#endif
}

QHash<QString, int> byKey(const VersionFile::Versions& versions)
{
    QHash<QString, int> result;
    for (const auto& entry : versions)
        result.insert(folded(entry.first), entry.second);
    return result;
}

QByteArray newLines(const VersionFile::Versions& versions, const QSet<QString>& found,
                    const QByteArray& lineEnd)
{
    QByteArray lines;
    for (const auto& entry : versions) {
        if (!found.contains(folded(entry.first)))
            lines += entry.first.toLatin1() + '=' + QByteArray::number(entry.second) + lineEnd;
    }
    return lines;
}

bool holds(const QByteArray& bytes, const VersionFile::Versions& versions)
{
    QStringList keys;
    for (const auto& entry : versions)
        keys.append(folded(entry.first));
    return VersionFile::parse(bytes, keys) == byKey(versions);
}

QString readFile(const QString& path, QByteArray& bytes)
{
    const QFileInfo info(path);
    if (!info.exists())
        return {};
    // Opening a pipe would wait for its other end.
    if (!info.isFile())
        return QStringLiteral("is no file");
    if (info.size() > maxSize)
        return QStringLiteral("is too large");
    QFile file(path);
    if (file.open(QIODevice::ReadOnly))
        bytes = file.readAll();
    return file.error() == QFileDevice::NoError ? QString() : file.errorString();
}

} // namespace

QHash<QString, int> VersionFile::parse(const QByteArray& bytes, const QStringList& keys)
{
    QHash<QString, int> found; // -1 where there is none
    for (const QString& key : keys)
        found.insert(folded(key), -1);
    for (SectionLines lines(bytes); lines.next();) {
        const auto version = found.find(lines.key());
        if (version != found.end())
            version.value() = lines.version();
    }
    QHash<QString, int> versions;
    for (const QString& key : keys) {
        const int version = found.value(folded(key));
        if (version >= 0)
            versions.insert(key, version);
    }
    return versions;
}

QByteArray VersionFile::edit(const QByteArray& bytes, const Versions& versions)
{
    const QByteArray lineEnd = lineEndOf(bytes);
    const bool unended = !bytes.isEmpty() && !isLineEnd(bytes.back());
    const QByteArray text = unended ? QByteArray(bytes + lineEnd) : bytes;
    const QHash<QString, int> wanted = byKey(versions);

    QByteArray result;
    QSet<QString> found;
    int copied = 0;
    int place = -1; // in the result, for what is missing
    SectionLines lines(text);
    while (lines.next()) {
        const auto version = wanted.constFind(lines.key());
        if (version != wanted.cend()) {
            found.insert(version.key());
            if (lines.version() != version.value()) {
                result += text.mid(copied, lines.valueStart() - copied)
                    + QByteArray::number(version.value());
                copied = lines.cutBehindValue();
            }
        }
        const int following = lines.followingLine();
        if (following >= 0)
            place = result.size() + following - copied;
    }

    QByteArray added = newLines(versions, found, lineEnd);
    if (!added.isEmpty() && place < 0) {
        added.prepend('[' + sectionName() + ']' + lineEnd);
        const int open = lines.openSection();
        place = result.size() + (open < 0 ? text.size() : open) - copied;
        // The empty line also ends a last line that a backslash continues.
        if (open >= 0)
            added += lineEnd;
        else if (place > 0)
            added.prepend(lineEnd);
    }
    result += text.mid(copied);
    if (unended && (added.isEmpty() || place < result.size()))
        result.chop(lineEnd.size());
    return added.isEmpty() ? result : result.insert(place, added);
}

QHash<QString, int> VersionFile::read(const QString& path, const QStringList& keys)
{
    QByteArray bytes;
    return readFile(path, bytes).isEmpty() ? parse(bytes, keys) : QHash<QString, int>();
}

QString VersionFile::write(const QString& path, const Versions& versions)
{
    const QFileInfo info(path);
    QString file = path;
    if (info.isSymLink())
        file = info.exists() ? info.canonicalFilePath() : info.symLinkTarget();
    QByteArray bytes;
    const QString cause = readFile(file, bytes);
    if (!cause.isEmpty())
        return QStringLiteral("%1: %2").arg(path, cause);
    const QByteArray edited = edit(bytes, versions);
    if (edited == bytes)
        return {};
    if (!holds(edited, versions))
        return QStringLiteral("%1: holds a quote that nothing closes").arg(path);
    return WholeFile::write(file, edited);
}
