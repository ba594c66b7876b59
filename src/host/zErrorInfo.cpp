#include "host/zErrorInfo.h"

zErrorInfo::zErrorInfo(const QString& message, int code)
    : m_message(message)
    , m_code(code)
{
}
