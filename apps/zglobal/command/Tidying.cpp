#include "command/Tidying.h"

#include "console/Failure.h"
#include "console/Literals.h"
#include "console/Log.h"
#include "console/Readable.h"
#include "console/Terminal.h"
#include "console/TextTable.h"
#include "console/Wait.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QJsonObject>
#include <QRegularExpression>

#include <algorithm>
#include <array>

namespace {

struct ReasonWords
{
    const char16_t* name; // in JSON
    const char16_t* text;
};

// In the order of TidyDecision::Reason.
constexpr std::array<ReasonWords, 11> reasons {{
    {u"in-use", u"in use"},
    {u"highest-version", u"highest version"},
    {u"equal-version", u"as high a version"},
    {u"no-version", u"without a version"},
    {u"recent", u"under a week old"},
    {u"unknown-age", u"age unknown"},
    {u"not-in-use", u"not in use"},
    {u"other-version", u"other version"},
    {u"lower-version", u"lower version"},
    {u"unpacked", u"unpacked archive"},
    {u"temporary", u"old download"},
}};

bool goes(const TidyDecision& decision)
{
    return decision.action == TidyDecision::Remove;
}

/** What goes before what stays, each by name. */
QVector<TidyDecision> sorted(const TidyFolder& folder)
{
    QVector<TidyDecision> decisions = folder.decisions;
    std::sort(decisions.begin(), decisions.end(),
              [](const TidyDecision& left, const TidyDecision& right) {
                  return goes(left) == goes(right) ? left.path < right.path : goes(left);
              });
    return decisions;
}

/** A run tells little where little goes; somebody waits all the same. */
void showWaiting(const QString& folder, qint64 milliseconds)
{
    constexpr int second = 1000;
    if (Terminal::isQuiet() || !Terminal::isErrorTerminal() || milliseconds < second)
        return;
    Terminal::draw(
        u"\r\x1b[Ktidying %1, %2"_s.arg(folder, Readable::duration(milliseconds / second)));
}

} // namespace

void Tidying::run(ZGlobalClient& client, const std::function<void(const QString& line)>& tell)
{
    static const QRegularExpression start(u"^tidy (\\w+) start"_s);
    QElapsedTimer clock;
    clock.start();
    QString folder;
    int told = 0;
    const auto wipe = [] {
        if (Terminal::isErrorTerminal())
            Terminal::draw(u"\r\x1b[K"_s);
    };
    const auto tellNew = [&] {
        const QStringList lines = Log::lines().filter(QRegularExpression(u"^tidy "_s));
        for (; told < lines.size(); ++told) {
            wipe();
            tell(lines.at(told));
            const auto match = start.match(lines.at(told));
            if (match.hasMatch())
                folder = match.captured(1);
        }
        showWaiting(folder, clock.elapsed());
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
    wipe();
}

TidyPlan Tidying::plan(ZGlobalClient& client)
{
    const auto plan = settled(client.planTidying());
    if (!plan.ok)
        throw Failure {plan.error};
    return plan.value;
}

void Tidying::print(const TidyPlan& plan)
{
    for (const TidyFolder& folder : plan) {
        Terminal::print(Terminal::styled(
            Terminal::Bold, folder.exists ? folder.path : folder.path + u": not there"_s));
        TextTable table({u""_s, u"entry"_s, u">size"_s, u"modified"_s, u"why"_s});
        for (const TidyDecision& decision : sorted(folder))
            table.add({goes(decision) ? u"goes"_s : u"stays"_s,
                       decision.path.mid(folder.path.size())
                           .remove(0, folder.path.endsWith(u'/') ? 0 : 1),
                       Readable::size(decision.bytes),
                       decision.modified.isValid()
                           ? Readable::age(decision.modified.toSecsSinceEpoch())
                           : u"-"_s,
                       QString::fromUtf16(reasons.at(decision.reason).text)});
        if (!table.isEmpty())
            table.print();
    }
}

QJsonArray Tidying::asJson(const TidyPlan& plan, bool afterRun)
{
    QJsonArray folders;
    for (const TidyFolder& folder : plan) {
        QJsonArray entries;
        for (const TidyDecision& decision : sorted(folder)) {
            QJsonObject entry {{u"path"_s, decision.path},
                               {u"action"_s, goes(decision) ? u"remove"_s : u"keep"_s},
                               {u"reason"_s, QString::fromUtf16(reasons.at(decision.reason).name)},
                               {u"modified"_s, Readable::time(decision.modified)},
                               {u"bytes"_s, decision.bytes}};
            if (afterRun)
                entry.insert(u"isThere"_s, QFileInfo::exists(decision.path));
            entries.append(entry);
        }
        folders.append(QJsonObject {
            {u"folder"_s, folder.path}, {u"exists"_s, folder.exists}, {u"entries"_s, entries}});
    }
    return folders;
}

QString Tidying::summary(const TidyPlan& plan)
{
    qint64 all = 0;
    qint64 going = 0;
    qint64 bytes = 0;
    for (const TidyFolder& folder : plan) {
        for (const TidyDecision& decision : folder.decisions) {
            ++all;
            going += goes(decision) ? 1 : 0;
            bytes += goes(decision) ? decision.bytes : 0;
        }
    }
    return u"%1 of %2 entries, %3"_s.arg(QString::number(going), QString::number(all),
                                         Readable::size(bytes));
}
