#pragma once

#include <QByteArray>
#include <QHash>
#include <QPair>
#include <QString>
#include <QStringList>
#include <QVector>

/**
 * The section "TableVersion" of an INI file that other programs keep keys in as well: one line
 * "key=version" for every table.
 *
 * Read is what QSettings reads there: escapes, quotes, lines continued by a backslash, comments
 * behind ";", several sections of the name, of which the last line of a key counts; letter case
 * matters except on Windows. The code page is of no interest, the keys being ASCII letters, digits
 * and "_".
 *
 * Written is only what has to change: the value on every line of a key, its blanks and its comment
 * kept; a missing key behind the section's last line; a missing section at the end of the file.
 * Everything else comes through byte for byte, in its order, and stays as readable as it was. A
 * value of ours that runs on over further lines is cut at its first: what follows may be anybody's.
 * Behind a quote that nothing closes QSettings reads no more, so what is added goes before it.
 *
 * Nothing here waits for anybody or keeps a lock; of two processes that write at the same time the
 * last one wins, and whoever reads finds a whole file. Any thread.
 */
namespace VersionFile {

/** Keys with their versions, which are not negative, in the order in which new ones are added. */
using Versions = QVector<QPair<QString, int>>;

/**
 * The versions of those of the keys that have one. A text that is no integer, or one beyond an int,
 * counts as 0; a negative version is none.
 */
QHash<QString, int> parse(const QByteArray& bytes, const QStringList& keys);

/**
 * The bytes with these versions in them; new lines end as the file's last does, or as is usual on
 * this system.
 */
QByteArray edit(const QByteArray& bytes, const Versions& versions);

/** parse() for a file. One that is missing or cannot be read has no versions. */
QHash<QString, int> read(const QString& path, const QStringList& keys);

/**
 * Brings the versions into a file, whole or not at all; one that holds them already is not written.
 * What is at the end of a link is written, the link stays.
 *
 * Answers why the file stays as it was, naming it, or an empty text. It stays as well when it is
 * there and cannot be read, is no file or has more than 16 MiB, or when a quote that nothing closes
 * leaves no place where QSettings would find the versions.
 */
QString write(const QString& path, const Versions& versions);

} // namespace VersionFile
