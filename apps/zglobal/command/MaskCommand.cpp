#include "chat/ZSensitiveWordsInfoListMgr.h"
#include "command/Commands.h"
#include "command/Session.h"
#include "command/WordMasks.h"
#include "console/Failure.h"
#include "console/Interrupt.h"
#include "console/Json.h"
#include "console/Literals.h"
#include "console/Terminal.h"
#include "datatable/ZDataTableMgr.h"

#include <QFile>

#include <cstdio>

namespace {

QString explainOption()
{
    return u"explain"_s;
}

void mask(const QString& text, const QCommandLineParser& line)
{
    const QString masked = ZSensitiveWordsInfoListMgr::getInstance()->sensitiveWordsCheck(text);
    if (CommandLine::wantsJson(line)) {
        QJsonObject object {{u"line"_s, text}, {u"masked"_s, masked}};
        if (line.isSet(explainOption()))
            object.insert(u"masks"_s, WordMasks::asJson(text));
        Json::printLine(object);
        return;
    }
    Terminal::print(masked);
    if (!line.isSet(explainOption()))
        return;
    const QStringList masks = WordMasks::explained(text);
    for (const QString& explained : masks)
        Terminal::print(u"  "_s + explained);
}

int run(const QCommandLineParser& line)
{
    Session session(line);
    ZDataTableMgr* tables = ZDataTableMgr::getInstance();
    tables->loadLocalVersion();
    for (const auto list : {EDataTable::ChatFilterWordKey, EDataTable::NewChatFilterWordKey}) {
        if (!tables->loadTable(list))
            throw Failure {u"a word list cannot be loaded: %1; %2"_s.arg(
                tables->getTableStatus(list).error, Session::advice())};
    }
    const QStringList texts = line.positionalArguments();
    for (const QString& text : texts)
        mask(text, line);
    if (!texts.isEmpty())
        return 0;
    Interrupt::release(); // nothing is left behind
    QFile input;
    if (!input.open(stdin, QIODevice::ReadOnly))
        throw Failure {u"standard input cannot be read"_s};
    for (QByteArray text = input.readLine(); !text.isEmpty(); text = input.readLine()) {
        if (text.endsWith('\n'))
            text.chop(text.endsWith("\r\n") ? 2 : 1);
        mask(QString::fromUtf8(text), line);
    }
    return 0;
}

} // namespace

Command maskCommand()
{
    Command command;
    command.name = u"mask"_s;
    command.arguments = u"[LINE...]"_s;
    command.most = Command::anyNumber;
    command.summary = u"Mask forbidden words in chat lines."_s;
    command.details = u"Masks its arguments, or without any the lines of standard input, against "
                      "both word lists.\nWith --json every line gives one object on a line of its "
                      "own."_s;
    command.examples = QStringList {u"zglobal mask --explain 代充金豆找我"_s};
    command.options = Session::options()
        + QList<QCommandLineOption> {
            {explainOption(), u"tell for each mask the word, its list and what it covers"_s},
            CommandLine::jsonOption()};
    command.run = &run;
    return command;
}
