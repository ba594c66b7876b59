#pragma once

#include "content/Content.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <functional>

/** One of the two that "zglobal diff" compares: a folder, a file or a server. */
class DiffSide
{
public:
    /** Reads or fetches it, pictures apart; throws a Failure. */
    explicit DiffSide(const QString& argument);

    /** Two files are one table, whatever they are called; beside a folder or server with all there
     *  is, only those tables count that the other side has. */
    static void adapt(DiffSide& before, DiffSide& after);

    const Content& content() const { return m_content; }
    const QString& title() const { return m_title; }

    /** What reads files by their paths in the content folder; of a server's these, fetched now.
     *  Null where there are tables only. Throws a Failure. */
    std::function<QByteArray(const QString& path)> reader(const QStringList& paths) const;

private:
    bool isWhole() const { return m_isServer || !m_content.folder.isEmpty(); }
    void keepTablesOf(const Content& other);

    QString m_title;
    bool m_isServer = false;
    bool m_isFile = false;
    Content m_content;
};
