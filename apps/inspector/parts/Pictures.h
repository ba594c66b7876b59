#pragma once

#include <QCache>
#include <QImage>
#include <QObject>
#include <QSet>
#include <QSize>
#include <QString>
#include <QThreadPool>
#include <QVector>

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

    /** The file that the picture of an address has where no manager names another; empty for an
     *  empty address. */
    static QString pathOf(const QString& address);

    /** Why there is no picture; empty while it is being read, and when there is one. */
    QString fault(const QString& path) const { return m_faults.value(path); }

    /** Whether nothing is being read or fetched. */
    bool isIdle() const { return m_wanted.isEmpty(); }

    /** Tries anew what could not be had. */
    void retry();

    /** Every request of the process is called off, those for pictures too; they wait from now on
     *  and are made again with resume(). */
    void pause();
    void resume();

Q_SIGNALS:
    /** A picture is there, or known not to be; an empty path for any that is worth another look. */
    void sigLoaded(const QString& path);

private:
    struct Wanted
    {
        QString path;
        QString address;
        QSize size;
    };

    void obtain(const Wanted& picture);
    void fetch(const Wanted& picture);
    void read(const QString& path, const QSize& size);
    void done(const QString& path, const QString& key, const QImage& image, const QString& fault);

    QCache<QString, QImage> m_images; // by path and size
    QSet<QString> m_wanted;           // the same, of those under way
    QHash<QString, QString> m_faults;
    QVector<Wanted> m_waiting; // for resume()
    bool m_isPaused = false;
    int m_pauses = 0;
    QThreadPool m_readers;
};
