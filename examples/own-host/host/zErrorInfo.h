#pragma once

#include <QString>

class zErrorInfo
{
public:
    zErrorInfo(const QString& message, int code)
        : m_message(message)
        , m_code(code)
    {
    }
    QString message() const { return m_message; }
    int code() const { return m_code; }

private:
    QString m_message;
    int m_code;
};
