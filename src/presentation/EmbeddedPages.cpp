#include "presentation/EmbeddedPages.h"

void EmbeddedPages::add(const QString& page, const QRegularExpression& pathPattern, Paths& paths)
{
    const QString path = pathPattern.match(page).captured(1);
    if (!path.isEmpty())
        paths.insert(page, path);
}

QString EmbeddedPages::pageFor(const QString& url, const Paths& paths)
{
    for (auto path = paths.cbegin(); path != paths.cend(); ++path) {
        if (url.contains(*path))
            return path.key();
    }
    return {};
}
