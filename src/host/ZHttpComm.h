#pragma once

#include "ZNetWorkExport.h"

#include <QByteArray>
#include <QObject>
#include <QtPromise>
#include <QUrl>

/** HTTP for the client: GET requests whose promises settle on the GUI thread. */
class ZNETWORK_EXPORT ZHttpComm : public QObject
{
    Q_OBJECT

public:
    static ZHttpComm* getInstance();

    /** Fulfilled with the body, rejected with a zErrorInfo. */
    QtPromise::QPromise<QByteArray> get(const QUrl& url);
};
