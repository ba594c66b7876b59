#pragma once

#include "host/ArchiveReader.h"
#include "host/EntryNames.h"

#include <QString>

/** One run of ZGlobalConfig::unZipFile. Any thread; one object for one run. */
class Unpacker
{
public:
    explicit Unpacker(const QString& path);

    /** Why nothing was unpacked, or an empty text. */
    QString unpack(bool overwrite);

private:
    QString extractAll();
    QString extractEntry(ArchiveReader& reader, const ArchiveReader::Entry& entry);
    QString writeFile(ArchiveReader& reader, const QString& path);
    QString countBytes(qint64 bytes);

    QString m_path;
    QString m_folder;
    QString m_staging;
    qint64 m_archiveBytes = 0;
    qint64 m_unpackedBytes = 0;
    EntryNames m_names;
};
