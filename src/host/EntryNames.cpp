#include "host/EntryNames.h"

#include "file/FileNames.h"
#include "host/HostLimits.h"

#include <QFile>

#include <algorithm>

namespace {

constexpr int maxNameLength = 1000;

/** Equal for names that some file system takes for the same. */
QString folded(const QString& name)
{
    return name.normalized(QString::NormalizationForm_C)
        .toCaseFolded()
        .normalized(QString::NormalizationForm_C);
}

/** Whether the system's own encoding of file names holds this one. */
bool canBeStored(const QString& name)
{
#ifdef Q_OS_UNIX
    const QString stored = QFile::decodeName(QFile::encodeName(name));
    return folded(stored) == folded(name);
#else
    Q_UNUSED(name)
    return true;
#endif
}

QString partError(const QString& part)
{
    if (part.isEmpty())
        return QStringLiteral("has an empty part");
    QString fault = FileNames::fault(part);
    if (fault.isEmpty() && !canBeStored(part))
        return QStringLiteral("cannot be written in this system's encoding of file names");
    return fault;
}

} // namespace

EntryNames::EntryNames(const QString& archiveName)
    : m_archive(folded(archiveName))
{
}

QString EntryNames::add(const QString& name, bool folder, QString& path)
{
    if (name.isEmpty() || name.size() > maxNameLength)
        return QStringLiteral("is empty or longer than %1 characters").arg(maxNameLength);
    if (name.startsWith(QLatin1Char('/')))
        return QStringLiteral("is absolute");
    QStringList parts = name.split(QLatin1Char('/'));
    if (folder && parts.last().isEmpty())
        parts.removeLast();
    parts.removeAll(QStringLiteral("."));
    path.clear();
    for (int i = 0; i < parts.size(); ++i) {
        QString error = partError(parts.at(i));
        if (error.isEmpty()) {
            path += (i == 0 ? QString() : QStringLiteral("/")) + parts.at(i);
            const bool last = i == parts.size() - 1;
            error = take(path, folder || !last, last);
        }
        if (!error.isEmpty())
            return error;
    }
    return path.isEmpty() && !folder ? QStringLiteral("is no file name") : QString();
}

QStringList EntryNames::files() const
{
    const QString name = m_archive.left(m_archive.lastIndexOf(QLatin1Char('_')));
    const QString suffix = QStringLiteral(".flajson");
    const auto rank = [&](const QString& file) {
        const int depth = file.count(QLatin1Char('/'));
        if (depth > 0 || !file.endsWith(suffix, Qt::CaseInsensitive))
            return -depth;
        return folded(file) == name + suffix ? 2 : 1;
    };
    QStringList files = m_files;
    std::stable_sort(files.begin(), files.end(),
                     [&](const QString& a, const QString& b) { return rank(a) < rank(b); });
    return files;
}

QString EntryNames::ownPrefix()
{
    return QStringLiteral(".unpack-");
}

QString EntryNames::take(const QString& path, bool folder, bool last)
{
    const QString key = folded(path);
    if (key == m_archive || key.startsWith(ownPrefix()))
        return QStringLiteral("is taken by the archive itself");
    const auto known = m_taken.constFind(key);
    if (known != m_taken.constEnd()) {
        if (known.value() != path)
            return QStringLiteral("differs only in letter case from \"%1\"").arg(known.value());
        if (!m_isFolder.value(path) || !folder)
            return last ? QStringLiteral("occurs twice") : QStringLiteral("lies below a file");
        return {};
    }
    if (m_taken.size() >= HostLimits::maxArchiveEntries)
        return QStringLiteral("is one entry more than the %1 allowed")
            .arg(HostLimits::maxArchiveEntries);
    m_taken.insert(key, path);
    m_isFolder.insert(path, folder);
    (folder ? m_folders : m_files).append(path);
    return {};
}
