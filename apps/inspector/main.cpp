#include "ZGlobalVersion.h"
#include "inspector/parts/Look.h"
#include "inspector/window/Language.h"
#include "inspector/window/MainWindow.h"
#include "inspector/window/PageList.h"
#include "inspector/window/Screenshots.h"
#include "signals/Termination.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QIcon>
#include <QUrl>

#include <cstdio>

namespace {

constexpr int usageError = 2;

QString option(const QCommandLineParser& line, const char* name)
{
    return line.value(QString::fromLatin1(name));
}

void addOptions(QCommandLineParser& line)
{
    using App = QCoreApplication;
    line.setApplicationDescription(
        App::translate("main",
                       "Shows what a client sees: tables, pictures, masks, caches, log.\n"
                       "Without options it serves itself the example content."));
    const QString server = App::translate("main", "base address of the content server");
    const QString data = App::translate("main", "the working folder; else one of its own, for now");
    const QString content = App::translate("main", "published content to serve to itself");
    const QString language =
        App::translate("main", "such as en or zh_CN; else that of the system, or English");
    const QString palette = App::translate("main", "light or dark; else that of the system");
    const QString page = App::translate("main", "the page to begin with, and what to show on it");
    line.addOptions({{QStringLiteral("server"), server, QStringLiteral("URL")},
                     {QStringLiteral("data"), data, QStringLiteral("DIR")},
                     {QStringLiteral("content"), content, QStringLiteral("DIR")},
                     {QStringLiteral("language"), language, QStringLiteral("NAME")},
                     {QStringLiteral("palette"), palette, QStringLiteral("NAME")},
                     {QStringLiteral("page"), page, QStringLiteral("NAME[:THING]")}});
    QCommandLineOption pictures(QStringLiteral("screenshots"), {}, QStringLiteral("DIR"));
    pictures.setFlags(QCommandLineOption::HiddenFromHelp);
    line.addOption(pictures);
    line.addHelpOption();
    line.addVersionOption();
}

/** What is asked for and cannot be had; puts the palette into force. */
QString faultOf(const QCommandLineParser& line)
{
    using App = QCoreApplication;
    const QStringList more = line.positionalArguments();
    if (!more.isEmpty())
        return App::translate("main", "Not an option: %1").arg(more.join(u' '));
    const QUrl server(option(line, "server"), QUrl::StrictMode);
    const bool isWeb =
        server.scheme() == QLatin1String("http") || server.scheme() == QLatin1String("https");
    if (line.isSet(QStringLiteral("server")) && (!isWeb || server.host().isEmpty()))
        return App::translate("main", "\"%1\" is not the address of a content server")
            .arg(option(line, "server"));
    const QString palette = option(line, "palette");
    if (!palette.isEmpty() && !Look::setPalette(palette))
        return App::translate("main", "There is no palette %1; known are light, dark").arg(palette);
    const QString page = option(line, "page").section(u':', 0, 0);
    QStringList pages;
    for (const PageEntry& entry : pageList())
        pages.append(QString::fromLatin1(entry.name));
    if (!page.isEmpty() && !pages.contains(page))
        return App::translate("main", "There is no page %1; known are %2")
            .arg(page, pages.join(QStringLiteral(", ")));
    return {};
}

/** What is asked for may come with the first update only. */
void begin(MainWindow& window, const QString& page, const QString& thing)
{
    window.show(page, thing);
    if (window.host().task().isEmpty())
        return;
    auto* once = new QObject(&window);
    QObject::connect(&window.host(), &ClientHost::sigTask, once,
                     [&window, once, page, thing](const QString& task) {
                         if (!task.isEmpty())
                             return;
                         once->deleteLater();
                         if (window.current()->objectName() == page)
                             window.show(page, thing);
                     });
}

int refuse(const QString& fault)
{
    std::fprintf(stderr, "%s\n", qPrintable(fault));
    return usageError;
}

} // namespace

int main(int argc, char* argv[])
{
#if QT_VERSION_MAJOR < 6
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
#endif
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(
        Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    const QApplication application(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("ZGlobal"));
    QCoreApplication::setApplicationName(QStringLiteral("zglobal-inspector"));
    QCoreApplication::setApplicationVersion(QStringLiteral(ZGLOBAL_VERSION_STR));
    QGuiApplication::setDesktopFileName(QStringLiteral("zglobal-inspector"));
    QGuiApplication::setWindowIcon(QIcon::fromTheme(QStringLiteral("zglobal-inspector")));

    QCommandLineParser first; // the help is to be in the language, too
    addOptions(first);
    first.parse(QCoreApplication::arguments());
    const bool takesPictures = first.isSet(QStringLiteral("screenshots"));
    const QString language = option(first, "language");
    if (!Language::use(language.isEmpty() && takesPictures ? QStringLiteral("en") : language))
        return refuse(
            QCoreApplication::translate("main", "There is no translation to %1; known are %2")
                .arg(language, Language::known().join(QStringLiteral(", "))));
    QCommandLineParser line;
    addOptions(line);
    const bool isParsed = line.parse(QCoreApplication::arguments());
    if (isParsed && (line.isSet(QStringLiteral("help")) || line.isSet(QStringLiteral("version"))))
        line.process(application); // which ends here
    const QString fault = isParsed ? faultOf(line) : line.errorText();
    if (!fault.isEmpty())
        return refuse(fault);

    if (takesPictures) { // before anything takes its size from how it looks
        Look::setPalette(QStringLiteral("light"));
        Look::setFontForPictures();
    }
    MainWindow window;
    if (takesPictures)
        Screenshots::take(window, QDir(option(line, "screenshots")).absolutePath());
    Termination::watch([&window] {
        window.close();
        QCoreApplication::quit();
    });
    window.show();
    window.host().open({option(line, "server"), option(line, "data"), option(line, "content")});
    const QString wanted = option(line, "page");
    if (!wanted.isEmpty())
        begin(window, wanted.section(u':', 0, 0), wanted.section(u':', 1));
    return QApplication::exec();
}
