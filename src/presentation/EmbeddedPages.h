#pragma once

#include <QRegularExpression>
#include <QSet>
#include <QString>

/** Telling addresses that open in the embedded browser by the pages listed for it. */
namespace EmbeddedPages {

/**
 * One of the pages whose path, what pathPattern captures first of it, is part of url; empty when
 * there is none. Letter case counts; a page that does not match the pattern stands for nothing.
 */
QString pageFor(const QString& url, const QSet<QString>& pages,
                const QRegularExpression& pathPattern);

} // namespace EmbeddedPages
