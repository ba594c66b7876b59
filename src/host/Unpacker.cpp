#include "host/Unpacker.h"

#include "host/MoveIn.h"
#include "host/ZGlobalConfig.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>

#include <archive.h>
#include <archive_entry.h>
#include <clocale>
#include <memory>
#ifdef Q_OS_MACOS
#include <xlocale.h>
#endif

namespace {

constexpr int blockBytes = 64 * 1024;
constexpr int lockWaitMs = 60 * 1000;
constexpr int lockStaleMs = 10 * 60 * 1000;

struct ReadFree {
    void operator()(archive* source) const { archive_read_free(source); }
};

/** Outside Windows the archive library passes names through the thread's locale, which loses what
 *  the locale cannot say. */
class Utf8Names {
public:
    Utf8Names()
    {
#ifndef Q_OS_WIN
        for (const char* name : {"C.UTF-8", "en_US.UTF-8", "UTF-8"}) {
            m_utf8 = newlocale(LC_CTYPE_MASK, name, nullptr);
            if (m_utf8 != nullptr)
                break;
        }
        if (m_utf8 != nullptr)
            m_previous = uselocale(m_utf8);
#endif
    }

    ~Utf8Names()
    {
#ifndef Q_OS_WIN
        if (m_utf8 != nullptr) {
            uselocale(m_previous);
            freelocale(m_utf8);
        }
#endif
    }

    Q_DISABLE_COPY(Utf8Names)

private:
#ifndef Q_OS_WIN
    locale_t m_utf8 = nullptr;
    locale_t m_previous = nullptr;
#endif
};

QString errorOf(archive* source)
{
    const char* text = archive_error_string(source);
    return text == nullptr ? QStringLiteral("damaged archive") : QString::fromLocal8Bit(text);
}

int openArchive(archive* source, const QString& path)
{
#ifdef Q_OS_WIN
    const QString native = QDir::toNativeSeparators(path);
    return archive_read_open_filename_w(source, native.toStdWString().c_str(), blockBytes);
#else
    return archive_read_open_filename(source, QFile::encodeName(path).constData(), blockBytes);
#endif
}

bool isHardLink(archive_entry* entry)
{
    return archive_entry_hardlink(entry) != nullptr || archive_entry_hardlink_utf8(entry) != nullptr
        || archive_entry_hardlink_w(entry) != nullptr;
}

void removeStaging(const QString& path)
{
    const QFileInfo info(path);
    if (info.isDir() && !info.isSymLink() && !info.isJunction())
        QDir(path).removeRecursively();
    else
        QFile::remove(path);
}

} // namespace

Unpacker::Unpacker(const QString& path)
    : m_path(QFileInfo(path).absoluteFilePath())
    , m_folder(QFileInfo(path).absolutePath())
    , m_names(QFileInfo(path).fileName())
{
    // A digest, since the archive's name may be as long as names can be.
    const QByteArray digest =
        QCryptographicHash::hash(QFileInfo(path).fileName().toUtf8(), QCryptographicHash::Md5)
            .toHex();
    m_staging = m_folder + QLatin1Char('/') + EntryNames::ownPrefix() + QLatin1String(digest);
}

QString Unpacker::unpack(bool overwrite)
{
    const QFileInfo archiveFile(m_path);
    if (!archiveFile.isFile())
        return QStringLiteral("no such file");
    m_archiveBytes = archiveFile.size();

    QLockFile lock(m_staging + QStringLiteral(".lock"));
    lock.setStaleLockTime(lockStaleMs);
    if (!lock.tryLock(lockWaitMs))
        return QStringLiteral("the folder cannot be written or another run does not end");
    removeStaging(m_staging);
    if (!QDir().mkdir(m_staging))
        return QStringLiteral("cannot make a folder to unpack in");

    const QString fresh = m_staging + QStringLiteral("/new");
    const QString replaced = m_staging + QStringLiteral("/old");
    QString error;
    if (!QDir().mkdir(fresh) || !QDir().mkdir(replaced))
        error = QStringLiteral("cannot make a folder to unpack in");
    if (error.isEmpty())
        error = extractAll();
    if (error.isEmpty())
        error =
            MoveIn(fresh, replaced, m_folder).run(m_names.folders(), m_names.files(), overwrite);
    removeStaging(m_staging);
    return error;
}

