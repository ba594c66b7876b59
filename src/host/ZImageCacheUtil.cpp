#include "host/ZImageCacheUtil.h"

#include "file/WholeFile.h"
#include "host/ZHttpComm.h"
#include "host/zErrorInfo.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QRegularExpression>
#include <QVector>

#include <memory>

namespace {

using Fetch = QtPromise::QPromise<void>;

QString folder()
{
    return QStringLiteral("res/images/");
}

QString pathOf(const QString& url)
{
    const QByteArray digest = QCryptographicHash::hash(url.toUtf8(), QCryptographicHash::Md5);
    return folder() + QString::fromLatin1(digest.toHex().toUpper());
}

/** The address as messages show it; its query may hold a session. */
QString shown(const QString& url)
{
    return QUrl(url).toString(QUrl::RemoveUserInfo | QUrl::RemoveQuery | QUrl::RemoveFragment);
}

bool isWebPage(const QByteArray& body)
{
    // What may stand before the first element: nobody's picture needs more of it than this.
    constexpr int lookedAt = 4096;
    static const QRegularExpression page(
        QStringLiteral("^\\x{FEFF}?(?>\\s+|<\\?.*?\\?>|<!--.*?-->)*+"
                       "<(!doctype\\s+html|html|head|title|meta|script|body)\\b"),
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::DotMatchesEverythingOption);
    return page.match(QString::fromUtf8(body.left(lookedAt))).hasMatch();
}

void store(const QString& url, const QByteArray& body)
{
    if (body.isEmpty())
        throw zErrorInfo(QStringLiteral("%1: the picture is empty").arg(shown(url)));
    if (isWebPage(body))
        throw zErrorInfo(QStringLiteral("%1: a web page in place of the picture").arg(shown(url)));
    QDir().mkpath(folder());
    const QString error = WholeFile::write(pathOf(url), body);
    if (!error.isEmpty())
        throw zErrorInfo(
            QStringLiteral("%1: cannot be stored as %2: %3").arg(shown(url), pathOf(url), error));
}

/** The fetch of an address that is already being fetched, or a new one. */
Fetch fetch(const QString& url)
{
    static QHash<QString, Fetch> underWay;
    const auto known = underWay.constFind(url);
    if (known != underWay.constEnd())
        return known.value();
    const Fetch fetch = ZHttpComm::getInstance()
                            ->getInBackground(QUrl(url))
                            .then([url](const QByteArray& body) { store(url, body); })
                            .finally([url] { underWay.remove(url); });
    underWay.insert(url, fetch);
    return fetch;
}

struct Failures
{
    int count = 0;
    int first = 0;
    QString cause;

    void add(int position, const QString& message)
    {
        if (count++ == 0 || position < first) {
            first = position;
            cause = message;
        }
    }
};

} // namespace

Fetch ZImageCacheUtil::preloadList(const QStringList& urls)
{
    const auto failures = std::make_shared<Failures>();
    QStringList wanted = urls;
    wanted.removeDuplicates();
    QVector<Fetch> tried;
    for (int i = 0; i < wanted.size(); ++i) {
        const QString& url = wanted.at(i);
        if (url.isEmpty() || QFileInfo(pathOf(url)).size() > 0)
            continue;
        tried.append(fetch(url).fail(
            [failures, i](const zErrorInfo& error) { failures->add(i, error.message()); }));
    }
    const int count = tried.size();
    return QtPromise::all(tried).then([failures, count] {
        if (failures->count > 0)
            throw zErrorInfo(QStringLiteral("%1 of %2 pictures failed, the first: %3")
                                 .arg(QString::number(failures->count), QString::number(count),
                                      failures->cause));
    });
}
