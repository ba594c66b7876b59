#include "inspector/window/Language.h"

#include <QCoreApplication>
#include <QDir>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

namespace {

QString folder()
{
    return QStringLiteral(":/translations");
}

QString folderOfQt()
{
#if QT_VERSION_MAJOR < 6
    return QLibraryInfo::location(QLibraryInfo::TranslationsPath);
#else
    return QLibraryInfo::path(QLibraryInfo::TranslationsPath);
#endif
}

bool install(const QString& name, const QString& file, const QString& from)
{
    auto* translator = new QTranslator(QCoreApplication::instance());
    const bool loads = translator->load(QLocale(name), file, QStringLiteral("_"), from);
    if (loads)
        QCoreApplication::installTranslator(translator);
    else
        delete translator;
    return loads;
}

/** Whether there is such a language; English is what the sources are in. */
bool speak(const QString& name)
{
    if (QLocale(name).language() == QLocale::English)
        return true;
    if (!install(name, QStringLiteral("zglobal-inspector"), folder()))
        return false;
    install(name, QStringLiteral("qtbase"), folderOfQt());
    return true;
}

QString known()
{
    QStringList names {QStringLiteral("en")};
    const QStringList files = QDir(folder()).entryList();
    for (const QString& file : files)
        names.append(file.section(u'.', 0, 0).section(u'_', 1));
    return names.join(QStringLiteral(", "));
}

} // namespace

bool Language::use(const QString& name, QString* error)
{
    if (name.isEmpty()) {
        const QStringList wanted = QLocale::system().uiLanguages();
        for (const QString& each : wanted) {
            if (speak(each))
                break;
        }
        return true;
    }
    if (speak(name))
        return true;
    *error = QStringLiteral("There is no translation to %1; known are %2").arg(name, known());
    return false;
}
