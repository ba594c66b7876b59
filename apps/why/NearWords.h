#pragma once

#include <QStringList>

/** Forbidden words that nearly mask something. */
namespace NearWords {

/** What keeps each such word from masking the text, as in "“代充” is there, but with 3 characters
 *  between “代” and “充”, where 2 may stand": the first few. */
QStringList in(const QString& text, const QStringList& words);

} // namespace NearWords
