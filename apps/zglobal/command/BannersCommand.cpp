#include "command/Banners.h"
#include "command/Commands.h"
#include "command/Session.h"
#include "console/Failure.h"
#include "console/Json.h"
#include "console/Literals.h"
#include "console/Terminal.h"
#include "console/Wait.h"

namespace {

void printList(const QString& heading, bool isNew)
{
    const QString fault = Banners::loadFault(isNew);
    Terminal::print(heading + (fault.isEmpty() ? QString() : u" not loaded"_s));
    if (fault.isEmpty())
        Banners::asTable(isNew).print();
}

int runBanners(const QCommandLineParser& line)
{
    Session session(line);
    session.load();
    auto bar = session.progress();
    const auto pictures = settled(session->fetchPictures());
    settled(session->quiet()); // the pages of the web service
    bar.reset();
    if (CommandLine::wantsJson(line)) {
        Json::print(QJsonObject {{u"banners"_s, Banners::asJson(false)},
                                 {u"newBanners"_s, Banners::asJson(true)}});
    } else {
        printList(u"by weight:"_s, false);
        printList(u"that fold and unfold, in table order:"_s, true);
    }
    for (const char* table : {"CS_BannerConfig", "CS_BannerConfigNew"})
        Session::require(QString::fromLatin1(table));
    if (!pictures.ok)
        throw Failure {pictures.error};
    return 0;
}

int runOpen(const QCommandLineParser& line)
{
    Session session(line);
    session.load();
    settled(session->quiet()); // the pages of the web service
    const QString address = line.positionalArguments().constFirst();
    const Banners::Verdict verdict = Banners::verdictOn(address);
    if (CommandLine::wantsJson(line))
        Json::print(QJsonObject {{u"address"_s, address},
                                 {u"embedded"_s, verdict.embedded},
                                 {u"page"_s, verdict.page},
                                 {u"listedBy"_s, verdict.listedBy}});
    else
        Terminal::print(Banners::told(verdict));
    return 0;
}

} // namespace

Command bannersCommand()
{
    Command command;
    command.name = u"banners"_s;
    command.summary = u"Show the banners in their order, and fetch their pictures."_s;
    command.examples = QStringList {u"zglobal banners"_s};
    command.options = Session::options() + QList {CommandLine::jsonOption()};
    command.run = &runBanners;
    return command;
}

Command openCommand()
{
    Command command;
    command.name = u"open"_s;
    command.arguments = u"URL"_s;
    command.fewest = command.most = 1;
    command.summary = u"Tell whether an address opens in the embedded browser, and why."_s;
    command.details = u"The pages come from the banner tables and from the web service, which is "
                      "asked when it can\nbe reached."_s;
    command.examples = QStringList {u"zglobal open https://h5.example.com/recharge/first"_s};
    command.options = Session::options() + QList {CommandLine::jsonOption()};
    command.run = &runOpen;
    return command;
}
