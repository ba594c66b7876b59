#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

/** What the examples publish and an update brings. */
namespace Published {

/** Path below the content's folder of what tells the tables' versions. */
QString versionsFile();
/** The same of every table of the catalogue, in its order. */
QStringList tableFiles();

/** The bytes of a file; throws std::runtime_error when it cannot be read. */
QByteArray bytesOf(const QString& file);

/** The bytes as "gzip -9" has them; throws std::runtime_error when there is no memory for it. */
QByteArray gzip(const QByteArray& bytes);

} // namespace Published
