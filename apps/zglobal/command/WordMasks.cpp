#include "command/WordMasks.h"

#include "chat/ZSensitiveWordsInfoListMgr.h"
#include "console/Literals.h"

#include <QJsonObject>

namespace {

QVector<stWordMask> masksOf(const QString& line)
{
    return ZSensitiveWordsInfoListMgr::getInstance()->explainSensitiveWords(line);
}

QString listOf(const stWordMask& mask)
{
    return mask.list == stWordMask::OlderList ? u"older"_s : u"newer"_s;
}

} // namespace

QStringList WordMasks::explained(const QString& line)
{
    QStringList lines;
    const QVector<stWordMask> masks = masksOf(line);
    for (const stWordMask& mask : masks)
        lines.append(u"“%1” of the %2 list covers “%3” from %4"_s.arg(
            mask.word, listOf(mask), line.mid(mask.start, mask.length),
            QString::number(mask.start)));
    return lines;
}

QJsonArray WordMasks::asJson(const QString& line)
{
    QJsonArray all;
    const QVector<stWordMask> masks = masksOf(line);
    for (const stWordMask& mask : masks)
        all.append(QJsonObject {{u"word"_s, mask.word},
                                {u"list"_s, listOf(mask)},
                                {u"start"_s, mask.start},
                                {u"length"_s, mask.length},
                                {u"covered"_s, line.mid(mask.start, mask.length)}});
    return all;
}
