#include "tidy/TidyPass.h"

#include "datatable/CacheNames.h"
#include "datatable/LogCategories.h"

#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <QThread>

#include <algorithm>

namespace {

constexpr qint64 oldAfter = 604800; // seconds: seven days
constexpr unsigned long pause = 1;  // milliseconds

bool isEnding()
{
    return QThread::currentThread()->isInterruptionRequested();
}

QDir directory(const QString& folder, TidyPass::Kind kind)
{
    const QDir::Filters wanted =
        kind == TidyPass::Files ? QDir::Files : QDir::Dirs | QDir::NoDotAndDotDot;
    return QDir(folder, QString(), QDir::IgnoreCase, wanted);
}

TidyAge ageOf(const QDateTime& modified)
{
    if (!modified.isValid())
        return TidyAge::Unknown;
    const bool old = modified.secsTo(QDateTime::currentDateTime()) >= oldAfter;
    return old ? TidyAge::Old : TidyAge::Recent;
}

bool isLink(const QString& path)
{
    const QFileInfo info(path);
    return info.isSymLink() || info.isJunction();
}

/** The link alone: what it leads to is not ours. */
bool removeLink(const QString& path)
{
    return QFile::remove(path) || QDir().rmdir(path);
}

bool removeFolder(const QString& path, const QString& name)
{
    if (isLink(path))
        return removeLink(path);
    // The description first: its presence tells that everything is there.
    const QString description =
        QStringLiteral("%1/%2.flajson").arg(path, CacheNames::VersionedName::split(name).name);
    if (QFile::exists(description) && !QFile::remove(description))
        return false;
    // Then the files, one by one, so that a large folder does not hold up the end of the process.
    QDirIterator files(path, QDir::Files | QDir::Hidden | QDir::System,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        if (isEnding())
            return false;
        QFile::remove(files.next());
    }
    return QDir(path).removeRecursively();
}

qint64 bytesIn(const QString& path)
{
    const QFileInfo info(path);
    if (!info.isDir() || isLink(path))
        return info.size();
    qint64 sum = 0;
    QDirIterator files(path, QDir::Files | QDir::Hidden | QDir::System,
                       QDirIterator::Subdirectories);
    while (files.hasNext() && !isEnding()) {
        files.next();
        sum += files.fileInfo().size();
    }
    return sum;
}

} // namespace

TidyPass::TidyPass(const QString& title, const QString& folder, Kind kind, TidyPlan* plan)
    : m_title(title)
    , m_folder(folder)
    , m_kind(kind)
    , m_plan(plan)
{
    m_noted.path = folder;
}

void TidyPass::run(std::initializer_list<Count> shown,
                   const std::function<void(const TidyEntry&)>& visit,
                   const std::function<void()>& beforehand)
{
    if (begin()) {
        if (beforehand)
            beforehand();
        if (walk(visit))
            logEnd(shown);
    }
    if (m_plan == nullptr)
        return;
    joinWhatGoesWhole();
    for (TidyDecision& decision : m_noted.decisions)
        decision.bytes = bytesIn(decision.path);
    m_plan->append(m_noted);
}

void TidyPass::joinWhatGoesWhole()
{
    QSet<QString> going;
    for (const TidyDecision& decision : qAsConst(m_noted.decisions)) {
        if (decision.action == TidyDecision::Remove)
            going.insert(decision.path);
    }
    auto& decisions = m_noted.decisions;
    const auto isInside = [&going](const TidyDecision& decision) {
        return going.contains(QFileInfo(decision.path).path());
    };
    decisions.erase(std::remove_if(decisions.begin(), decisions.end(), isInside), decisions.end());
}

bool TidyPass::begin()
{
    if (isEnding())
        return false;
    log(QStringLiteral("start"));
    if (m_folder.isEmpty()) {
        log(QStringLiteral("dir name empty"));
        return false;
    }
    if (!directory(m_folder, m_kind).exists()) {
        log(QStringLiteral("dir not exists"));
        return false;
    }
    m_noted.exists = true;
    return true;
}

bool TidyPass::walk(const std::function<void(const TidyEntry&)>& visit) const
{
    QDirIterator entries(directory(m_folder, m_kind));
    while (entries.hasNext() && !isEnding()) {
        const QString path = entries.next();
        const QString name = entries.fileName();
        if (name.isEmpty()) {
            log(m_kind == Files ? QStringLiteral("has empty filename")
                                : QStringLiteral("has empty dirname"));
            break;
        }
        visit(entry(path, name));
        if (m_plan == nullptr)
            QThread::msleep(pause); // a large cache is tidied slowly rather than hogging the disk
    }
    return !isEnding();
}

