#include "host/ZGlobalConfig.h"
#include "host/ZHttpComm.h"
#include "host/ZImageCacheUtil.h"

#include <QFile>

// Its tables are lines of cells between tabs, and its errors are texts.

ZGlobalConfig& ZGlobalConfig::getInstance()
{
    static ZGlobalConfig instance;
    return instance;
}

QString ZGlobalConfig::getConfig(const QString& key)
{
    return key == QLatin1String("cmsServer") ? QStringLiteral("other://") : QString();
}

bool ZGlobalConfig::readTableFile(const QByteArray& bytes, QHash<QString, int>& header,
                                  QJsonArray& rows)
{
    const QList<QByteArray> lines = bytes.split('\n');
    if (!bytes.startsWith("tabs\n"))
        return false;
    const QStringList names = QString::fromUtf8(lines.value(1)).split(QLatin1Char('\t'));
    header.clear();
    for (int i = 0; i < names.size(); ++i)
        header.insert(names.at(i), i);
    rows = {};
    for (const QByteArray& line : lines.mid(2))
        rows.append(QJsonArray::fromStringList(QString::fromUtf8(line).split(QLatin1Char('\t'))));
    return true;
}

bool ZGlobalConfig::readTableFile(const QString& path, QHash<QString, int>& header,
                                  QJsonArray& rows)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && readTableFile(file.readAll(), header, rows);
}

bool ZGlobalConfig::unZipFile(const QString&, bool)
{
    return false;
}

ZHttpComm* ZHttpComm::getInstance()
{
    static ZHttpComm instance;
    return &instance;
}

QtPromise::QPromise<QByteArray> ZHttpComm::get(const QUrl& url)
{
    if (url.path().endsWith(QLatin1String("GroupWelComeWord")))
        return QtPromise::QPromise<QByteArray>::resolve(QByteArray("tabs\nword\nHello"));
    return QtPromise::QPromise<QByteArray>::reject(QStringLiteral("a text for an error"));
}

QtPromise::QPromise<void> ZImageCacheUtil::preloadList(const QStringList&)
{
    return QtPromise::QPromise<void>::resolve();
}
