#include "chat/WordCheck.h"
#include "chat/ZSensitiveWordsInfoListMgr.h"
#include "why/NearWords.h"
#include "why/Subjects.h"
#include "why/Why.h"

namespace {

struct List
{
    QString table;
    QString name;
    int words;
};

QVector<List> lists()
{
    ZSensitiveWordsInfoListMgr* words = ZSensitiveWordsInfoListMgr::getInstance();
    return {{QStringLiteral("ChatFilterWordKey"), QStringLiteral("older"),
             static_cast<int>(words->getSensitiveWordsMap().size())},
            {QStringLiteral("NewChatFilterWordKey"), QStringLiteral("newer"),
             static_cast<int>(words->getNewSensitiveWordsMap().size())}};
}

/** Without its table a list says nothing, whatever the other one has. */
void addList(const List& list, const Why::RawTable& table, Why::Explanation& explanation)
{
    const QString fault = Why::loadFault(table.status());
    const QString words = QStringLiteral("%1 words").arg(list.words);
    Why::Step step {QStringLiteral("the %1 list is loaded").arg(list.name), Why::Step::Yes,
                    QStringLiteral("%1, version %2, %3")
                        .arg(list.table, QString::number(table.status().version), words)};
    if (!fault.isEmpty()) {
        step.answer = Why::Step::No;
        step.value =
            list.words == 0 ? fault : QStringLiteral("%1; %2 of an earlier load").arg(fault, words);
    }
    explanation.steps.append(step);
    explanation.origins.append(table.origin());
}

void addMask(const stWordMask& mask, const List& list, const Why::RawTable& table,
             Why::Explanation& explanation)
{
    const Why::RawRow* row = table.find(mask.word);
    const int number = row == nullptr ? 0 : row->row.number;
    explanation.masks.append({mask.word, list.table, number, mask.start, mask.length});
    explanation.steps.append(
        {QStringLiteral("“%1” of the %2 list is found").arg(mask.word, list.name), Why::Step::Yes,
         QStringLiteral("covers “%1” from %2; row %3 of %4")
             .arg(explanation.subject.id.mid(mask.start, mask.length), QString::number(mask.start),
                  QString::number(number), list.table)});
    if (explanation.deciding < 0)
        explanation.deciding = static_cast<int>(explanation.steps.size()) - 1;
}

void addNearWords(const QString& rest, Why::Explanation& explanation)
{
    ZSensitiveWordsInfoListMgr* words = ZSensitiveWordsInfoListMgr::getInstance();
    const QStringList all =
        words->getSensitiveWordsMap().keys() + words->getNewSensitiveWordsMap().keys();
    for (const QString& near : NearWords::in(rest, all))
        explanation.remarks.append({QStringLiteral("near"), near});
}

} // namespace

Why::Explanation Why::masked(const QString& text)
{
    Explanation explanation;
    explanation.subject = {QStringLiteral("text"), QString(), text, QString()};
    const QVector<List> all = lists();
    QVector<RawTable> tables;
    int words = 0;
    for (const List& list : all) {
        tables.append(RawTable(statusOf(list.table)));
        addList(list, tables.constLast(), explanation);
        words += list.words;
    }
    ZSensitiveWordsInfoListMgr* filter = ZSensitiveWordsInfoListMgr::getInstance();
    const QVector<stWordMask> masks = filter->explainSensitiveWords(text);
    const QString shown = filter->sensitiveWordsCheck(text);
    for (const stWordMask& mask : masks)
        addMask(mask, all.at(mask.list), tables.at(mask.list), explanation);
    explanation.holds = !masks.isEmpty();
    explanation.verdict = masks.isEmpty()
        ? QStringLiteral("“%1” is shown as it is").arg(text)
        : QStringLiteral("“%1” is shown as “%2”").arg(text, shown);
    if (masks.isEmpty()) {
        explanation.steps.append(
            {QStringLiteral("a word is found"), Step::No, QStringLiteral("none of %1").arg(words)});
        explanation.deciding = static_cast<int>(explanation.steps.size()) - 1;
    }
    addNearWords(shown, explanation);
    return explanation;
}
