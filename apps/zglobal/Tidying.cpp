#include "Tidying.h"

#include "Literals.h"
#include "Log.h"
#include "Wait.h"
#include "tidy/zTidyMgr.h"

#include <QRegularExpression>

bool Tidying::run(const std::function<void(const QString& line)>& tell)
{
    constexpr int patience = 60 * 60 * 1000; // milliseconds; a large cache takes its time
    int told = 0;
    const auto tellNew = [&] {
        const QStringList lines = Log::lines().filter(QRegularExpression(u"^tidy "_s));
        for (; told < lines.size(); ++told)
            tell(lines.at(told));
    };
    Log::restart();
    zTidyMgr::getInstance().startThread();
    const bool ended = waitUntil(
        [&] {
            tellNew();
            return zTidyMgr::getInstance().isFinished();
        },
        patience);
    tellNew();
    return ended;
}
