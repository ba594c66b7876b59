#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

/**
 * The names of an archive's entries, taken one by one and refused where unpacking them would reach
 * outside the folder or depend on the system: what one file system keeps apart another may not.
 */
class EntryNames
{
public:
    /** archiveName: the archive's own file name, whose place no entry may take. */
    explicit EntryNames(const QString& archiveName);

    /**
     * Why the name is refused, or an empty text; then path is where the entry goes, relative to the
     * folder, and empty for the folder itself.
     */
    QString add(const QString& name, bool folder, QString& path);

    /** Paths relative to the folder; every folder after the one that holds it. */
    const QStringList& folders() const { return m_folders; }

    /**
     * In the order in which they take their places: deeper ones first, those of one depth as in the
     * archive, but an animation's description (".flajson" in the top folder) after all others, and
     * last of all the one of the archive's own name without "_" and version.
     */
    QStringList files() const;

    /** Begins the names that the unpacking itself uses beside the archive. */
    static QString ownPrefix();

private:
    QString take(const QString& path, bool folder, bool last);

    QString m_archive;
    QHash<QString, QString> m_taken; // folded path to the path as first written
    QHash<QString, bool> m_isFolder; // path as first written
    QStringList m_folders;
    QStringList m_files;
};
