#pragma once

#include "host/zErrorInfo.h"

#include <QString>
#include <QUrl>

#include <memory>

/**
 * Why a request failed, as the host tells it where it does: it may reject with anything. Copies
 * share what is told, so one goes into tapFail() and another is asked afterwards.
 */
class RequestCause
{
public:
    explicit RequestCause(const QUrl& address)
        : m_error(std::make_shared<zErrorInfo>(
            QStringLiteral("Cannot download %1").arg(shown(address)), 0))
    {
    }

    /** The address without what may be secret in it. */
    static QString shown(const QUrl& address)
    {
        return address.toString(QUrl::RemoveQuery | QUrl::RemoveUserInfo);
    }

    void operator()(const zErrorInfo& error) const { *m_error = error; }
    QString message() const { return m_error->message(); }

    /** The HTTP status where the host tells one, else 0. */
    int status() const { return m_error->code(); }

private:
    std::shared_ptr<zErrorInfo> m_error;
};
