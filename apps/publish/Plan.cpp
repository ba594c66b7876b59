#include "publish/Plan.h"

#include "lint/Lint.h"
#include "publish/Disk.h"
#include "publish/Source.h"
#include "publish/TableText.h"
#include "publish/Versions.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <algorithm>

namespace {

const QLatin1String tableFolder("app/resources/");
const QLatin1String versionsPath("app/versions.json");

/** A release as it is served; fails where its versions are not known, for they only go up. */
QString readRelease(const QString& folder, Content& content)
{
    const QString fault = content.read(folder);
    return fault.isEmpty()
        ? Versions::fault(content.versions, folder + QLatin1Char('/') + versionsPath)
        : fault;
}

/** What is said of the same thing, wherever it has moved to. */
QString identityOf(const Finding& finding)
{
    return QStringList {finding.rule, finding.place.table, finding.place.column, finding.message}
        .join(QLatin1Char('\n'));
}

} // namespace

Plan::Plan() = default;
Plan::~Plan() = default;

bool Plan::changesAnything() const
{
    const JournalEntry& entry = release.entry;
    return !tables.isEmpty() || entry.addedFiles + entry.changedFiles + entry.removedFiles > 0;
}

bool Plan::isRefused() const
{
    return std::any_of(findings.begin(), findings.end(),
                       [](const Finding& finding) { return finding.severity == Severity::Error; });
}

QString Plan::publish(const QString& path, const PublishedTree& tree, const PublishOptions& options)
{
    release.entry.action = QStringLiteral("publish");
    Source source;
    QString fault = tree.content().isEmpty() ? QString() : readRelease(tree.content(), before);
    if (fault.isEmpty())
        fault = source.read(path, before, options.encoding);
    if (fault.isEmpty() && before.folder.isEmpty() && !source.versions)
        fault =
            QStringLiteral("nothing is published in %1 yet; what comes first is a whole content "
                           "folder, with app/versions.json")
                .arg(QDir::toNativeSeparators(tree.folder()));
    if (!fault.isEmpty())
        return fault;
    sheetRows = source.sheetRows;
    notes = source.notes;
    findings = source.faults;
    if (!findings.isEmpty())
        return {};
    fault = combine(source, tree, options);
    if (fault.isEmpty() && changesAnything())
        fault = imitate(tree);
    if (fault.isEmpty() && changesAnything())
        judge(options);
    return fault;
}

QString Plan::rollBack(int number, const PublishedTree& tree, const PublishOptions& options)
{
    release.entry.action = QStringLiteral("rollback");
    release.entry.restored = number;
    Content restored;
    QString fault = readRelease(tree.content(), before);
    if (fault.isEmpty())
        fault = restored.read(tree.contentOf(number));
    if (!fault.isEmpty())
        return fault;
    Source source;
    source.take(restored);
    const QMap<QString, int> leftovers = tree.leftoversOf(number);
    for (auto file = leftovers.begin(); file != leftovers.end(); ++file)
        source.files.remove(file.key());
    PublishOptions whole = options;
    whole.isWhole = true;
    fault = combine(source, tree, whole);
    return fault.isEmpty() ? imitate(tree) : fault;
}

QString Plan::combine(const Source& source, const PublishedTree& tree,
                      const PublishOptions& options)
{
    combineTables(source);
    if (options.isWhole) {
        for (auto table = before.tables.begin(); table != before.tables.end(); ++table) {
            if (!source.tables.contains(table.key()))
                notes.append(QStringLiteral("%1 is not among the tables; what is published stays")
                                 .arg(table.key()));
        }
    }
    QByteArray versions;
    QString fault =
        Versions::raise(tables, before.versions.value_or(QByteArray()),
                        source.versions.value_or(QByteArray()), versions, release.entry.tables);
    if (!fault.isEmpty())
        return fault;
    after.versions = versions;
    ReleaseFile file;
    if (before.versions == versions)
        file.kept = before.folder + QLatin1Char('/') + versionsPath;
    file.bytes = versions;
    file.changed = ageOf(versionsPath);
    release.files.insert(versionsPath, file);
    combineFiles(source, tree, options);
    return {};
}

