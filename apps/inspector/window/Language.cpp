#include "inspector/window/Language.h"

#include <QCoreApplication>
#include <QDir>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

#include <algorithm>

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

} // namespace

QStringList Language::known()
{
    QStringList names {QStringLiteral("en")};
    const QStringList files = QDir(folder()).entryList();
    for (const QString& file : files)
        names.append(file.section(u'.', 0, 0).section(u'_', 1));
    return names;
}

bool Language::use(const QString& name)
{
    if (!name.isEmpty())
        return speak(name);
    const QStringList wanted = QLocale::system().uiLanguages();
    static_cast<void>(std::any_of(wanted.begin(), wanted.end(), speak));
    return true;
}
