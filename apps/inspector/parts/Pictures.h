#pragma once

#include <QCache>
#include <QImage>
#include <QObject>
#include <QSet>
#include <QSize>
#include <QString>
#include <QThreadPool>

/**
 * Pictures of the cache below the working folder, read off the GUI thread when a view asks for
 * them, and fetched where they are not there. What a path names never changes, so each is read
 * once.
 */
class Pictures : public QObject
{
    Q_OBJECT

public:
    explicit Pictures(QObject* parent = nullptr);

    /**
     * The picture of a path as it fits into a size in device pixels; null until it is there, and
     * sigLoaded() tells when. A picture that is not on the disk is fetched from the address, if
     * that is not empty.
     */
    QImage get(const QString& path, const QString& address, const QSize& size);

    /** The file that the picture of an address has where no manager names another. */
    static QString pathOf(const QString& address);

    /** Why there is no picture; empty while it is being read, and when there is one. */
    QString fault(const QString& path) const { return m_faults.value(path); }

    /** Whether nothing is being read or fetched. */
    bool isIdle() const { return m_wanted.isEmpty(); }

    /** Tries anew what could not be had. */
    void retry();

Q_SIGNALS:
    void sigLoaded(const QString& path);

private:
    void fetch(const QString& path, const QString& address, const QSize& size);
    void read(const QString& path, const QSize& size);
    void done(const QString& path, const QString& key, const QImage& image, const QString& fault);

    QCache<QString, QImage> m_images; // by path and size
    QSet<QString> m_wanted;           // the same, of those under way
    QHash<QString, QString> m_faults;
    QThreadPool m_readers;
};
