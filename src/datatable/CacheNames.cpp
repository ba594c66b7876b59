#include "datatable/CacheNames.h"

#include "datatable/CacheFolders.h"

#include <QCryptographicHash>

QString CacheNames::ofAddress(const QString& address)
{
    const QByteArray digest = QCryptographicHash::hash(address.toUtf8(), QCryptographicHash::Md5);
    return QString::fromLatin1(digest.toHex()).toUpper();
}

QString CacheNames::imagePath(const QString& address)
{
    if (address.isEmpty())
        return {};
    return CacheFolders::images() + ofAddress(address);
}

QString CacheNames::withoutExtension(const QString& fileName)
{
    const int dot = fileName.indexOf(QLatin1Char('.'));
    return dot > 0 ? fileName.left(dot) : fileName;
}

CacheNames::VersionedName CacheNames::VersionedName::split(const QString& folderName)
{
    const int separator = folderName.lastIndexOf(QLatin1Char('_'));
    if (separator < 1 || separator >= folderName.size() - 1)
        return {};
    return {folderName.left(separator), folderName.mid(separator + 1)};
}

QString CacheNames::VersionedName::whole() const
{
    return QStringLiteral("%1_%2").arg(name, version);
}

QString CacheNames::VersionedName::in(const QString& folder) const
{
    return QStringLiteral("%1/%2_%3").arg(folder, name, version);
}
