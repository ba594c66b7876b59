#include "publish/SheetText.h"

#include <QTextCodec>

namespace {

struct Mark
{
    QByteArray bytes;
    const char* encoding;
};

const QLatin1String utf8("UTF-8");

QString withoutMark(const QString& text)
{
    return text.startsWith(QChar::ByteOrderMark) ? text.mid(1) : text;
}

/** Whether all bytes stand for characters. */
bool decodeAs(const char* encoding, const QByteArray& bytes, QString& text)
{
    QTextCodec* codec = QTextCodec::codecForName(encoding);
    if (codec == nullptr)
        return false;
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    // Not every codec counts what it replaces.
    text = withoutMark(codec->toUnicode(bytes.constData(), static_cast<int>(bytes.size()), &state));
    return state.invalidChars == 0 && state.remainingChars == 0
        && !text.contains(QChar::ReplacementCharacter);
}

QString decodeMarked(const QByteArray& bytes, QString& text, QString& encoding)
{
    static const Mark marks[] {
        {"\xef\xbb\xbf", "UTF-8"}, {"\xff\xfe", "UTF-16LE"}, {"\xfe\xff", "UTF-16BE"}};
    for (const Mark& mark : marks) {
        if (!bytes.startsWith(mark.bytes))
            continue;
        encoding = QString::fromLatin1(mark.encoding);
        return decodeAs(mark.encoding, bytes.mid(mark.bytes.size()), text)
            ? QString()
            : QStringLiteral("it is marked as %1, but not all of it is").arg(encoding);
    }
    return {};
}

/** Without a mark zeros tell the order: names of columns are Latin. */
bool decodeUnmarked16(const QByteArray& bytes, QString& text, QString& encoding)
{
    const bool isBig = bytes.startsWith('\0');
    encoding = isBig ? QStringLiteral("UTF-16BE") : QStringLiteral("UTF-16LE");
    return bytes.size() % 2 == 0 && bytes.at(isBig ? 1 : 0) != '\0'
        && bytes.at(isBig ? 0 : 1) == '\0' && decodeAs(encoding.toLatin1().constData(), bytes, text)
        && !text.contains(QChar(0));
}

} // namespace

QString SheetText::decode(const QByteArray& bytes, const QString& named, QString& text,
                          QString& encoding)
{
    encoding = named;
    if (!named.isEmpty())
        return decodeAs(named.toLatin1().constData(), bytes, text)
            ? QString()
            : QStringLiteral("it is not in the encoding %1, or there is none of that name")
                  .arg(named);
    QString fault = decodeMarked(bytes, text, encoding);
    if (!fault.isEmpty() || !encoding.isEmpty())
        return fault;
    if (bytes.contains('\0'))
        return decodeUnmarked16(bytes, text, encoding)
            ? QString()
            : QStringLiteral("it holds no text; save the sheet as CSV");
    encoding = utf8;
    text = QString::fromUtf8(bytes);
    if (text.toUtf8() == bytes)
        return {};
    encoding = QStringLiteral("GB18030");
    return decodeAs("GB18030", bytes, text)
        ? QString()
        : QStringLiteral("it is neither UTF-8 nor GB18030; save the sheet as \"CSV UTF-8\"");
}
