#pragma once

#include <QStringList>

class QWidget;

/** What can be read on widgets as they are shown, for whoever cannot look. */
namespace ShownTexts {

/** The words of the boxes, labels and buttons in sight, and those of the rows and columns that the
 * views are scrolled to, from the outermost widget inwards. */
QStringList of(const QWidget& widget);

} // namespace ShownTexts
