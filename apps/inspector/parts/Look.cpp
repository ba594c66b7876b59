#include "inspector/parts/Look.h"

#include <QApplication>
#include <QFontDatabase>
#include <QFontInfo>
#include <QLocale>
#include <QPalette>
#include <QStyle>
#include <QStyleFactory>
#include <QTextDocument>

namespace {

QPalette paletteOf(const QColor& window, const QColor& base, const QColor& text,
                   const QColor& highlight)
{
    QPalette palette(text, window, window.lighter(130), window.darker(150), window.darker(120),
                     text, base);
    palette.setColor(QPalette::Window, window);
    palette.setColor(QPalette::AlternateBase,
                     base.lightness() > 128 ? base.darker(104) : base.lighter(120));
    palette.setColor(QPalette::Button, window);
    palette.setColor(QPalette::ToolTipBase, base);
    palette.setColor(QPalette::ToolTipText, text);
    palette.setColor(QPalette::Highlight, highlight);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, highlight);
    QColor faint = text;
    faint.setAlpha(128);
    palette.setColor(QPalette::PlaceholderText, faint);
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, QColor(128, 128, 128));
    return palette;
}

bool isDark(const QPalette& palette)
{
    return palette.color(QPalette::Base).lightness() < 128;
}

} // namespace

bool Look::setPalette(const QString& name)
{
    const bool dark = name == QLatin1String("dark");
    if (!dark && name != QLatin1String("light"))
        return false;
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setPalette(dark ? paletteOf(QColor(45, 47, 51), QColor(32, 33, 36),
                                              QColor(225, 227, 230), QColor(66, 125, 207))
                                  : paletteOf(QColor(240, 240, 242), Qt::white, QColor(32, 33, 36),
                                              QColor(42, 110, 200)));
    return true;
}

void Look::setFontForPictures()
{
    QFont font(QStringLiteral("WenQuanYi Micro Hei"));
    font.setPixelSize(13);
    QApplication::setFont(font);
}

QFont Look::smaller(QFont font)
{
    constexpr double share = 0.85;
    font.setPixelSize(qRound(QFontInfo(font).pixelSize() * share));
    return font;
}

QString Look::toolTip(const QString& words)
{
    return Qt::mightBeRichText(words) ? Qt::convertFromPlainText(words, Qt::WhiteSpaceNormal)
                                      : words;
}

QColor Look::faultColour(const QPalette& palette)
{
    return isDark(palette) ? QColor(255, 128, 118) : QColor(176, 22, 22);
}

QColor Look::unreadColour(const QPalette& palette)
{
    // Styles make what is disabled fainter than anybody can read at length.
    const QColor& text = palette.color(QPalette::Text);
    const QColor& base = palette.color(QPalette::Base);
    return {(text.red() * 5 + base.red() * 4) / 9, (text.green() * 5 + base.green() * 4) / 9,
            (text.blue() * 5 + base.blue() * 4) / 9};
}

QString Look::size(qint64 bytes)
{
    return QLocale().formattedDataSize(bytes, 1, QLocale::DataSizeSIFormat);
}

bool Look::hasChineseFont(QString* advice)
{
#if QT_VERSION_MAJOR < 6
    const QStringList families = QFontDatabase().families(QFontDatabase::SimplifiedChinese);
#else
    const QStringList families = QFontDatabase::families(QFontDatabase::SimplifiedChinese);
#endif
    if (!families.isEmpty())
        return true;
    *advice = QApplication::translate(
        "Look",
        "No font of this machine has Chinese characters; on Debian, fonts-wqy-microhei has.");
    return false;
}
