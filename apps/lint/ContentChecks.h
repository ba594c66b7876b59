#pragma once

#include <QDateTime>
#include <QStringList>
#include <QVector>

class Archives;
class Findings;
class Table;
struct Content;

/** What is looked for in several tables, and in what is published beside them. */
namespace ContentChecks {

/** What cells name in other tables. */
void checkReferences(const QVector<Table>& tables, Findings& findings);

/** What cells name in the content folder, and what is there without. */
void checkFiles(const Content& content, const QVector<Table>& tables, Archives& archives,
                Findings& findings);

/** The versions, and which tables there are. */
void checkVersions(const Content& content, const QVector<Table>& tables, Findings& findings);

/** The same against what clients have now. */
void checkChanges(const Content& content, const Content& published, Findings& findings);

/**
 * The gifts on sale, the pictures of head frames and the order of banners at a moment, against
 * those by the published tables. Loads the tables into the managers of this process.
 */
void checkShown(const Content& content, const Content& published, const QDateTime& moment,
                Findings& findings);

/** The lists of forbidden words; the phrases are what nobody wants masked. */
void checkWords(const QVector<Table>& tables, const QStringList& phrases, Findings& findings);

} // namespace ContentChecks
