#include "publish/PublishedTree.h"

#include "content/Content.h"
#include "publish/Disk.h"
#include "publish/FolderLock.h"
#include "publish/Gzip.h"
#include "publish/Versions.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>
#include <QRegularExpression>

#include <algorithm>

namespace {

const QLatin1String currentName("current");
const QLatin1String journalName("journal.jsonl");
const QLatin1String leftoversName("leftovers.json");
const QLatin1String stagingName(".next");
const QLatin1String previewName(".preview-");
const QLatin1String goingName(".gone-");

QByteArray line(const JournalEntry& entry)
{
    return QJsonDocument(entry.toJson()).toJson(QJsonDocument::Compact) + '\n';
}

/** Qt 5 takes what a link holds for relative to another folder, unless the link's own path is
 * whole. */
QString leadsTo(const QFileInfo& link)
{
    return QFileInfo(link.absoluteFilePath()).symLinkTarget();
}

/** Removes the folder when the object goes, unless it has a better use by then. */
class Scaffold
{
public:
    explicit Scaffold(const QString& folder)
        : m_folder(folder)
    {
    }
    ~Scaffold() { QDir(m_folder).removeRecursively(); }
    Q_DISABLE_COPY(Scaffold)

private:
    QString m_folder;
};

} // namespace

PublishedTree::PublishedTree(const QString& folder)
    : m_folder(QDir::cleanPath(folder))
{
}

PublishedTree::~PublishedTree()
{
    if (m_lock != nullptr && m_lock->error().isEmpty() && m_current == 0)
        QDir().rmdir(path(QStringLiteral("releases"))); // made for a preview
    m_lock.reset();
    if (m_isMade && m_current == 0)
        QDir().rmdir(m_folder); // which fails where something is in it
}

QString PublishedTree::open()
{
    static const QRegularExpression target(QStringLiteral("(^|/)releases/([1-9][0-9]*)/content$"));
    const QFileInfo link(path(currentName));
    const QString shown = QDir::toNativeSeparators(m_folder);
    m_isPlain = false;
    m_current = 0;
    if (link.isSymLink()) {
        const QString release = leadsTo(link);
        m_current = target.match(release).captured(2).toInt();
        if (has(m_current)
            && QFileInfo(release).canonicalFilePath()
                == QFileInfo(contentOf(m_current)).canonicalFilePath())
            return {};
        // Another process may have published meanwhile, and removed that release.
        if (leadsTo(QFileInfo(path(currentName))) != release)
            return open();
        return QStringLiteral("%1 leads to no release of this folder")
            .arg(QDir::toNativeSeparators(link.filePath()));
    }
    const QFileInfo info(m_folder);
    if (link.exists() && QFileInfo(path(QStringLiteral("releases"))).isDir())
        return QStringLiteral("%1 is no link, as a copy of a published tree may have it; make it "
                              "lead to releases/NUMBER/content, the release that is served")
            .arg(QDir::toNativeSeparators(link.filePath()));
    if (info.exists() && !info.isDir())
        return QStringLiteral("%1 is no folder").arg(shown);
    if (target.match(info.canonicalFilePath()).hasMatch())
        return QStringLiteral("%1 is the content of a release; name the folder with \"current\" in "
                              "it")
            .arg(shown);
    const QDir dir(m_folder);
    m_isPlain = dir.exists(QStringLiteral("app"));
    // Without a release, that folder is what an interrupted first one has left.
    const QStringList others =
        dir.entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::System);
    const bool isOurs = m_isPlain || others.isEmpty()
        || std::all_of(others.begin(), others.end(), [](const QString& name) {
                            return name == QLatin1String("releases") || name == journalName;
                        });
    return isOurs
        ? QString()
        : QStringLiteral("%1 holds other files, and nothing that is published").arg(shown);
}

QString PublishedTree::folderOf(int release) const
{
    return path(QStringLiteral("releases/%1").arg(release));
}

QString PublishedTree::contentOf(int release) const
{
    return folderOf(release) + QStringLiteral("/content");
}

QString PublishedTree::content() const
{
    return m_isPlain ? m_folder : m_current > 0 ? contentOf(m_current) : QString();
}

bool PublishedTree::has(int release) const
{
    return release > 0 && release <= m_current && QFileInfo(contentOf(release)).isDir();
}

QMap<QString, int> PublishedTree::leftoversOf(int release) const
{
    QByteArray text;
    Disk::read(folderOf(release) + QLatin1Char('/') + leftoversName, text);
    const QJsonObject object = QJsonDocument::fromJson(text).object();
    QMap<QString, int> leftovers;
    for (auto file = object.begin(); file != object.end(); ++file)
        leftovers.insert(file.key(), file.value().toInt());
    return leftovers;
}

QVector<JournalEntry> PublishedTree::journal() const
{
    QByteArray text;
    Disk::read(folderOf(m_current) + QLatin1Char('/') + journalName, text);
    QVector<JournalEntry> entries;
    for (const QByteArray& each : text.split('\n')) {
        if (!each.isEmpty())
            entries.append(JournalEntry::fromJson(QJsonDocument::fromJson(each).object()));
    }
    return entries;
}

QString PublishedTree::lock()
{
    m_isMade = !QFileInfo::exists(m_folder);
    QString cause = Disk::makeFolder(m_folder);
    if (!cause.isEmpty())
        return cause;
    m_lock.reset(); // a process would wait for itself
    m_lock = std::make_unique<FolderLock>(m_folder);
    if (!m_lock->error().isEmpty())
        return m_lock->error();
    sweepPreviews();
    return open();
}

QString PublishedTree::previewTemplate() const
{
    const QString folder = m_lock == nullptr ? QDir::tempPath() : path(QStringLiteral("releases"));
    return folder + QLatin1Char('/') + previewName + QStringLiteral("XXXXXX");
}