QString Unpacker::extractAll()
{
    const std::unique_ptr<archive, ReadFree> source(archive_read_new());
    archive_read_support_filter_gzip(source.get());
    archive_read_support_format_zip(source.get());
    archive_read_support_format_tar(source.get());
    {
        const Utf8Names utf8;
        archive_read_set_options(source.get(), "hdrcharset=UTF-8");
    }
    if (openArchive(source.get(), m_path) != ARCHIVE_OK)
        return errorOf(source.get());
    const QString error = extractEntries(source.get());
    if (error.isEmpty() && m_names.files().isEmpty())
        return QStringLiteral("no file in the archive");
    return error;
}

QString Unpacker::extractEntries(archive* source)
{
    for (;;) {
        archive_entry* entry = nullptr;
        QByteArray name;
        {
            const Utf8Names utf8;
            const int status = archive_read_next_header(source, &entry);
            if (status == ARCHIVE_EOF)
                return {};
            if (status != ARCHIVE_OK)
                return errorOf(source);
            name = archive_entry_pathname_utf8(entry);
        }
        const QString error = extractEntry(source, entry, name);
        if (!error.isEmpty())
            return QStringLiteral("\"%1\" %2").arg(QString::fromUtf8(name), error);
    }
}

QString Unpacker::extractEntry(archive* source, archive_entry* entry, const QByteArray& name)
{
    const bool folder = archive_entry_filetype(entry) == AE_IFDIR;
    if ((!folder && archive_entry_filetype(entry) != AE_IFREG) || isHardLink(entry))
        return QStringLiteral("is neither a file nor a folder");
    // The bytes of such an entry would be unpacked uncounted when it is skipped.
    if (folder && archive_entry_size(entry) > 0)
        return QStringLiteral("is a folder with content of its own");
    const QString text = QString::fromUtf8(name);
    if (text.toUtf8() != name)
        return QStringLiteral("is not UTF-8");

    QString path;
    const QString error = m_names.add(text, folder, path);
    if (!error.isEmpty())
        return error;
    const QString place = m_staging + QStringLiteral("/new/") + path;
    const QString parent = folder ? place : QFileInfo(place).path();
    if (!QDir().mkpath(parent))
        return QStringLiteral("needs a folder that cannot be made");
    return folder ? QString() : writeFile(source, place);
}

QString Unpacker::writeFile(archive* source, const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly))
        return QStringLiteral("cannot be written: %1").arg(file.errorString());
    QByteArray block(blockBytes, Qt::Uninitialized);
    for (;;) {
        const auto bytes = archive_read_data(source, block.data(), blockBytes);
        if (bytes < 0)
            return QStringLiteral("cannot be read: %1").arg(errorOf(source));
        if (bytes == 0)
            break;
        const QString error = countBytes(bytes);
        if (!error.isEmpty())
            return error;
        if (file.write(block.constData(), bytes) != bytes)
            return QStringLiteral("cannot be written: %1").arg(file.errorString());
    }
    if (!file.flush())
        return QStringLiteral("cannot be written: %1").arg(file.errorString());
    return {};
}

QString Unpacker::countBytes(qint64 bytes)
{
    m_unpackedBytes += bytes;
    if (m_unpackedBytes > ZGlobalConfig::maxUnpackedBytes)
        return QStringLiteral("goes beyond %1 unpacked bytes").arg(ZGlobalConfig::maxUnpackedBytes);
    if (m_unpackedBytes > ZGlobalConfig::freeUnpackedBytes
        && m_unpackedBytes / ZGlobalConfig::maxUnpackRatio >= m_archiveBytes)
        return QStringLiteral("goes beyond %1 times the archive's size")
            .arg(ZGlobalConfig::maxUnpackRatio);
    return {};
}
