#pragma once

#include "client/ClientResults.h"
#include "why/Explanation.h"

#include <QDateTime>
#include <QString>
#include <QVector>

#include <functional>
#include <memory>

/**
 * Questions about what the client of this process shows, answered from what its managers hold and
 * from the files of their tables, which are read at once where none are handed over. A thing is
 * named by its id, or by its name or a part of that, whatever the letter case. Nothing is loaded,
 * fetched or changed. The failures are those that the client knows of: a table that was put back to
 * an earlier version is told of. GUI thread only.
 */
namespace Why {

class RawTable;

using Failures = QVector<ZClientFailure>;

/** The files of tables, by their names, as they lie there at the moment; none is null. */
using Files = std::function<std::shared_ptr<const RawTable>(const QString& table)>;

/** Reads the file of a table. */
std::shared_ptr<const RawTable> readFile(const QString& table);

/** The tables whose files an answer about a gift, a banner, a frame or a page asks for. */
QStringList tablesOf(const QString& kind);

/** Whether a gift can be sent from the gift panel at a moment, as checkGiftValid() answers; its
 *  label, picture and animations. */
Reply gift(const QString& idOrName, const QDateTime& moment, const Failures& failures,
           const Files& files = &readFile);

/** Whether a banner is in one of the two lists, and at which place; its picture and its page. */
Reply banner(const QString& idOrName, const Failures& failures, const Files& files = &readFile);

/** Which picture a head frame has at a moment, and which period decides. */
Reply frame(const QString& idOrName, const QDateTime& moment, const Failures& failures,
            const Files& files = &readFile);

/** Which stretches of a chat line are masked and by which words, or what comes near to it. */
Explanation masked(const QString& text);

/** Whether an address opens in the embedded browser, and whose page decides. */
Explanation page(const QString& address, const Files& files = &readFile);

/** What became of a table: version, file, load, rows and records. */
Reply table(const QString& name, const Failures& failures);

} // namespace Why
