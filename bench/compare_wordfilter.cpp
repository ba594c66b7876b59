#include "LiteralWordFilter.h"
#include "RandomWordLists.h"

#include "chat/WordFilter.h"

#include <QDebug>
#include <QElapsedTimer>

#include <cstdio>
#include <cstdlib>

// compare_wordfilter SECONDS [SEED]: random words and lines through the word filter and through the
// literal procedure, for so long; the first case that differs is printed and ends the program.

int main(int argc, char** argv)
{
    const QStringList arguments = [&] {
        QStringList list;
        for (int i = 1; i < argc; ++i)
            list.append(QString::fromLocal8Bit(argv[i]));
        return list;
    }();
    const int seconds = arguments.value(0).toInt();
    const quint32 seed = arguments.value(1, QStringLiteral("1")).toUInt();
    if (seconds <= 0) {
        std::fputs("compare_wordfilter SECONDS [SEED]\n", stderr);
        return 2;
    }
    RandomWordLists random(seed);
    int cases = 0;
    int masked = 0;
    QElapsedTimer timer;
    for (timer.start(); timer.elapsed() < seconds * 1000LL;) {
        random.next(12, 12);
        WordFilter filter(random.words);
        for (const QString& text : qAsConst(random.lines)) {
            ChatLine line(text);
            filter.mask(line);
            const QString wanted = LiteralWordFilter::mask(random.words, text);
            if (line.text() != wanted) {
                qDebug() << "seed" << seed << "case" << cases << random.words << text << "gives"
                         << line.text() << "instead of" << wanted;
                return 1;
            }
            ++cases;
            masked += wanted != text ? 1 : 0;
        }
    }
    std::printf("seed %u: %d cases compared, %d of them masked, none differs\n", seed, cases,
                masked);
    return masked > 0 ? 0 : 1;
}
