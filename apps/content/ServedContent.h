#pragma once

#include "content/Content.h"

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>
#include <QtPromise>

/**
 * Content as a content server hands it out. The address is the one below which everything lies, a
 * slash at its end or not. Promises are rejected with a zErrorInfo that names the address of the
 * file and the cause. GUI thread only.
 */
namespace ServedContent {

/** The versions, and every table under the address by which clients ask for that version; what the
 *  server says is not there is not among them. */
QtPromise::QPromise<Content> fetch(const QString& address);

/** Files by their paths in the content folder, as far as they are there. */
QtPromise::QPromise<QHash<QString, QByteArray>> fetchFiles(const QString& address,
                                                           const QStringList& paths);

} // namespace ServedContent
