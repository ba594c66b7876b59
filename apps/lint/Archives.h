#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>

#include <functional>

/** What becomes of archives at a client. Remembers it, so that what has not changed is not unpacked
 *  again. */
class Archives
{
public:
    struct Verdict
    {
        QString error;               ///< why a client refuses the archive; empty when it does not
        bool hasDescription = false; ///< whether the file in question is in it
    };

    /** Called with the file's name before each archive; what it throws comes through. */
    void setPause(const std::function<void(const QString&)>& pause) { m_pause = pause; }

    /** Unpacks the archive in a temporary folder, and looks there for the file described. The
     *  version is a part of the name that a client gives it. */
    Verdict verdictOn(const QString& path, const QString& version, const QString& description);

private:
    QHash<QByteArray, Verdict> m_known;
    std::function<void(const QString&)> m_pause = [](const QString&) {};
};
