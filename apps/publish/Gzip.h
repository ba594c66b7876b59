#pragma once

#include <QByteArray>
#include <QString>

/** The compressed files beside those that they are made of. */
namespace Gzip {

/** The path of the compressed file. */
QString twinOf(const QString& path);

/** Whether a server is to have a compressed file; the path is from the content folder. Pictures and
 *  archives are compressed already. */
bool isWanted(const QString& path);

/** The same bytes compress to the same; empty where they would not become fewer. */
QByteArray compressed(const QByteArray& bytes);

} // namespace Gzip
