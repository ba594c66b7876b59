#pragma once

#include "client/ZGlobalClient.h"

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QJsonObject>
#include <QList>
#include <QString>

/**
 * A client as the command line describes it, for as long as the command runs. What cannot be done
 * is thrown as a Failure.
 */
class Session
{
public:
    explicit Session(const QCommandLineParser& line);
    Session(const QString& folder, const QJsonObject& configuration);

    /** --data, --server, --config and --verbose. */
    static QList<QCommandLineOption> options();

    /** The configuration of somebody who tries out the content served at an address. */
    static QJsonObject configurationFor(const QString& address);

    ZGlobalClient& client() { return m_client; }
    ZGlobalClient* operator->() { return &m_client; }

    /** As ZGlobalClient::load(), with a Failure where an essential table is missing. */
    void load();

    /** A line about the server and folder of this client. */
    static QString whereabouts();

private:
    void open(const QString& folder, const QJsonObject& configuration);

    ZGlobalClient m_client;
};
