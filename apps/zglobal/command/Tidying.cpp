#include "command/Tidying.h"

#include "console/Literals.h"
#include "console/Log.h"
#include "console/Wait.h"

#include <QRegularExpression>

void Tidying::run(ZGlobalClient& client, const std::function<void(const QString& line)>& tell)
{
    int told = 0;
    const auto tellNew = [&] {
        const QStringList lines = Log::lines().filter(QRegularExpression(u"^tidy "_s));
        for (; told < lines.size(); ++told)
            tell(lines.at(told));
    };
    Log::restart();
    const auto run = client.tidy();
    constexpr int patience = 24 * 60 * 60 * 1000; // milliseconds; a large cache takes its time
    waitUntil(
        [&] {
            tellNew();
            return !run.isPending();
        },
        patience);
    tellNew();
}
