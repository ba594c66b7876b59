#include "command/Commands.h"
#include "console/Failure.h"
#include "console/Literals.h"
#include "demo/Demo.h"
#include "demo/Steps.h"
#include "server/ContentFolder.h"

namespace {

struct Step
{
    const char16_t* title;
    void (*run)(Demo& demo);
};

const Step steps[] = {
    {u"A content server starts", &Steps::serveContent},
    {u"A client starts in an empty folder", &Steps::startClient},
    {u"It learns the versions of the tables", &Steps::learnVersions},
    {u"It brings every table up to date", &Steps::updateTables},
    {u"It loads them", &Steps::loadTables},
    {u"It loads those that the library leaves to it", &Steps::loadOtherTables},
    {u"Which gifts are on sale?", &Steps::giftsOnSale},
    {u"What does a gift look like?", &Steps::giftPicture},
    {u"How is a newcomer greeted?", &Steps::welcome},
    {u"What may be said in the chat?", &Steps::maskedLines},
    {u"What does the service say, and what a hurried viewer?", &Steps::messages},
    {u"What does a chat line look like?", &Steps::bubblesAndStickers},
    {u"Which tiers has the fans group?", &Steps::fansTiers},
    {u"What is a level worth?", &Steps::levels},
    {u"Which head frame is in force?", &Steps::headFrames},
    {u"What is on a medal?", &Steps::medal},
    {u"What does nobility cost?", &Steps::nobility},
    {u"Which banners are shown?", &Steps::banners},
    {u"Which pages open in the embedded browser?", &Steps::pages},
    {u"What does the client wear?", &Steps::skin},
    {u"Where are the web pages?", &Steps::webPages},
    {u"How is the client set up?", &Steps::settings},
    {u"What happens on the screen?", &Steps::effects},
    {u"The flash animations come in", &Steps::flashes},
    {u"The operator publishes a new gift table", &Steps::publishGifts},
    {u"A second try finds it unchanged", &Steps::unchangedGifts},
    {u"The cache is tidied", &Steps::tidying},
    {u"It starts again without a network", &Steps::restartOffline},
};

int run(const QCommandLineParser& line)
{
    QString error;
    const QString named = line.value(CommandLine::contentOption().names().constFirst());
    const QString content = ContentFolder::find(named, &error);
    if (content.isEmpty())
        throw Failure {error};
    Demo demo(content, line.value(u"keep"_s));
    for (const Step& step : steps)
        demo.step(QString::fromUtf16(step.title), step.run);
    return demo.finish() ? 0 : 1;
}

} // namespace

Command demoCommand()
{
    Command command;
    command.name = u"demo"_s;
    command.summary = u"Live through a client's day with a content server of its own."_s;
    command.details =
        u"Everything is real: files, HTTP on this machine, processes. Ends with 0 only "
        "if every step\ndid what it should."_s;
    command.examples = QStringList {u"zglobal demo --keep day"_s};
    command.options = {
        {u"keep"_s, u"use this empty folder as the client's and keep it"_s, u"DIR"_s},
        CommandLine::contentOption(),
        CommandLine::verboseOption()};
    command.run = &run;
    return command;
}