QString PublishedTree::adopt(const Progress& progress)
{
    sweep(0); // what an interrupted one has left is none of the content
    Content plain;
    QString cause = plain.read(m_folder);
    if (cause.isEmpty())
        cause = Versions::fault(plain.versions, path(QStringLiteral("app/versions.json")));
    if (!cause.isEmpty())
        return cause;
    Release release;
    release.entry.action = QStringLiteral("adopt");
    for (const QString& file : plain.files()) {
        const QString source = path(file);
        release.files.insert(file,
                             {QString(), source, QByteArray(), QFileInfo(source).lastModified()});
    }
    return add(release, 1, progress);
}

QString PublishedTree::add(Release& release, int kept, const Progress& progress)
{
    const QString releases = path(QStringLiteral("releases"));
    const QString staging = releases + QLatin1Char('/') + stagingName;
    sweep(m_current); // none of the whole ones
    release.entry.release = m_current + 1;
    release.entry.time = QDateTime::currentDateTimeUtc();
    const Scaffold scaffold(staging);
    QString cause = writeRelease(staging, release, progress);
    if (cause.isEmpty())
        cause = Disk::settle(staging);
    if (cause.isEmpty())
        cause = Disk::rename(staging, folderOf(release.entry.release));
    if (cause.isEmpty())
        cause = Disk::settleNames(releases);
    if (cause.isEmpty())
        cause = turnTo(release.entry.release);
    if (cause.isEmpty())
        sweep(kept);
    else
        QDir(folderOf(release.entry.release)).removeRecursively();
    return cause;
}

QString PublishedTree::writeRelease(const QString& folder, const Release& release,
                                    const Progress& progress)
{
    QString cause = Disk::makeFolder(folder);
    const QString content = folder + QStringLiteral("/content/");
    int done = 0;
    for (auto file = release.files.begin(); cause.isEmpty() && file != release.files.end();
         ++file) {
        progress(done++, static_cast<int>(release.files.size()));
        const QString target = content + file.key();
        cause = Disk::makeFolder(QFileInfo(target).path());
        if (cause.isEmpty())
            cause = writeFile(target, file.key(), *file);
    }
    return cause.isEmpty() ? writeRecords(folder, release) : cause;
}

QString PublishedTree::writeFile(const QString& target, const QString& path,
                                 const ReleaseFile& file)
{
    const bool wantsTwin = Gzip::isWanted(path);
    if (!file.kept.isEmpty()) {
        QString cause = Disk::link(file.kept, target);
        const QString twin = Gzip::twinOf(file.kept);
        return cause.isEmpty() && wantsTwin && QFileInfo::exists(twin)
            ? Disk::link(twin, Gzip::twinOf(target))
            : cause;
    }
    QString cause = file.source.isEmpty() ? Disk::write(target, file.bytes, file.changed)
                                          : Disk::copy(file.source, target, file.changed);
    if (!cause.isEmpty() || !wantsTwin)
        return cause;
    QByteArray bytes;
    cause = Disk::read(target, bytes);
    const QByteArray packed = cause.isEmpty() ? Gzip::compressed(bytes) : QByteArray();
    return packed.isEmpty() ? cause : Disk::write(Gzip::twinOf(target), packed, file.changed);
}

QString PublishedTree::writeRecords(const QString& folder, const Release& release)
{
    QJsonObject leftovers;
    for (auto file = release.leftovers.begin(); file != release.leftovers.end(); ++file)
        leftovers.insert(file.key(), *file);
    QString cause = Disk::write(folder + QLatin1Char('/') + leftoversName,
                                QJsonDocument(leftovers).toJson(), release.entry.time);
    QByteArray before;
    if (cause.isEmpty() && m_current > 0)
        cause = Disk::read(folderOf(m_current) + QLatin1Char('/') + journalName, before);
    return cause.isEmpty() ? Disk::write(folder + QLatin1Char('/') + journalName,
                                         before + line(release.entry), release.entry.time)
                           : cause;
}

QString PublishedTree::turnTo(int release)
{
    // It leads through "current", so that both turn at once.
    QString cause = QFileInfo(path(journalName)).isSymLink()
        ? QString()
        : Disk::lead(path(journalName), currentName + QStringLiteral("/../") + journalName);
    if (cause.isEmpty())
        cause = Disk::lead(path(currentName), QStringLiteral("releases/%1/content").arg(release));
    if (!cause.isEmpty())
        return cause;
    m_current = release;
    m_isPlain = false;
    return {};
}

void PublishedTree::sweep(int kept)
{
    const QDir folder(path(QStringLiteral("releases")));
    const QStringList names =
        folder.entryList(QDir::Dirs | QDir::NoSymLinks | QDir::Hidden | QDir::NoDotAndDotDot);
    for (const QString& name : names) {
        const int number = name.toInt();
        const bool isLeftover = name == stagingName || name.startsWith(goingName);
        const bool isKept = number > m_current - kept && number <= m_current;
        // What somebody else has put there stays.
        if (!isLeftover && (isKept || QString::number(number) != name || number <= 0))
            continue;
        // A release that is half gone must not be taken for one.
        const QString going = folder.filePath(isLeftover ? name : goingName + name);
        if (isLeftover || Disk::rename(folder.filePath(name), going).isEmpty())
            QDir(going).removeRecursively();
    }
}

void PublishedTree::sweepPreviews() const
{
    const QDir folder(path(QStringLiteral("releases")));
    const QStringList names =
        folder.entryList({previewName + QStringLiteral("??????")},
                         QDir::Dirs | QDir::NoSymLinks | QDir::Hidden | QDir::NoDotAndDotDot);
    for (const QString& name : names)
        QDir(folder.filePath(name)).removeRecursively();
}
