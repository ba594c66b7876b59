#pragma once

#include <QByteArray>
#include <QString>

#include <memory>

struct archive;
struct archive_entry;

/** Goes once through a zip or tar archive, gzipped or not. One thread at a time. */
class ArchiveReader
{
public:
    enum class Kind { File, Folder, Other };

    struct Entry
    {
        QByteArray name; ///< UTF-8, unless the archive was made without regard to it
        Kind kind = Kind::Other;
        bool hasContent = false;
    };

    ArchiveReader();
    ~ArchiveReader();
    Q_DISABLE_COPY(ArchiveReader)

    /** False when it is no archive; then, as with all of these, error() tells why. */
    bool open(const QString& path);

    /** False after the last entry, with no error(), or at damage. */
    bool next(Entry& entry);

    /** Up to max bytes of the entry's content, 0 at its end, negative at damage. */
    qint64 read(char* block, qint64 max);

    QString error() const { return m_error; }

private:
    class Utf8Locale;

    bool fail();

    archive* m_source;
    std::unique_ptr<Utf8Locale> m_locale;
    QString m_error;
};
