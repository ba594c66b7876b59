#include "file/FileNames.h"
#include "fuzz/Fuzz.h"
#include "host/EntryNames.h"

#include <QSet>

/** The lines of the input are the entries' names. */
ZGLOBAL_FUZZER
{
    EntryNames names(QStringLiteral("abc_12"));
    const QList<QByteArray> lines = bytes.split('\n');
    for (const QByteArray& line : lines) {
        const bool folder = line.endsWith('/');
        QString path;
        if (!names.add(QString::fromUtf8(line), folder, path).isEmpty() || path.isEmpty())
            continue;
        require(FileNames::staysBelow(QStringLiteral("in/") + path, QStringLiteral("in/")),
                "a name that is taken stays in the folder");
    }
    const QStringList files = names.files();
    QSet<QString> keys;
    for (const QString& path : files + names.folders()) {
        keys.insert(path.toLower());
        const int slash = path.lastIndexOf(QLatin1Char('/'));
        require(slash < 0 || names.folders().contains(path.left(slash)), "its folder is known");
    }
    require(keys.size() == files.size() + names.folders().size(), "no two names for one place");
    const QString description = QStringLiteral("abc.flajson");
    require(!files.contains(description) || files.last() == description, "the description is last");
}
