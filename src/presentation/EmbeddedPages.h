#pragma once

#include <QHash>
#include <QRegularExpression>
#include <QString>

/** Telling addresses that open in the embedded browser by the pages listed for it. */
namespace EmbeddedPages {

/** What of each page an address has to hold, by page. */
using Paths = QHash<QString, QString>;

/**
 * Adds a page with its path, what pathPattern captures first of it; a page without one stands for
 * nothing and is not kept.
 */
void add(const QString& page, const QRegularExpression& pathPattern, Paths& paths);

/** One of the pages whose path is part of url, letter case counting; empty when there is none. */
QString pageFor(const QString& url, const Paths& paths);

} // namespace EmbeddedPages
