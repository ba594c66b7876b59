#include "datatable/VersionFile.h"
#include "fuzz/Fuzz.h"

/** The input is a "common.ini" that other programs write in as well. */
ZGLOBAL_FUZZER
{
    const QStringList keys {QStringLiteral("CS_GiftList"), QStringLiteral("Doutu")};
    const VersionFile::Versions versions {{keys.first(), 57}, {keys.last(), 0}};
    const QByteArray edited = VersionFile::edit(bytes, versions);
    const QHash<QString, int> read = VersionFile::parse(edited, keys);
    if (read.value(keys.first(), -1) != 57 || read.value(keys.last(), -1) != 0) {
        require(bytes.contains('"'), "what is added is read, but behind an open quote");
        return; // this is not written
    }
    require(VersionFile::edit(edited, versions) == edited, "what is there is not added again");
    int at = 0;
    const int mark = bytes.startsWith("\xEF\xBB\xBF") ? 3 : 0;
    for (const QByteArray& line : bytes.mid(mark).replace('\r', '\n').split('\n')) {
        if (line.contains("CS_GiftList") || line.contains("Doutu"))
            continue;
        at = edited.indexOf(line.trimmed(), at);
        require(at >= 0, "lines of others come through in their order");
        at += line.trimmed().size();
    }
}
