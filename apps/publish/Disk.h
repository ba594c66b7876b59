#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

/**
 * Files of a published tree: on the disk before anything leads to them, and write-protected, since
 * a file may lie in several releases at once. All operations answer why they failed, naming the
 * file, or an empty text.
 */
namespace Disk {

QString read(const QString& path, QByteArray& bytes);

/** A new file that says it was changed at that moment. */
QString write(const QString& path, const QByteArray& bytes, const QDateTime& changed);
QString copy(const QString& from, const QString& to, const QDateTime& changed);

/** The same file under a further name; where a volume knows no such thing, a copy. */
QString link(const QString& from, const QString& to);

/** A link to the file for whoever only reads; a copy on systems without. */
QString imitate(const QString& from, const QString& to);

/** A new folder, with those on its way. */
QString makeFolder(const QString& path);

/** What is below a folder is on the disk; of a folder's names only, they are. */
QString settle(const QString& folder);
QString settleNames(const QString& folder);

QString rename(const QString& from, const QString& to);

/** Makes path lead to the target, a path from its folder, in one step: at any moment it leads there
 *  or where it led before. Fails on systems without such links. */
QString lead(const QString& path, const QString& target);

/** Whether both hold the same bytes. */
bool areSame(const QString& left, const QString& right);

} // namespace Disk