TidyEntry TidyPass::entry(const QString& path, const QString& name) const
{
    QDateTime modified;
    const auto parts = CacheNames::VersionedName::split(name);
    if (m_kind == Files)
        modified = QFileInfo(path).lastModified();
    else if (!path.isEmpty() && parts.isValid())
        modified = QFileInfo(QStringLiteral("%1/%2").arg(path, parts.name)).lastModified();
    return {path, name, ageOf(modified), modified};
}

void TidyPass::keep(const TidyEntry& entry, TidyDecision::Reason reason, int TidyCounts::*count)
{
    if (count != nullptr)
        ++(m_counts.*count);
    note(entry.path, TidyDecision::Keep, reason, entry.modified);
}

void TidyPass::discard(const TidyEntry& entry, TidyDecision::Reason reason, const QString& action,
                       const QString& shown)
{
    if (entry.age == TidyAge::Recent) {
        keep(entry, TidyDecision::Recent, &TidyCounts::delayed);
        return;
    }
    ++m_counts.removed;
    note(entry.path, TidyDecision::Remove, reason, entry.modified);
    if (m_plan != nullptr)
        return;
    const bool removed =
        m_kind == Files ? QFile::remove(entry.path) : removeFolder(entry.path, entry.name);
    if (removed || !isEnding()) // a removal that was cut short has not failed
        logRemoval(action, shown, removed);
}

void TidyPass::discardTemporary(const TidyEntry& entry)
{
    if (entry.age != TidyAge::Old) {
        const bool isRecent = entry.age == TidyAge::Recent;
        keep(entry, isRecent ? TidyDecision::Recent : TidyDecision::UnknownAge,
             &TidyCounts::delayed);
        return;
    }
    ++m_counts.removed;
    note(entry.path, TidyDecision::Remove, TidyDecision::Temporary, entry.modified);
    if (m_plan == nullptr && !QFile::remove(entry.path))
        logRemoval(QStringLiteral("remove"), entry.name, false);
}

void TidyPass::removeArchiveIfOld(const TidyEntry& entry)
{
    if (entry.age != TidyAge::Old || isLink(entry.path))
        return;
    const QString archive = QStringLiteral("%1/%2").arg(entry.path, entry.name);
    if (!QFile::exists(archive))
        return;
    if (QFileInfo(archive).isFile()) // what is none cannot be removed
        note(archive, TidyDecision::Remove, TidyDecision::Unpacked, entry.modified);
    if (m_plan == nullptr && !QFile::remove(archive))
        logRemoval(QStringLiteral("zip remove"), archive, false);
}

void TidyPass::note(const QString& path, TidyDecision::Action action, TidyDecision::Reason reason,
                    const QDateTime& modified)
{
    if (m_plan == nullptr || !QFileInfo::exists(path))
        return;
    const TidyDecision decision {path, action, reason, modified};
    const auto place = m_places.constFind(path);
    if (place != m_places.constEnd()) { // a higher version was met after it
        m_noted.decisions[*place] = decision;
        return;
    }
    m_places.insert(path, static_cast<int>(m_noted.decisions.size()));
    m_noted.decisions.append(decision);
}

void TidyPass::logEnd(std::initializer_list<Count> shown) const
{
    QStringList counts;
    for (const Count count : shown) {
        switch (count) {
        case Used:
            counts.append(QStringLiteral("use=%1").arg(m_counts.use));
            break;
        case Removed:
            counts.append(QStringLiteral("delete=%1").arg(m_counts.removed));
            break;
        case Delayed:
            counts.append(QStringLiteral("delay=%1").arg(m_counts.delayed));
            break;
        case Ignored:
            counts.append(QStringLiteral("ignore=%1").arg(m_counts.ignored));
            break;
        }
    }
    log(QStringLiteral("end:") + counts.join(QLatin1Char(',')));
}

void TidyPass::log(const QString& text) const
{
    if (m_plan == nullptr)
        qCInfo(LogCategories::tidy).noquote() << QString(m_title + QLatin1Char(' ') + text);
}

void TidyPass::logRemoval(const QString& action, const QString& shown, bool result) const
{
    log(QStringLiteral("%1=%2,result=%3")
            .arg(action, shown, result ? QStringLiteral("1") : QStringLiteral("0")));
}
