#include "lint/Lint.h"

#include "content/Table.h"
#include "lint/Checks.h"
#include "lint/ContentChecks.h"

#include <algorithm>

namespace {

/** What is about no table comes last. */
bool comesBefore(const Finding& left, const Finding& right)
{
    const Place& a = left.place;
    const Place& b = right.place;
    if (a.table.isEmpty() != b.table.isEmpty())
        return b.table.isEmpty();
    return a.table != b.table ? a.table < b.table : a.row < b.row;
}

} // namespace

Lint::Lint(const QStringList& silenced, const QStringList& phrases)
    : m_silenced(silenced)
    , m_phrases(phrases)
{
}

void Lint::setPause(const std::function<void(const QString& what)>& pause)
{
    m_pause = pause;
    m_archives.setPause(pause);
}

QVector<Finding> Lint::findings(const Content& content, const Content* published,
                                const QDateTime& moment)
{
    Findings findings(m_silenced);
    QVector<Table> tables;
    for (auto file = content.tables.begin(); file != content.tables.end(); ++file)
        tables.append(Table(file.key(), *file));
    for (const Table& table : tables) {
        m_pause(table.name());
        if (!Content::isTable(table.name()))
            continue;
        Checks::checkTable(table, findings);
        if (table.isRefused())
            continue;
        Checks::checkCells(table, findings);
        Checks::checkRecords(table, findings);
    }
    ContentChecks::checkReferences(tables, findings);
    ContentChecks::checkFiles(content, tables, m_archives, findings);
    m_pause(QStringLiteral("versions"));
    ContentChecks::checkVersions(content, tables, findings);
    if (published != nullptr)
        ContentChecks::checkChanges(content, *published, findings);
    if (published != nullptr && moment.isValid())
        ContentChecks::checkShown(content, *published, moment, findings);
    m_pause(QStringLiteral("words"));
    ContentChecks::checkWords(tables, m_phrases, findings);
    QVector<Finding> all = findings.all();
    std::stable_sort(all.begin(), all.end(), &comesBefore);
    return all;
}

QStringList Lint::everydayPhrases()
{
    return {QStringLiteral("主播好"),
            QStringLiteral("主播唱得真好听"),
            QStringLiteral("大家晚上好"),
            QStringLiteral("欢迎新朋友"),
            QStringLiteral("再来一首"),
            QStringLiteral("谢谢你的礼物"),
            QStringLiteral("送你一个小礼物"),
            QStringLiteral("恭喜升级"),
            QStringLiteral("今天几点下播"),
            QStringLiteral("这首歌叫什么名字"),
            QStringLiteral("哈哈哈哈太好笑了"),
            QStringLiteral("早点休息，晚安"),
            QStringLiteral("明天见"),
            QStringLiteral("支持一下"),
            QStringLiteral("第一次来"),
            QStringLiteral("声音有点小"),
            QStringLiteral("画面卡了一下"),
            QStringLiteral("我在上班偷偷看"),
            QStringLiteral("生日快乐"),
            QStringLiteral("新年快乐"),
            QStringLiteral("中秋节快乐"),
            QStringLiteral("加油加油"),
            QStringLiteral("好的没问题"),
            QStringLiteral("666"),
            QStringLiteral("hello everyone"),
            QStringLiteral("good night"),
            QStringLiteral("thank you so much"),
            QStringLiteral("nice song"),
            QStringLiteral("see you tomorrow"),
            QStringLiteral("haha that is funny")};
}
