#pragma once

#include <QByteArray>
#include <QString>

QT_BEGIN_NAMESPACE
class QFile;
QT_END_NAMESPACE

/**
 * Files that are there whole or not at all, whatever fails: a full disk, a refused call, a kill, a
 * loss of power. Every call down to the close is checked, which QSaveFile of Qt 5 leaves out.
 *
 * All operations answer why they failed, or an empty text. Any thread, any number of processes.
 */
namespace WholeFile {

/**
 * Afterwards path holds exactly these bytes, or, on failure, what it held before; the answer names
 * path and the system's cause. The bytes get there through a temporary file beside path, which is
 * gone afterwards; only a kill leaves it. A link at path is replaced itself, its target stays. A
 * folder at path or a file that may not be written is a failure.
 */
QString write(const QString& path, const QByteArray& bytes);

/** Begins the names of the temporary files of write(). */
QString temporaryPrefix();

/**
 * The steps of write(), for callers whose files have names and steps of their own;
 * they answer the bare cause.
 *
 * writeAll: the bytes into a file that is open, Unbuffered, and which is closed afterwards in any
 * case; on success they are on the disk. What to do with a file that got a part of them is up to
 * the caller.
 *
 * writeBlock: some of the bytes; finish: checks what was written so far and closes.
 *
 * replace: gives from the name to, in one step, in place of a file or link of that name. Both lie
 * on one volume. On failure both are as they were.
 */
QString writeAll(QFile& file, const QByteArray& bytes);
QString writeBlock(QFile& file, const char* bytes, qint64 count);
QString finish(QFile& file);
QString replace(const QString& from, const QString& to);

} // namespace WholeFile
