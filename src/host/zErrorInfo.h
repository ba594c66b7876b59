#pragma once

#include "ZUtilityExport.h"

#include <QMetaType>
#include <QString>

/**
 * The error with which the system's promises are rejected: a text for people and a number for
 * programs. A plain value; any thread.
 */
class ZUTILITY_EXPORT zErrorInfo
{
public:
    explicit zErrorInfo(const QString& message = QString(), int code = 0);

    /** What went wrong, naming the object and the cause; may be shown to the user. */
    QString message() const { return m_message; }

    /** 0 unless the side that raised the error has a number for it. */
    int code() const { return m_code; }

private:
    QString m_message;
    int m_code;
};

Q_DECLARE_METATYPE(zErrorInfo)
