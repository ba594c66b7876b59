#pragma once

#include <QString>

/**
 * Where the client keeps its files, relative to the working directory.
 *
 * Some end in a slash and some do not, and what is joined to them brings a slash of its own: the
 * doubled ones are part of the names under which existing caches are found.
 */
namespace CacheFolders {

inline QString tables()
{
    return QStringLiteral("res/dataTable/");
}
inline QString screens()
{
    return QStringLiteral("res/screen/");
}
inline QString images()
{
    return QStringLiteral("res/images/");
}
inline QString skins()
{
    return QStringLiteral("res/skin/");
}
inline QString logos()
{
    return QStringLiteral("res/logo/");
}
inline QString tabIcons()
{
    return QStringLiteral("res/gift/tabBgImg/");
}
inline QString animations()
{
    return QStringLiteral("res/animation/");
}
inline QString flashes()
{
    return QStringLiteral("res/flash");
}
inline QString extendedFlashes()
{
    return QStringLiteral("res/flashext");
}

} // namespace CacheFolders
