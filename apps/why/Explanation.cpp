#include "why/Explanation.h"

#include <QJsonArray>

#include <array>

namespace {

QJsonObject objectOf(const Why::Step& step)
{
    constexpr std::array<const char*, 3> answers {"yes", "no", "not reached"};
    return {{QStringLiteral("rule"), step.rule},
            {QStringLiteral("answer"), QLatin1String(answers.at(step.answer))},
            {QStringLiteral("value"), step.value}};
}

QJsonObject objectOf(const Why::Resource& resource)
{
    constexpr std::array<const char*, 3> states {"none", "not fetched", "there"};
    return {{QStringLiteral("what"), resource.what},
            {QStringLiteral("state"), QLatin1String(states.at(resource.state))},
            {QStringLiteral("path"), resource.path},
            {QStringLiteral("address"), resource.address},
            {QStringLiteral("cause"), resource.cause}};
}

QJsonObject objectOf(const Why::Mask& mask)
{
    return {{QStringLiteral("word"), mask.word},
            {QStringLiteral("table"), mask.table},
            {QStringLiteral("row"), mask.row},
            {QStringLiteral("start"), mask.start},
            {QStringLiteral("length"), mask.length}};
}

QJsonObject objectOf(const Why::Remark& remark)
{
    return {{QStringLiteral("what"), remark.what}, {QStringLiteral("value"), remark.value}};
}

QJsonObject objectOf(const Why::Origin& origin)
{
    return {{QStringLiteral("table"), origin.table},
            {QStringLiteral("row"), origin.row},
            {QStringLiteral("version"), origin.version},
            {QStringLiteral("file"), origin.file},
            {QStringLiteral("bytes"), origin.size},
            {QStringLiteral("modified"), origin.modified.toString(Qt::ISODate)}};
}

template <class Part>
QJsonArray listOf(const QVector<Part>& parts)
{
    QJsonArray list;
    for (const Part& part : parts)
        list.append(objectOf(part));
    return list;
}

} // namespace

bool Why::Explanation::ask(const QString& rule, bool answer, const QString& value)
{
    if (isDecided()) {
        steps.append({rule, Step::NotReached, QString()});
        return false;
    }
    steps.append({rule, answer ? Step::Yes : Step::No, value});
    if (!answer)
        deciding = static_cast<int>(steps.size()) - 1;
    return answer;
}

QJsonObject Why::asJson(const Explanation& explanation)
{
    return {{QStringLiteral("subject"), asJson(explanation.subject)},
            {QStringLiteral("holds"), explanation.holds},
            {QStringLiteral("verdict"), explanation.verdict},
            {QStringLiteral("steps"), listOf(explanation.steps)},
            {QStringLiteral("deciding"), explanation.deciding},
            {QStringLiteral("resources"), listOf(explanation.resources)},
            {QStringLiteral("masks"), listOf(explanation.masks)},
            {QStringLiteral("remarks"), listOf(explanation.remarks)},
            {QStringLiteral("origins"), listOf(explanation.origins)}};
}

QJsonObject Why::asJson(const Subject& subject)
{
    return {{QStringLiteral("kind"), subject.kind},
            {QStringLiteral("table"), subject.table},
            {QStringLiteral("id"), subject.id},
            {QStringLiteral("name"), subject.name}};
}
