#pragma once

#include "publish/Release.h"

#include <QMap>
#include <QString>
#include <QVector>

#include <functional>
#include <memory>

class FolderLock;

/**
 * A folder that a server serves out of, which goes from one release to the next in one step:
 *
 *     current          leads to the content of one release; the server's root
 *     journal.jsonl    leads to the journal of the same release
 *     releases/12/     content/, journal.jsonl and leftovers.json
 *
 * Whatever ends a process that publishes, and when: "current" leads to a whole release, the old one
 * or the new. What such a process leaves behind goes with the next release. Prints nothing. All
 * operations answer why they failed, or an empty text.
 */
class PublishedTree
{
public:
    /** Files done and all there are; may throw, and then nothing is published. */
    using Progress = std::function<void(int done, int all)>;

    /** The folder need not be there yet. */
    explicit PublishedTree(const QString& folder);
    ~PublishedTree();
    Q_DISABLE_COPY(PublishedTree)

    /** Looks at the folder; to be called first, and again where it may have changed. */
    QString open();

    const QString& folder() const { return m_folder; }

    /** Whether the folder is itself a content folder, without releases. */
    bool isPlain() const { return m_isPlain; }

    /** The number of the release that is served; 0 when there is none. */
    int current() const { return m_current; }

    /** The content folder that is served; empty when there is none. */
    QString content() const;

    /** Whether the release is still kept. */
    bool has(int release) const;
    QString contentOf(int release) const;
    QMap<QString, int> leftoversOf(int release) const;

    /** From the first release to the current one, those no longer kept among them. */
    QVector<JournalEntry> journal() const;

    /** From now on nobody else publishes into the folder, which is made where it is not there. */
    QString lock();

    /** Where a folder can be made to look over what is planned, as QTemporaryDir takes it. It goes
     *  with its maker or, where that was killed, with the next lock(). Without a lock nothing is
     *  written into the tree, and the system's place is named. */
    QString previewTemplate() const;

    /** Makes the plain content a release. */
    QString adopt(const Progress& progress);

    /** Publishes the release, whose number and time are filled in, and keeps that many. */
    QString add(Release& release, int kept, const Progress& progress);

private:
    QString path(const QString& name) const { return m_folder + QLatin1Char('/') + name; }
    QString folderOf(int release) const;
    QString writeRelease(const QString& folder, const Release& release, const Progress& progress);
    QString writeFile(const QString& target, const QString& path, const ReleaseFile& file);
    QString writeRecords(const QString& folder, const Release& release);
    QString turnTo(int release);
    void sweep(int kept);
    void sweepPreviews() const;

    QString m_folder;
    bool m_isPlain = false;
    bool m_isMade = false; // by lock()
    int m_current = 0;
    std::unique_ptr<FolderLock> m_lock;
};
