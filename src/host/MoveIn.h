#pragma once

#include <QPair>
#include <QString>
#include <QStringList>
#include <QVector>

/** Moves a set of files from one folder into another on the same volume, all or none. */
class MoveIn
{
public:
    /** aside: an empty folder on the same volume for the files that are replaced. */
    MoveIn(const QString& from, const QString& aside, const QString& to);

    /**
     * Why nothing was moved, or an empty text. The paths are relative, every folder after the one
     * that holds it. Files that are replaced are all moved away first, the last one before the
     * others; then the files are moved in, in their order. So the last file is never there without
     * the others of its set, whenever this ends.
     */
    QString run(const QStringList& folders, const QStringList& files, bool overwrite);

private:
    QString checkPlaces(const QStringList& folders, const QStringList& files, bool overwrite) const;
    QString moveAll(const QStringList& folders, const QStringList& files);
    bool makeFolder(const QString& path);
    QString move(const QString& from, const QString& to);
    bool undo();

    QString m_from;
    QString m_aside;
    QString m_to;
    QStringList m_made;
    QVector<QPair<QString, QString>> m_moved;
};
