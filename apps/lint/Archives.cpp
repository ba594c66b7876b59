#include "lint/Archives.h"

#include "host/ZGlobalConfig.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

namespace {

Archives::Verdict unpacked(const QByteArray& bytes, const QString& name, const QString& description)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(name);
    QFile copy(path);
    if (!copy.open(QIODevice::WriteOnly) || copy.write(bytes) != bytes.size() || !copy.flush())
        return {copy.errorString(), false};
    copy.close();
    QString error;
    if (!ZGlobalConfig::unZipFile(path, true, &error))
        return {error.mid(error.startsWith(path) ? path.size() + 2 : 0), false};
    return {QString(), QFileInfo(folder.filePath(description)).isFile()};
}

} // namespace

Archives::Verdict Archives::verdictOn(const QString& path, const QString& version,
                                      const QString& description)
{
    m_pause(QFileInfo(path).fileName());
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {file.errorString(), false};
    const QByteArray bytes = file.readAll();
    // As a client has it: nothing in it may have that name.
    const QString name = QStringLiteral("%1_%2").arg(QFileInfo(path).fileName(), version);
    QCryptographicHash digest(QCryptographicHash::Sha1);
    digest.addData((name + QLatin1Char('/') + description + QLatin1Char('/')).toUtf8());
    digest.addData(bytes);
    const auto known = m_known.constFind(digest.result());
    if (known != m_known.constEnd())
        return *known;
    return *m_known.insert(digest.result(), unpacked(bytes, name, description));
}
