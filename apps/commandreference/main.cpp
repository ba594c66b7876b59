#include "Pages.h"
#include "ZGlobalVersion.h"
#include "command/Commands.h"
#include "console/Literals.h"

#include <QCoreApplication>
#include <QFile>
#include <QHash>

#include <cstdio>

// commandreference manual|bash|zsh PATTERN FILE: writes the program's manual page or a shell's
// completion.
int main(int argc, char** argv)
{
    const QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationVersion(QStringLiteral(ZGLOBAL_VERSION_STR));
    const QHash<QString, QString (*)(QString, const QList<Command>&)> pages {
        {u"manual"_s, &Pages::manual},
        {u"bash"_s, &Pages::bashCompletion},
        {u"zsh"_s, &Pages::zshCompletion}};
    const QStringList arguments = QCoreApplication::arguments();
    const auto page = pages.value(arguments.value(1));
    QFile pattern(arguments.value(2));
    QFile file(arguments.value(3));
    if (page == nullptr || !pattern.open(QIODevice::ReadOnly) || !file.open(QIODevice::WriteOnly)) {
        std::fputs("commandreference: no such page, or a file cannot be read or written\n", stderr);
        return 1;
    }
    const QByteArray text = page(QString::fromUtf8(pattern.readAll()), allCommands()).toUtf8();
    return file.write(text) == text.size() && file.flush() ? 0 : 1;
}
