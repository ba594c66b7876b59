#pragma once

#include <QString>

/**
 * Names out of tables and archives that are to become files. The rules of all systems are taken
 * together, so that a name is good everywhere or nowhere.
 */
namespace FileNames {

/**
 * Why no file or folder of this name may be made, or an empty text. The name is a single one, so a
 * separator of any system is a fault, as is anything that leads out of the folder, that some system
 * does not store or stores under another name, or that some system takes for a device.
 */
QString fault(const QString& name);

/**
 * Whether a relative path such as "res/flash/abc_12/abc.flajson" leads to something below a folder
 * such as "res/", whatever the system; without a look at the disk. Doubled slashes do no harm.
 */
bool staysBelow(const QString& path, const QString& folder);

} // namespace FileNames
