#pragma once

#include "client/ClientResults.h"

#include <QByteArray>
#include <QJsonObject>
#include <QString>
#include <QVector>
#include <QtPromise>

/** The files of the working folder that are the client's own. */
namespace ClientFiles {

/** The object that a text holds; empty, and error tells the source and the cause, for any other. */
QJsonObject objectOf(const QByteArray& text, const QString& source, QString* error);

/**
 * Puts the values of "zglobal.json" into force, joined by these, and remembers them there if told
 * to. Why that cannot be done, or an empty text.
 */
QString configure(const QJsonObject& values, bool remember);

/** Where the file of a table outside the catalogue lies: not beside the others, where tidying
 *  removes what it does not know. */
QString unversionedPath(const QString& table);

/** Fetches the tables outside the catalogue. */
QtPromise::QPromise<QVector<ZClientFailure>> fetchUnversioned();

} // namespace ClientFiles
