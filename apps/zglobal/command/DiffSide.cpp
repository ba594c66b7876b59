#include "command/DiffSide.h"

#include "client/ZGlobalClient.h"
#include "console/Failure.h"
#include "console/Literals.h"
#include "console/ProgressBar.h"
#include "console/Wait.h"
#include "content/ServedContent.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUrl>

namespace {

/** What the promise brings, with a progress bar while it is under way. */
template <class T>
T fetched(const std::function<QtPromise::QPromise<T>()>& start)
{
    const ZGlobalClient client; // hears of every request
    ProgressBar bar;
    QObject::connect(&client, &ZGlobalClient::sigProgress, &bar, &ProgressBar::show);
    Outcome<T> outcome = settled(start());
    if (!outcome.ok)
        throw Failure {outcome.error};
    return outcome.value;
}

} // namespace

DiffSide::DiffSide(const QString& argument)
    : m_title(argument)
    , m_isServer(argument.startsWith(u"http://"_s) || argument.startsWith(u"https://"_s))
{
    if (m_isServer) {
        if (QUrl(argument, QUrl::StrictMode).host().isEmpty())
            throw UsageFailure(u"\"%1\" is not the address of a content server"_s.arg(argument));
        m_content = fetched<Content>([&argument] { return ServedContent::fetch(argument); });
        return;
    }
    const QString fault = m_content.read(argument);
    if (!fault.isEmpty())
        throw Failure {fault};
    m_isFile = QFileInfo(argument).isFile() && !m_content.tables.isEmpty();
    m_title = QDir::toNativeSeparators(argument);
}

void DiffSide::adapt(DiffSide& before, DiffSide& after)
{
    if (before.m_isFile && after.m_isFile) {
        QMap<QString, QByteArray>& old = before.m_content.tables;
        QMap<QString, QByteArray>& now = after.m_content.tables;
        const QString name = Content::isTable(now.firstKey()) ? now.firstKey() : old.firstKey();
        old = {{name, old.first()}};
        now = {{name, now.first()}};
    }
    if (before.isWhole() != after.isWhole()) {
        (before.isWhole() ? before : after)
            .keepTablesOf((before.isWhole() ? after : before).m_content);
    }
}

void DiffSide::keepTablesOf(const Content& other)
{
    QMap<QString, QByteArray> kept;
    for (auto table = m_content.tables.begin(); table != m_content.tables.end(); ++table) {
        if (other.tables.contains(table.key()))
            kept.insert(table.key(), *table);
    }
    m_content.tables = kept;
}

std::function<QByteArray(const QString& path)> DiffSide::reader(const QStringList& paths) const
{
    if (!isWhole())
        return nullptr;
    if (!m_isServer)
        return [folder = m_content.folder](const QString& path) {
            QFile file(folder + QLatin1Char('/') + path);
            const bool isInside = !path.startsWith(u".."_s); // tables may name anything
            return isInside && file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
        };
    const auto files = fetched<QHash<QString, QByteArray>>(
        [&] { return ServedContent::fetchFiles(m_title, paths); });
    return [files](const QString& path) { return files.value(path); };
}
