#include "fuzz/Fuzz.h"
#include "host/ZHttpComm.h"
#include "presentation/ZBannerMgr.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTemporaryDir>

namespace {

QByteArray answer;

} // namespace

/** In front of the host's own: the web service answers with the input. */
QtPromise::QPromise<QByteArray> ZHttpComm::get(const QUrl&)
{
    return QtPromise::QPromise<QByteArray>::resolve(answer);
}

/** The service's reply about pages for the embedded browser. */
ZGLOBAL_FUZZER
{
    static int count = 0;
    static QCoreApplication application(count, nullptr);
    static const QTemporaryDir work;
    require(QDir::setCurrent(work.path()), "a working folder");
    QFile file(QStringLiteral("table"));
    QByteArray columns;
    for (const QString& column : ZBannerMgr::declaration().columnNames())
        columns += (columns.isEmpty() ? "\"" : ",\"") + column.toUtf8() + '"';
    require(file.open(QIODevice::WriteOnly)
                && file.write("{\"columns\":[" + columns + "],\"rows\":[]}") > 0,
            "a table");
    file.close();
    answer = bytes;
    ZBannerMgr* banners = ZBannerMgr::getInstance();
    require(banners->loadBannerListTable(file.fileName(), false), "loads");
    QCoreApplication::processEvents();

    static const QRegularExpression withPath(QStringLiteral("^https?://[^/]+/"));
    const QJsonObject reply = QJsonDocument::fromJson(bytes).object();
    for (const auto& element : reply.value(QLatin1String("data")).toArray()) {
        const QJsonObject banner = element.toObject();
        const QString page = banner.value(QLatin1String("landingPage")).toString();
        if (banner.value(QLatin1String("isCefOpen")).toInt() == 1 && page.contains(withPath))
            require(banners->bannerIsByCef(page), "a page that is told counts");
    }
    banners->bannerCefPage(QString::fromUtf8(bytes));
}
