#include "presentation/EmbeddedPages.h"

QString EmbeddedPages::pageFor(const QString& url, const QSet<QString>& pages,
                               const QRegularExpression& pathPattern)
{
    for (const QString& page : pages) {
        const QString path = pathPattern.match(page).captured(1);
        if (!path.isEmpty() && url.contains(path))
            return page;
    }
    return {};
}
