#pragma once

#include <QColor>
#include <QString>

class QApplication;
class QFont;
class QPalette;

/** How the program looks. */
namespace Look {

/** Puts a palette into force: "light" or "dark". For anything else it leaves that of the system and
 * answers false. */
bool setPalette(const QString& name);

/** Texts in a font that has Latin and Chinese characters alike, of one size on every machine that
 * has it; for pictures. */
void setFontForPictures();

/** The font for what goes below something else, whichever way its size is given. */
QFont smaller(QFont font);

/** Words that others have written, for a tool tip: markup in them is shown and never followed. */
QString toolTip(const QString& words);

/** For what has gone wrong, and for what nobody reads, on the palette in force. */
QColor faultColour(const QPalette& palette);
QColor unreadColour(const QPalette& palette);

/** A number of bytes as people read it. */
QString size(qint64 bytes);

/** Whether a font of this machine has Chinese characters; where none has, what to install. */
bool hasChineseFont(QString* advice);

} // namespace Look
