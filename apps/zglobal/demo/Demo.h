#pragma once

#include "client/ZGlobalClient.h"
#include "console/TextTable.h"
#include "server/ContentServer.h"

#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <functional>
#include <memory>

/**
 * The stage of the demonstration: a content server over a copy of the content, a client's working
 * folder, and what the steps tell and check.
 *
 * A step is as expected when it checked something, every check held, and no Failure was thrown.
 */
class Demo
{
public:
    /** Copies the content and enters the working folder, so that no step works in the user's. keep
     * is the working folder; without it a temporary one is used. */
    Demo(const QString& content, const QString& keep);
    ~Demo();
    Q_DISABLE_COPY(Demo)

    void step(const QString& title, const std::function<void(Demo&)>& body);

    /** A line of the step. */
    void say(const QString& line) const;
    void say(const QStringList& lines) const;
    void show(const TextTable& table) const;

    /** A check of the step, told with its outcome. */
    void expect(bool held, const QString& what);

    /** Tells how many steps were as expected; whether all were. */
    bool finish() const;

    void serve();
    /** Throws a Failure while there is none. */
    ContentServer& server() const;

    ZGlobalClient& client() { return m_client; }

    /** The operator's folder and the client's. */
    QString content() const { return m_content.path(); }
    QString work() const { return m_work; }

    /** A full address without the server in front, which differs from run to run. */
    QString shortened(const QString& address) const;

private:
    QTemporaryDir m_content;
    QTemporaryDir m_temporary;
    QString m_work;
    QString m_start;
    std::unique_ptr<ContentServer> m_server;
    ZGlobalClient m_client;
    int m_steps = 0;
    int m_asExpected = 0;
    int m_checks = 0;
    int m_broken = 0;
};
