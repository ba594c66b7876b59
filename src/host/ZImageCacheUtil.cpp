#include "host/ZImageCacheUtil.h"

#include "host/ZHttpComm.h"
#include "host/zErrorInfo.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QQueue>
#include <QSaveFile>
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

void store(const QString& url, const QByteArray& body)
{
    if (body.isEmpty())
        throw zErrorInfo(QStringLiteral("%1: the picture is empty").arg(shown(url)));
    QDir().mkpath(folder());
    QSaveFile file(pathOf(url));
    if (!file.open(QIODevice::WriteOnly) || file.write(body) != body.size() || !file.commit())
        throw zErrorInfo(QStringLiteral("%1: cannot be stored as %2: %3")
                             .arg(shown(url), file.fileName(), file.errorString()));
}

/** The fetches under way and those that wait for a place among them. */
class Fetches
{
public:
    Fetch add(const QString& url)
    {
        const auto known = m_byUrl.constFind(url);
        if (known != m_byUrl.constEnd())
            return known.value();
        Fetch fetch([&](const QtPromise::QPromiseResolve<void>& resolve,
                        const QtPromise::QPromiseReject<void>& reject) {
            m_waiting.enqueue([this, url, resolve, reject] { start(url, resolve, reject); });
        });
        m_byUrl.insert(url, fetch);
        startNext();
        return fetch;
    }

private:
    void startNext()
    {
        while (m_running < ZImageCacheUtil::maxFetches && !m_waiting.isEmpty()) {
            ++m_running;
            m_waiting.dequeue()();
        }
    }

    void start(const QString& url, const QtPromise::QPromiseResolve<void>& resolve,
               const QtPromise::QPromiseReject<void>& reject)
    {
        ZHttpComm::getInstance()
            ->get(QUrl(url))
            .then([url](const QByteArray& body) { store(url, body); })
            .finally([this, url] { ended(url); })
            .then([resolve] { resolve(); }, [reject](const zErrorInfo& error) { reject(error); });
    }

    void ended(const QString& url)
    {
        --m_running;
        m_byUrl.remove(url);
        startNext();
    }

    QHash<QString, Fetch> m_byUrl;
    QQueue<std::function<void()>> m_waiting;
    int m_running = 0;
};

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
    static Fetches fetches;
    const auto failures = std::make_shared<Failures>();
    QStringList wanted = urls;
    wanted.removeDuplicates();
    QVector<Fetch> tried;
    for (int i = 0; i < wanted.size(); ++i) {
        const QString& url = wanted.at(i);
        if (url.isEmpty() || QFileInfo(pathOf(url)).size() > 0)
            continue;
        tried.append(fetches.add(url).fail(
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
