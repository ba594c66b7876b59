#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>
#include <QVector>

/** An nginx of a benchmark's own, on 127.0.0.1; runs while the object lives. */
class Nginx
{
public:
    /** A text of a configuration and what stands there instead. */
    struct Change
    {
        QString from;
        QString to;
    };

    /** A port that nobody has at the moment. */
    static int freePort();

    /** The configuration of that name in the examples; throws std::runtime_error when a text that
     *  is to be changed is not in it. */
    static QString example(const QString& name, const QVector<Change>& changes);

    /**
     * Runs nginx on the configuration, with the folder, which is made, as its prefix, and waits
     * until it takes connections on the port. Throws std::runtime_error with what nginx said when
     * it does not. A folder is for one nginx, and for one time.
     */
    Nginx(const QString& folder, const QString& configuration, int port);
    ~Nginx();
    Q_DISABLE_COPY(Nginx)

    /** Ends it; then its access log is whole. */
    void stop();

    /** The lines of "access.log" so far. */
    QStringList accessLog() const;

private:
    QString m_folder;
    QProcess m_process;
};
