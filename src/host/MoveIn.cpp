#include "host/MoveIn.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

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

QString MoveIn::run(const QStringList& folders, QStringList files, bool overwrite)
{
    std::stable_sort(files.begin(), files.end(), [](const QString& a, const QString& b) {
        return a.count(QLatin1Char('/')) > b.count(QLatin1Char('/'));
    });
    QString error = checkPlaces(folders, files, overwrite);
    if (!error.isEmpty())
        return error;
    error = moveAll(folders, files);
    if (!error.isEmpty())
        undo();
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
        if (QFileInfo::exists(m_to + *file) && !move(m_to + *file, m_aside + *file))
            return QStringLiteral("\"%1\" cannot be replaced").arg(*file);
    }
    for (const QString& file : files) {
        if (!move(m_from + file, m_to + file))
            return QStringLiteral("\"%1\" cannot be moved in").arg(file);
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

bool MoveIn::move(const QString& from, const QString& to)
{
    if (!QFile::rename(from, to))
        return false;
    m_moved.append({from, to});
    return true;
}

void MoveIn::undo()
{
    for (auto done = m_moved.crbegin(); done != m_moved.crend(); ++done)
        QFile::rename(done->second, done->first);
    for (auto folder = m_made.crbegin(); folder != m_made.crend(); ++folder)
        QDir().rmdir(*folder);
}
