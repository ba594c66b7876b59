#include "command/Commands.h"
#include "command/Session.h"
#include "console/Failure.h"
#include "console/Json.h"
#include "console/Literals.h"
#include "console/Readable.h"
#include "console/Terminal.h"
#include "console/TextTable.h"
#include "why/Why.h"

namespace {

QCommandLineOption atOption()
{
    return {u"at"_s, u"a gift or a frame at that time instead of now"_s, u"TIME"_s};
}

/** Now, when no other time is asked for. */
QDateTime momentFor(const QCommandLineParser& line)
{
    if (!line.isSet(atOption()))
        return QDateTime::currentDateTime();
    const QString text = line.value(atOption());
    QDateTime moment = Readable::moment(text);
    if (!moment.isValid())
        throw UsageFailure(u"\"%1\" is no time \"yyyy-MM-dd HH:mm:ss\""_s.arg(text));
    return moment;
}

/** A kind of question. */
struct Question
{
    QString kind;
    bool hasTime; ///< whether the answer hangs on one
    Why::Reply (*reply)(const QString& text, const QDateTime& moment,
                        const Why::Failures& failures);
};

QVector<Question> questions()
{
    return {
        {u"gift"_s, true,
         [](const QString& text, const QDateTime& moment, const Why::Failures& failures) {
             return Why::gift(text, moment, failures);
         }},
        {u"banner"_s, false,
         [](const QString& text, const QDateTime&, const Why::Failures& failures) {
             return Why::banner(text, failures);
         }},
        {u"frame"_s, true,
         [](const QString& text, const QDateTime& moment, const Why::Failures& failures) {
             return Why::frame(text, moment, failures);
         }},
        {u"masked"_s, false,
         [](const QString& text, const QDateTime&, const Why::Failures&) {
             return Why::Reply {{Why::masked(text)}, {}, {}};
         }},
        {u"page"_s, false,
         [](const QString& text, const QDateTime&, const Why::Failures&) {
             return Why::Reply {{Why::page(text)}, {}, {}};
         }},
        {u"table"_s, false,
         [](const QString& text, const QDateTime&, const Why::Failures& failures) {
             return Why::table(text, failures);
         }},
    };
}

QStringList kinds()
{
    QStringList kinds;
    for (const Question& question : questions())
        kinds.append(question.kind);
    return kinds;
}

Question questionFor(const QCommandLineParser& line)
{
    const QString kind = line.positionalArguments().constFirst();
    for (const Question& question : questions()) {
        if (question.kind != kind)
            continue;
        if (line.isSet(atOption()) && !question.hasTime)
            throw UsageFailure(u"--at is for gifts and frames"_s);
        return question;
    }
    throw UsageFailure(
        u"\"%1\" is nothing to ask about; there are %2"_s.arg(kind, kinds().join(u", "_s)));
}

QString wordsOf(const Why::Origin& origin)
{
    const QString row = origin.row > 0 ? u" row %1"_s.arg(origin.row) : QString();
    const qint64 modified = origin.modified.toSecsSinceEpoch();
    const QString file = origin.modified.isValid()
        ? u"%1, %2, of %3 (%4)"_s.arg(origin.file, Readable::size(origin.size),
                                      Readable::time(modified), Readable::age(modified))
        : u"%1, which is not there"_s.arg(origin.file);
    return u"%1%2, version %3: %4"_s.arg(origin.table, row, QString::number(origin.version), file);
}

QString wordsOf(const Why::Resource& resource)
{
    switch (resource.state) {
    case Why::Resource::None:
        return u"none: "_s + resource.cause;
    case Why::Resource::NotFetched:
        return u"not fetched: no file %1; %2"_s.arg(resource.path, resource.address);
    case Why::Resource::There:
        break;
    }
    return u"there: "_s + resource.path;
}

QString wordsOf(Why::Step::Answer answer)
{
    switch (answer) {
    case Why::Step::Yes:
        return u"yes"_s;
    case Why::Step::No:
        return u"no"_s;
    case Why::Step::NotReached:
        break;
    }
    return u"-"_s;
}

void print(const Why::Explanation& explanation)
{
    for (const QString& line : Terminal::wrapped(explanation.verdict, Terminal::width()))
        Terminal::print(Terminal::styled(Terminal::Bold, line));
    TextTable steps;
    for (int i = 0; i < explanation.steps.size(); ++i) {
        const Why::Step& step = explanation.steps.at(i);
        steps.add({i == explanation.deciding ? u">"_s : u" "_s, wordsOf(step.answer), step.rule,
                   step.value});
    }
    steps.print();
    TextTable facts;
    for (const Why::Resource& resource : explanation.resources)
        facts.add({u" "_s, resource.what, wordsOf(resource)});
    for (const Why::Remark& remark : explanation.remarks)
        facts.add({u" "_s, remark.what, remark.value});
    for (const Why::Origin& origin : explanation.origins)
        facts.add({u" "_s, u"from"_s, wordsOf(origin)});
    facts.print();
}

int printCandidates(const QVector<Why::Subject>& candidates, bool json)
{
    QJsonArray array;
    TextTable table;
    for (const Why::Subject& candidate : candidates) {
        array.append(Why::asJson(candidate));
        table.add({candidate.id, candidate.name});
    }
    if (json)
        Json::print(array);
    else
        table.print();
    throw Failure {u"%1 may be meant; ask for one of them"_s.arg(candidates.size())};
}

int run(const QCommandLineParser& line)
{
    const Question question = questionFor(line);
    const QDateTime moment = momentFor(line);
    Session session(line);
    session->load(); // what did not load is a part of the answer
    const Why::Reply reply =
        question.reply(line.positionalArguments().at(1), moment, session->failures());
    const bool json = CommandLine::wantsJson(line);
    if (!reply.fault.isEmpty())
        throw Failure {reply.fault};
    if (!reply.candidates.isEmpty())
        return printCandidates(reply.candidates, json);
    QJsonArray array;
    for (const Why::Explanation& explanation : reply.explanations) {
        array.append(Why::asJson(explanation));
        if (!json)
            print(explanation);
    }
    if (json)
        Json::print(array);
    return 0;
}

} // namespace

Command whyCommand()
{
    Command command;
    command.name = u"why"_s;
    command.arguments = u"SUBJECT WHAT"_s;
    command.choices = kinds();
    command.fewest = command.most = 2;
    command.summary = u"Tell why something is shown or not, rule by rule."_s;
    command.details =
        u"SUBJECT is gift, banner or frame, and WHAT its id, its name or a part of it; masked and "
        "a chat line; page and an address; table and its name. Every rule is asked in the order in "
        "which the client asks, with the value that it looked at; \">\" marks the one that "
        "decides. "
        "Answers from the client's folder alone, without the content server. Ends with 0 when the "
        "question is answered, whatever the answer; with 1 when nothing of that name is known, or "
        "several are, which are listed then. TIME is local, \"yyyy-MM-dd HH:mm:ss\"."_s;
    command.examples = QStringList {u"zglobal why gift G1014"_s,
                                    u"zglobal why gift 星光拖鞋 --at '2026-05-20 20:00:00'"_s,
                                    u"zglobal why masked 代充金豆找我"_s,
                                    u"zglobal why page https://h5.example.com/recharge/first"_s,
                                    u"zglobal why table CS_GiftList"_s};
    command.options = Session::options() + QList {atOption(), CommandLine::jsonOption()};
    command.run = &run;
    return command;
}
