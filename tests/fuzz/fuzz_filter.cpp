#include "../bench/LiteralWordFilter.h"
#include "chat/WordFilter.h"
#include "fuzz/Fuzz.h"

namespace {

// What one run may cost by the literal procedure.
constexpr int maxWords = 6;
constexpr int maxWord = 12;
constexpr int maxText = 80;

} // namespace

/** The last line of the input is the chat line, those before it are the words. */
ZGLOBAL_FUZZER
{
    QStringList lines = QString::fromUtf8(bytes).split(QLatin1Char('\n'));
    const QString text = lines.takeLast().left(maxText);
    QStringList words;
    for (const QString& line : lines.mid(0, maxWords))
        words.append(line.left(maxWord));
    WordFilter filter(words);
    ChatLine line(text, true);
    filter.mask(line);
    require(line.text() == LiteralWordFilter::mask(words, text), "as by the literal procedure");
    for (const auto& mask : line.masks())
        require(mask.covered.start >= 0 && mask.covered.start + mask.covered.length <= text.size(),
                "every mask lies in the line");
}
