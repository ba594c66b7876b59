#pragma once

#include "host/zErrorInfo.h"

#include <QString>
#include <QUrl>

#include <memory>

/**
 * Why a request failed, in the host's words where it has some: it may reject with anything. Copies
 * share the words, so one goes into tapFail() and another is asked afterwards.
 */
class RequestCause
{
public:
    explicit RequestCause(const QUrl& address)
        : m_message(std::make_shared<QString>(
            QStringLiteral("Cannot download %1")
                .arg(address.toString(QUrl::RemoveQuery | QUrl::RemoveUserInfo))))
    {
    }

    void operator()(const zErrorInfo& error) const { *m_message = error.message(); }
    QString message() const { return *m_message; }

private:
    std::shared_ptr<QString> m_message;
};
