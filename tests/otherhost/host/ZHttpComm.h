#pragma once

#include <QByteArray>
#include <QUrl>
#include <QtPromise>

class ZHttpComm
{
public:
    static ZHttpComm* getInstance();
    QtPromise::QPromise<QByteArray> get(const QUrl& url);
};