void Plan::combineTables(const Source& source)
{
    after.tables = before.tables;
    for (auto table = source.tables.begin(); table != source.tables.end(); ++table) {
        const auto published = before.tables.find(table.key());
        if (published != before.tables.end() && TableText::areSame(table.key(), *table, *published))
            continue;
        after.tables.insert(table.key(), *table);
        tables.append(table.key());
    }
    for (auto table = after.tables.begin(); table != after.tables.end(); ++table) {
        const QString path = tableFolder + table.key();
        ReleaseFile file;
        if (tables.contains(table.key()))
            file.bytes = *table;
        else
            file.kept = before.folder + QLatin1Char('/') + path;
        file.changed = ageOf(path);
        release.files.insert(path, file);
    }
}

void Plan::combineFiles(const Source& source, const PublishedTree& tree,
                        const PublishOptions& options)
{
    JournalEntry& entry = release.entry;
    const QMap<QString, int> leftovers = tree.leftoversOf(tree.current());
    Source published;
    published.take(before);
    for (auto file = source.files.begin(); file != source.files.end(); ++file) {
        const bool isNew = !published.files.contains(file.key()) || leftovers.contains(file.key());
        const ReleaseFile made = fileFor(file.key(), *file);
        entry.addedFiles += isNew ? 1 : 0;
        entry.changedFiles += !isNew && made.kept.isEmpty() ? 1 : 0;
        release.files.insert(file.key(), made);
    }
    for (auto file = published.files.begin(); file != published.files.end(); ++file) {
        const QString& path = file.key();
        if (release.files.contains(path))
            continue;
        const bool isLeftover = leftovers.contains(path);
        const int last = isLeftover ? leftovers.value(path) : tree.current();
        const bool goes = isLeftover || options.isWhole;
        entry.removedFiles += goes && !isLeftover ? 1 : 0;
        // Clients of every release that could be rolled back to may be about to ask for it.
        if (goes && last <= tree.current() + 1 - options.kept)
            continue;
        if (goes)
            release.leftovers.insert(path, last);
        release.files.insert(path, {*file, QString(), QByteArray(), QDateTime()});
    }
}

ReleaseFile Plan::fileFor(const QString& path, const QString& source)
{
    ReleaseFile file;
    const QString published = before.folder + QLatin1Char('/') + path;
    if (!before.folder.isEmpty() && Disk::areSame(source, published))
        file.kept = published;
    else
        file.source = source;
    file.changed = ageOf(path);
    return file;
}

/** A server tells files apart by size and time, to the second. */
QDateTime Plan::ageOf(const QString& path) const
{
    const QDateTime now = QDateTime::currentDateTimeUtc();
    const QFileInfo published(before.folder + QLatin1Char('/') + path);
    return before.folder.isEmpty() || !published.exists()
        ? now
        : std::max(now, published.lastModified().toUTC().addSecs(1));
}

/** What stays is linked to, so that nothing large is copied only to be looked at. */
QString Plan::imitate(const PublishedTree& tree)
{
    const QString name = tree.previewTemplate();
    QString cause = Disk::makeFolder(QFileInfo(name).path());
    if (!cause.isEmpty())
        return cause;
    m_imitation = std::make_unique<QTemporaryDir>(name);
    if (!m_imitation->isValid())
        return QStringLiteral("%1: %2").arg(QDir::toNativeSeparators(name),
                                            m_imitation->errorString());
    const QDir root(m_imitation->path());
    for (auto file = release.files.begin(); file != release.files.end(); ++file) {
        if (release.leftovers.contains(file.key()))
            continue;
        const QString target = root.filePath(file.key());
        const QString origin = file->kept.isEmpty() ? file->source : file->kept;
        QString fault = Disk::makeFolder(QFileInfo(target).path());
        if (fault.isEmpty() && origin.isEmpty())
            fault = Disk::write(target, file->bytes, file->changed);
        else if (fault.isEmpty())
            fault = Disk::imitate(origin, target);
        if (!fault.isEmpty())
            return fault;
    }
    after.folder = m_imitation->path();
    return {};
}

void Plan::judge(const PublishOptions& options)
{
    Lint lint(options.silenced);
    lint.setPause(options.pause);
    QStringList known;
    if (!before.folder.isEmpty()) {
        for (const Finding& finding : lint.findings(before))
            known.append(identityOf(finding));
    }
    for (const Finding& finding :
         lint.findings(after, before.folder.isEmpty() ? nullptr : &before)) {
        if (finding.severity == Severity::Error || !known.removeOne(identityOf(finding)))
            findings.append(finding);
        else
            ++alreadyKnown;
    }
}
