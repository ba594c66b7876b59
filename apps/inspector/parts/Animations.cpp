#include "inspector/parts/Animations.h"

#include "host/ZGlobalConfig.h"
#include "host/ZHttpComm.h"
#include "host/zErrorInfo.h"
#include "inspector/parts/Background.h"

#include <QCoreApplication>
#include <QDir>
#include <QImageReader>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPointer>
#include <QSaveFile>

namespace {

constexpr int mostFrames = 300;
constexpr int usualSpeed = 12; // frames a second

/** Folders are called "name_version", and what comes out of the archive has the name alone. */
QString descriptionOf(const QString& folder)
{
    const QString whole = QFileInfo(folder).fileName();
    const int end = static_cast<int>(whole.lastIndexOf(u'_'));
    return QStringLiteral("%1/%2.flajson").arg(folder, whole.left(end));
}

QString unpack(const QString& folder, const QByteArray& archive)
{
    const QString path = QStringLiteral("%1/%2").arg(folder, QFileInfo(folder).fileName());
    if (!QDir().mkpath(folder))
        return QCoreApplication::translate("Animations", "%1 cannot be made").arg(folder);
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(archive) != archive.size() || !file.commit())
        return QStringLiteral("%1: %2").arg(path, file.errorString());
    QString fault;
    ZGlobalConfig::unZipFile(path, true, &fault);
    return fault;
}

QImage readFrame(const QString& path, const QSize& size)
{
    QImageReader reader(path);
    const QSize own = reader.size();
    if (own.isValid() && (own.width() > size.width() || own.height() > size.height()))
        reader.setScaledSize(own.scaled(size, Qt::KeepAspectRatio).expandedTo({1, 1}));
    return reader.read();
}

} // namespace

Animations::Frames Animations::read(const QString& folder, const QSize& size)
{
    Frames frames;
    QFile file(descriptionOf(folder));
    if (!file.open(QIODevice::ReadOnly)) {
        frames.fault = QStringLiteral("%1: %2").arg(file.fileName(), file.errorString());
        return frames;
    }
    const QJsonObject description = QJsonDocument::fromJson(file.readAll()).object();
    const int speed = description.value(QLatin1String("framesPerSecond")).toInt();
    const int milliseconds = 1000 / (speed > 0 ? qMin(speed, 60) : usualSpeed);
    const QJsonArray names = description.value(QLatin1String("frames")).toArray();
    for (const QJsonValue& name : names) {
        const QString path = QDir::cleanPath(name.toString());
        if (QDir::isAbsolutePath(path) || path.startsWith(QLatin1String("..")))
            continue; // a description that leads out of its folder
        const QImage image = readFrame(folder + u'/' + path, size);
        if (!image.isNull())
            frames.shown.append({image, milliseconds});
        if (frames.shown.size() == mostFrames)
            break;
    }
    if (frames.shown.isEmpty())
        frames.fault =
            QCoreApplication::translate("Animations", "%1 lists no frame that can be read")
                .arg(file.fileName());
    return frames;
}

Animations::Frames Animations::readPicture(const QString& path, const QSize& size)
{
    Frames frames;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        frames.fault = QStringLiteral("%1: %2").arg(path, file.errorString());
        return frames;
    }
    frames.shown = AnimatedPng::frames(file.readAll());
    if (!frames.shown.isEmpty())
        return frames;
    QImageReader reader(path);
    reader.setDecideFormatFromContent(true); // the cache's files have no extension
    do {
        const QImage image = reader.read();
        if (!image.isNull())
            frames.shown.append({image.width() > size.width() || image.height() > size.height()
                                     ? image.scaled(size, Qt::KeepAspectRatio)
                                     : image,
                                 qMax(reader.nextImageDelay(), 20)});
    } while (reader.supportsAnimation() && reader.canRead() && frames.shown.size() < mostFrames);
    if (frames.shown.isEmpty())
        frames.fault = QStringLiteral("%1: %2").arg(path, reader.errorString());
    return frames;
}

bool Animations::isThere(const QString& folder)
{
    return QFileInfo::exists(descriptionOf(folder));
}

void Animations::fetch(const QString& folder, const QString& address, QObject* receiver,
                       const std::function<void(const QString& fault)>& done)
{
    const QPointer<QObject> alive(receiver);
    const QString place = QDir(folder).absolutePath(); // a thread may come after another folder
    ZHttpComm::getInstance()
        ->get(QUrl(address))
        .then([=](const QByteArray& archive) {
            if (alive != nullptr)
                inBackground(
                    *QThreadPool::globalInstance(), alive.data(),
                    [place, archive] { return unpack(place, archive); }, done);
        })
        .fail([=](const zErrorInfo& error) {
            if (alive != nullptr)
                done(error.message());
        });
}
