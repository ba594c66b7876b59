#pragma once

#include "client/ZGlobalClient.h"
#include "console/ProgressBar.h"

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QJsonObject>
#include <QList>

#include <QString>
#include <memory>

/**
 * A client as the command line describes it, for as long as the command runs. What cannot be done
 * is thrown as a Failure.
 */
class Session
{
public:
    enum Purpose {
        Looks,   ///< at a client that is there: its folder is not made and remembers nothing
        Updates, ///< makes the folder, and the server and the configuration are remembered in it
    };

    explicit Session(const QCommandLineParser& line, Purpose purpose = Looks);

    /** --data, --server, --config and --verbose. */
    static QList<QCommandLineOption> options();

    /** The configuration of somebody who tries out the content served at an address. */
    static QJsonObject configurationFor(const QString& address);

    ZGlobalClient& client() { return m_client; }
    ZGlobalClient* operator->() { return &m_client; }

    /** As ZGlobalClient::load(); where an essential table is missing a Failure that tells why. */
    void load();

    /** A Failure that tells why, unless the table is loaded: one that is not is no empty one. */
    static void require(const QString& table);

    /** Shows downloads on the error stream while it lives. */
    std::unique_ptr<ProgressBar> progress();

    /** On the error stream, a line for each. */
    static void complain(const QVector<ZClientFailure>& failures);

    /** What to do about tables that did not load; true in every case of them. */
    static QString advice();

    /** A line about the server and folder of this client. */
    static QString whereabouts();

private:
    ZGlobalClient m_client;
};
