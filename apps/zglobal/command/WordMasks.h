#pragma once

#include <QJsonArray>
#include <QString>
#include <QStringList>

/** What the chat filter masks of a line, and why. */
namespace WordMasks {

/** A line of text for each mask: the word, its list, the stretch of the original line. */
QStringList explained(const QString& line);

/** The same as objects with word, list, start, length and covered. */
QJsonArray asJson(const QString& line);

} // namespace WordMasks
