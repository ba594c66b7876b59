#pragma once

#include <QString>

/** How cached files are named after what they hold. */
namespace CacheNames {

/** Upper-case hexadecimal MD5 of the address's UTF-8 bytes: 32 characters, no extension. */
QString ofAddress(const QString& address);

/** The picture's file in "res/images/"; empty for an empty address. */
QString imagePath(const QString& address);

/** A name without its extension: cut before the first "." unless that begins the name. */
QString withoutExtension(const QString& fileName);

/** A resource folder's name: what stands before and after its last "_". */
struct VersionedName
{
    QString name;
    QString version;

    /** Both are empty unless neither part would be. */
    static VersionedName split(const QString& folderName);
    bool isValid() const { return !name.isEmpty(); }

    /** The folder's name. */
    QString whole() const;
    /** Its path in a folder, with a slash between the two whatever the folder ends in. */
    QString in(const QString& folder) const;
};

} // namespace CacheNames
