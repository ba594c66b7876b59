#include "fuzz/Fuzz.h"
#include "host/ZGlobalConfig.h"

ZGLOBAL_FUZZER
{
    QHash<QString, int> header {{QStringLiteral("before"), 7}};
    QJsonArray rows {QStringLiteral("before")};
    QString error;
    if (!ZGlobalConfig::readTableFile(bytes, header, rows, &error)) {
        require(!error.isEmpty(), "a refusal has a cause");
        require(header.size() == 1 && rows.size() == 1, "a refused table changes nothing");
        return;
    }
    require(error.isEmpty(), "what was read has no error");
    QVector<bool> taken(header.size());
    for (const int index : qAsConst(header)) {
        require(index >= 0 && index < taken.size() && !taken.at(index), "each column its own cell");
        taken[index] = true;
    }
}
