#pragma once

#include "content/Content.h"
#include "lint/Findings.h"
#include "publish/PublishedTree.h"

#include <QHash>
#include <QString>
#include <QStringList>
#include <QVector>

#include <functional>
#include <memory>

QT_BEGIN_NAMESPACE
class QTemporaryDir;
QT_END_NAMESPACE
struct Source;

/** How somebody wants something published. */
struct PublishOptions
{
    QStringList silenced; ///< rules, by name
    QString encoding;     ///< of the sheets; empty when they tell it
    bool isWhole = false; ///< what the source lacks is taken away, tables apart
    int kept = 5;         ///< so many releases, the new one among them
    /** Called now and then, with what is looked over next; what it throws ends the planning. */
    std::function<void(const QString& what)> pause = [](const QString&) {};
};

/** A release that is to be, what is to be said of it, and what it would change. */
class Plan
{
public:
    Plan();
    ~Plan();
    Q_DISABLE_COPY(Plan)

    /**
     * The source on top of what is published, looked over as a client would read it. Writes nothing
     * but into a temporary folder. Answers why that cannot be done, or an empty text.
     */
    QString publish(const QString& source, const PublishedTree& tree,
                    const PublishOptions& options);

    /** The content of a release that is kept, under new versions; it was looked over in its time.
     */
    QString rollBack(int release, const PublishedTree& tree, const PublishOptions& options);

    /** Whether there is something to publish. */
    bool changesAnything() const;

    /** Whether something was found that clients would refuse, lose or show wrong. */
    bool isRefused() const;

    Release release;
    Content before;            ///< what clients have; empty where nothing is published
    Content after;             ///< what they would get
    QStringList tables;        ///< those that change, with and without a version
    QVector<Finding> findings; ///< every error; warnings and hints that are not published already
    int alreadyKnown = 0;      ///< how many of those are
    QHash<QString, QVector<int>> sheetRows; ///< as in Source
    QStringList notes;                      ///< what was decided by the way

private:
    QString combine(const Source& source, const PublishedTree& tree, const PublishOptions& options);
    void combineTables(const Source& source);
    void combineFiles(const Source& source, const PublishedTree& tree,
                      const PublishOptions& options);
    ReleaseFile fileFor(const QString& path, const QString& source);
    QDateTime ageOf(const QString& path) const;
    QString imitate(const PublishedTree& tree);
    void judge(const PublishOptions& options);

    std::unique_ptr<QTemporaryDir> m_imitation; // of the content folder, with links
};
