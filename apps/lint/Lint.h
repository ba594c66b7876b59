#pragma once

#include "content/Content.h"
#include "lint/Archives.h"
#include "lint/Findings.h"

#include <QDateTime>
#include <QStringList>
#include <QVector>

#include <functional>

/**
 * Tells what clients would silently do with content, by the library's own declarations and readers.
 * Prints nothing, and writes nothing but into a temporary folder for the archives. GUI thread.
 */
class Lint
{
public:
    /** Rules are silenced by name; no forbidden word may mask one of the phrases. */
    explicit Lint(const QStringList& silenced = {}, const QStringList& phrases = everydayPhrases());

    /** Called now and then during the work, with what comes next; what it throws ends the work,
     * with nothing left behind. */
    void setPause(const std::function<void(const QString& what)>& pause);

    /**
     * In the order of the tables, and within each of the rows. The published content is what
     * clients have now, where that is at hand. What they show is compared at a valid moment only,
     * and loads the tables into the managers of this process.
     */
    QVector<Finding> findings(const Content& content, const Content* published = nullptr,
                              const QDateTime& moment = {});

    /** Phrases of a chat that nobody wants masked. */
    static QStringList everydayPhrases();

private:
    QStringList m_silenced;
    QStringList m_phrases;
    Archives m_archives;
    std::function<void(const QString&)> m_pause = [](const QString&) {};
};
