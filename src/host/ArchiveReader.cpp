#include "host/ArchiveReader.h"

#include <QDir>
#include <QFile>

#include <archive.h>
#include <archive_entry.h>
#include <clocale>
#ifdef Q_OS_MACOS
#include <xlocale.h>
#endif

namespace {

constexpr size_t blockBytes = 65536;

bool isHardLink(archive_entry* entry)
{
    return archive_entry_hardlink(entry) != nullptr || archive_entry_hardlink_utf8(entry) != nullptr
        || archive_entry_hardlink_w(entry) != nullptr;
}

ArchiveReader::Kind kindOf(archive_entry* entry)
{
    if (isHardLink(entry))
        return ArchiveReader::Kind::Other;
    switch (archive_entry_filetype(entry)) {
    case AE_IFREG:
        return ArchiveReader::Kind::File;
    case AE_IFDIR:
        return ArchiveReader::Kind::Folder;
    default:
        return ArchiveReader::Kind::Other;
    }
}

} // namespace

#ifdef Q_OS_WIN
class ArchiveReader::Utf8Locale
{
public:
    struct Scope
    {
        explicit Scope(const Utf8Locale&) { }
    };
};
#else
/** The archive library passes names through the thread's locale, and loses what that cannot say. */
class ArchiveReader::Utf8Locale
{
public:
    Utf8Locale()
    {
        for (const char* name : {"C.UTF-8", "en_US.UTF-8", "UTF-8"}) {
            m_locale = newlocale(LC_CTYPE_MASK, name, nullptr);
            if (m_locale != nullptr)
                break;
        }
    }

    ~Utf8Locale()
    {
        if (m_locale != nullptr)
            freelocale(m_locale);
    }

    Q_DISABLE_COPY(Utf8Locale)

    class Scope
    {
    public:
        explicit Scope(const Utf8Locale& locale)
            : m_previous(uselocale(locale.m_locale))
        {
        }
        ~Scope() { uselocale(m_previous); }
        Q_DISABLE_COPY(Scope)

    private:
        locale_t m_previous;
    };

private:
    locale_t m_locale = nullptr;
};
#endif

ArchiveReader::ArchiveReader()
    : m_source(archive_read_new())
    , m_locale(std::make_unique<Utf8Locale>())
{
    const Utf8Locale::Scope scope(*m_locale);
    archive_read_support_filter_gzip(m_source);
    archive_read_support_format_zip(m_source);
    archive_read_support_format_tar(m_source);
    archive_read_set_options(m_source, "hdrcharset=UTF-8");
}

ArchiveReader::~ArchiveReader()
{
    archive_read_free(m_source);
}

bool ArchiveReader::open(const QString& path)
{
#ifdef Q_OS_WIN
    const std::wstring native = QDir::toNativeSeparators(path).toStdWString();
    const int status = archive_read_open_filename_w(m_source, native.c_str(), blockBytes);
#else
    const QByteArray native = QFile::encodeName(path);
    const int status = archive_read_open_filename(m_source, native.constData(), blockBytes);
#endif
    return status == ARCHIVE_OK || fail();
}

bool ArchiveReader::next(Entry& entry)
{
    const Utf8Locale::Scope scope(*m_locale);
    archive_entry* head = nullptr;
    const int status = archive_read_next_header(m_source, &head);
    if (status == ARCHIVE_EOF)
        return false;
    if (status != ARCHIVE_OK)
        return fail();
    entry.name = archive_entry_pathname_utf8(head);
    entry.kind = kindOf(head);
    entry.hasContent = archive_entry_size(head) > 0;
    return true;
}

qint64 ArchiveReader::read(char* block, qint64 max)
{
    const qint64 bytes = archive_read_data(m_source, block, size_t(max));
    if (bytes < 0)
        fail();
    return bytes;
}

bool ArchiveReader::fail()
{
    const char* text = archive_error_string(m_source);
    m_error = text == nullptr ? QStringLiteral("damaged archive") : QString::fromLocal8Bit(text);
    return false;
}
