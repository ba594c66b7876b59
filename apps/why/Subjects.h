#pragma once

#include "why/Explanation.h"
#include "why/RawTable.h"
#include "why/Why.h"

#include <functional>

namespace Why {

/** How one of a kind of things is explained. */
using Explain = std::function<Explanation(const Subject& subject, const RawTable& table)>;

/** Those of the things that a text means: by the whole id, then by the id in another letter case,
 * by the name, by a part of one of them. Each id of a table once. */
QVector<Subject> answering(const QVector<Subject>& all, const QString& text);

/** The answer to a question about a thing of a kind by its id or name: records of its tables and
 *  rows that became none, as answering() finds them. */
Reply replyTo(const QString& kind, const QString& text, const Failures& failures,
              const Files& files, const Explain& explain);

/** Asks the first rules of every record: the table was loaded, a row has the id, it became a record
 *  and did not go. isHeld tells whether the manager has it. */
void askForRecord(Explanation& explanation, const RawTable& table, bool isHeld);

/** The explanation to begin with: the thing, and where it stands. */
Explanation explanationOf(const Subject& subject, const RawTable& table);

/** Why a table has no records, or fewer than its file; empty when it loaded. */
QString loadFault(const TableStatus& status);

/** A file that has an address, by what is on disk. */
Resource resourceAt(const QString& what, const QString& path, const QString& address);
/** There is none. */
Resource noResource(const QString& what, const QString& cause);

/** "G1014 “星光皇冠”"; the id alone where there is no name. */
QString called(const Subject& subject);

} // namespace Why
