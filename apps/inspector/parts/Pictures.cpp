#include "inspector/parts/Pictures.h"

#include "datatable/ZDataTableMgr.h"
#include "host/ZImageCacheUtil.h"
#include "host/zErrorInfo.h"
#include "inspector/parts/Background.h"

#include <QCryptographicHash>
#include <QFileInfo>
#include <QImageReader>
#include <QPointer>

#include <utility>

namespace {

constexpr int cacheKilobytes = 128 * 1024;

QString keyOf(const QString& path, const QSize& size)
{
    return QStringLiteral("%1@%2x%3").arg(path).arg(size.width()).arg(size.height());
}

struct ReadPicture
{
    QImage image;
    QString fault;
};

ReadPicture readPicture(const QString& path, const QSize& size)
{
    QImageReader reader(path);
    reader.setDecideFormatFromContent(true); // the cache's files have no extension
    const QSize own = reader.size();
    if (own.isValid() && (own.width() > size.width() || own.height() > size.height()))
        reader.setScaledSize(own.scaled(size, Qt::KeepAspectRatio).expandedTo({1, 1}));
    QImage image = reader.read();
    const QString fault = image.isNull() ? reader.errorString() : QString();
    return {std::move(image), fault};
}

/** Fetches what is not there; not every manager names its file after the address. */
QtPromise::QPromise<void> download(const QString& path, const QString& address)
{
    if (path == Pictures::pathOf(address))
        return ZImageCacheUtil::preloadList({address});
    return ZDataTableMgr::getInstance()->downloadFile(path, address, true).then([](const QString&) {
    });
}

} // namespace

Pictures::Pictures(QObject* parent)
    : QObject(parent)
    , m_images(cacheKilobytes)
{
    m_readers.setMaxThreadCount(2);
}

QImage Pictures::get(const QString& path, const QString& address, const QSize& size)
{
    const QString key = keyOf(path, size);
    if (const QImage* image = m_images.object(key))
        return *image;
    if (path.isEmpty() || m_wanted.contains(key) || m_faults.contains(path))
        return {};
    m_wanted.insert(key);
    // Views ask while they paint, and what a request sets off may paint, too.
    const Wanted picture {path, address, size};
    QMetaObject::invokeMethod(
        this, [this, picture] { obtain(picture); }, Qt::QueuedConnection);
    return {};
}

QString Pictures::pathOf(const QString& address)
{
    if (address.isEmpty())
        return {};
    const QByteArray name =
        QCryptographicHash::hash(address.toUtf8(), QCryptographicHash::Md5).toHex().toUpper();
    return QStringLiteral("res/images/") + QString::fromLatin1(name);
}

void Pictures::retry()
{
    if (m_faults.isEmpty())
        return;
    m_faults.clear();
    Q_EMIT sigLoaded({});
}

void Pictures::pause()
{
    m_isPaused = true;
    ++m_pauses;
}

void Pictures::resume()
{
    m_isPaused = false;
    for (const Wanted& picture : std::exchange(m_waiting, {}))
        fetch(picture);
}

void Pictures::obtain(const Wanted& picture)
{
    if (picture.address.isEmpty() || QFileInfo(picture.path).size() > 0)
        read(picture.path, picture.size);
    else
        fetch(picture);
}

void Pictures::fetch(const Wanted& picture)
{
    if (m_isPaused) {
        m_waiting.append(picture);
        return;
    }
    const QPointer<Pictures> self(this);
    const int pauses = m_pauses;
    download(picture.path, picture.address)
        .then([=] {
            if (self != nullptr)
                self->read(picture.path, picture.size);
        })
        .fail([=](const zErrorInfo& error) {
            if (self == nullptr)
                return;
            if (pauses != self->m_pauses) // then it may well be for that
                self->fetch(picture);
            else
                self->done(picture.path, keyOf(picture.path, picture.size), {}, error.message());
        });
}

void Pictures::read(const QString& path, const QSize& size)
{
    // The library's folder is the current one, but a reader may come late.
    const QString file = QFileInfo(path).absoluteFilePath();
    inBackground(
        m_readers, this, [file, size] { return readPicture(file, size); },
        [this, path, size](const ReadPicture& read) {
            done(path, keyOf(path, size), read.image, read.fault);
        });
}

void Pictures::done(const QString& path, const QString& key, const QImage& image,
                    const QString& fault)
{
    m_wanted.remove(key);
    if (image.isNull())
        m_faults.insert(path, fault);
    else
        // What is too large to be kept would be read again with every painting.
        m_images.insert(
            key, new QImage(image),
            static_cast<int>(qMin<qint64>(image.sizeInBytes() / 1024 + 1, cacheKilobytes)));
    Q_EMIT sigLoaded(path);
}
