#include "host/MoveIn.h"

#include "file/WholeFile.h"

#include <QDir>
#include <QFileInfo>

namespace {

bool isLink(const QFileInfo& info)
{
    return info.isSymLink() || info.isJunction();
}

} // namespace

MoveIn::MoveIn(const QString& from, const QString& aside, const QString& to)
    : m_from(from + QLatin1Char('/'))
    , m_aside(aside + QLatin1Char('/'))
    , m_to(to + QLatin1Char('/'))
{
}

QString MoveIn::run(const QStringList& folders, const QStringList& files, bool overwrite)
{
    QString error = checkPlaces(folders, files, overwrite);
    if (!error.isEmpty())
        return error;
    error = moveAll(folders, files);
    if (!error.isEmpty() && !undo())
        error += QStringLiteral(", and not everything could be put back");
    return error;
}

QString MoveIn::checkPlaces(const QStringList& folders, const QStringList& files,
                            bool overwrite) const
{
    for (const QString& folder : folders) {
        const QFileInfo place(m_to + folder);
        if (isLink(place) || (place.exists() && !place.isDir()))
            return QStringLiteral("\"%1\" is in the way of a folder").arg(folder);
    }
    for (const QString& file : files) {
        const QFileInfo place(m_to + file);
        if (isLink(place) || place.isDir())
            return QStringLiteral("a link or folder is in the way of \"%1\"").arg(file);
        if (place.exists() && !overwrite)
            return QStringLiteral("\"%1\" exists already").arg(file);
    }
    return {};
}

QString MoveIn::moveAll(const QStringList& folders, const QStringList& files)
{
    for (const QString& folder : folders) {
        if (!makeFolder(m_to + folder) || !QDir().mkpath(m_aside + folder))
            return QStringLiteral("folder \"%1\" cannot be made").arg(folder);
    }
    for (auto file = files.crbegin(); file != files.crend(); ++file) {
        const QString cause =
            QFileInfo::exists(m_to + *file) ? move(m_to + *file, m_aside + *file) : QString();
        if (!cause.isEmpty())
            return QStringLiteral("\"%1\" cannot be replaced: %2").arg(*file, cause);
    }
    for (const QString& file : files) {
        const QString cause = move(m_from + file, m_to + file);
        if (!cause.isEmpty())
            return QStringLiteral("\"%1\" cannot be moved in: %2").arg(file, cause);
    }
    return {};
}

bool MoveIn::makeFolder(const QString& path)
{
    if (QFileInfo::exists(path))
        return true;
    m_made.append(path);
    return QDir().mkdir(path);
}

/** Not as QFile does it, which copies what cannot be renamed: a copy can end half-way. */
QString MoveIn::move(const QString& from, const QString& to)
{
    const QFileInfo place(to);
    if (place.exists() || isLink(place))
        return QStringLiteral("something has come to that place");
    QString cause = WholeFile::replace(from, to);
    if (cause.isEmpty())
        m_moved.append({from, to});
    return cause;
}

bool MoveIn::undo()
{
    // Stops at the first that fails: the last file of the replaced set may not return alone.
    for (auto done = m_moved.crbegin(); done != m_moved.crend(); ++done) {
        if (!WholeFile::replace(done->second, done->first).isEmpty())
            return false;
    }
    for (auto folder = m_made.crbegin(); folder != m_made.crend(); ++folder)
        QDir().rmdir(*folder);
    return true;
}
