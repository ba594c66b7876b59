#include "host/Unpacker.h"

#include "file/WholeFile.h"
#include "host/HostLimits.h"
#include "host/MoveIn.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QRegularExpression>
#include <QSet>

namespace {

constexpr int blockBytes = 64 * 1024;
constexpr int lockWaitMs = 60 * 1000;
constexpr int lockStaleMs = 10 * 60 * 1000;

void removeStaging(const QString& path)
{
    const QFileInfo info(path);
    if (info.isDir() && !info.isSymLink() && !info.isJunction())
        QDir(path).removeRecursively();
    else
        QFile::remove(path);
}

/** What dead runs left beside this one. A living run holds its lock. */
void sweep(const QString& folder, const QString& own)
{
    static const QRegularExpression runName(QLatin1Char('^')
                                            + QRegularExpression::escape(EntryNames::ownPrefix())
                                            + QStringLiteral("[0-9a-f]{32}(?=(\\.lock)?\\z)"));
    const QStringList names = QDir(folder).entryList({EntryNames::ownPrefix() + QLatin1Char('*')},
                                                     QDir::AllEntries | QDir::Hidden | QDir::System
                                                         | QDir::NoDotAndDotDot);
    QSet<QString> runs;
    for (const QString& name : names) {
        const QRegularExpressionMatch match = runName.match(name);
        if (match.hasMatch())
            runs.insert(match.captured());
    }
    runs.remove(QFileInfo(own).fileName());
    for (const QString& run : qAsConst(runs)) {
        const QString path = folder + QLatin1Char('/') + run;
        QLockFile lock(path + QStringLiteral(".lock"));
        lock.setStaleLockTime(lockStaleMs);
        if (lock.tryLock(0))
            removeStaging(path);
    }
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
    sweep(m_folder, m_staging);
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
    ArchiveReader reader;
    if (!reader.open(m_path))
        return reader.error();
    ArchiveReader::Entry entry;
    while (reader.next(entry)) {
        const QString error = extractEntry(reader, entry);
        if (!error.isEmpty())
            return QStringLiteral("\"%1\" %2").arg(QString::fromUtf8(entry.name), error);
    }
    if (reader.error().isEmpty() && m_names.files().isEmpty())
        return QStringLiteral("no file in the archive");
    return reader.error();
}

QString Unpacker::extractEntry(ArchiveReader& reader, const ArchiveReader::Entry& entry)
{
    const bool folder = entry.kind == ArchiveReader::Kind::Folder;
    if (entry.kind == ArchiveReader::Kind::Other)
        return QStringLiteral("is neither a file nor a folder");
    // The bytes of such an entry would be unpacked uncounted when it is skipped.
    if (folder && entry.hasContent)
        return QStringLiteral("is a folder with content of its own");
    const QString name = QString::fromUtf8(entry.name);
    if (name.toUtf8() != entry.name)
        return QStringLiteral("is not UTF-8");

    QString path;
    QString error = m_names.add(name, folder, path);
    if (!error.isEmpty())
        return error;
    const QString place = m_staging + QStringLiteral("/new/") + path;
    const QString parent = folder ? place : QFileInfo(place).path();
    if (!QDir().mkpath(parent))
        return QStringLiteral("needs a folder that cannot be made");
    return folder ? QString() : writeFile(reader, place);
}

QString Unpacker::writeFile(ArchiveReader& reader, const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered))
        return QStringLiteral("cannot be written: %1").arg(file.errorString());
    QByteArray block(blockBytes, Qt::Uninitialized);
    for (;;) {
        const qint64 bytes = reader.read(block.data(), blockBytes);
        if (bytes < 0)
            return QStringLiteral("cannot be read: %1").arg(reader.error());
        if (bytes == 0)
            break;
        QString error = countBytes(bytes);
        if (!error.isEmpty())
            return error;
        error = WholeFile::writeBlock(file, block.constData(), bytes);
        if (!error.isEmpty())
            return QStringLiteral("cannot be written: %1").arg(error);
    }
    const QString error = WholeFile::finish(file);
    return error.isEmpty() ? error : QStringLiteral("cannot be written: %1").arg(error);
}

QString Unpacker::countBytes(qint64 bytes)
{
    m_unpackedBytes += bytes;
    if (m_unpackedBytes > HostLimits::maxUnpackedBytes)
        return QStringLiteral("goes beyond %1 unpacked bytes").arg(HostLimits::maxUnpackedBytes);
    if (m_unpackedBytes > HostLimits::freeUnpackedBytes
        && m_unpackedBytes / HostLimits::maxUnpackRatio >= m_archiveBytes)
        return QStringLiteral("goes beyond %1 times the archive's size")
            .arg(HostLimits::maxUnpackRatio);
    return {};
}
