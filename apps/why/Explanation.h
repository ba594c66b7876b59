#pragma once

#include <QDateTime>
#include <QJsonObject>
#include <QString>
#include <QVector>

/** Why something is shown, or is not, in the client of this process. */
namespace Why {

/** Where a record stands, or would. */
struct Origin
{
    QString table;
    int row = 0; ///< from 1, what stands in place of a row counts; 0 when no row is meant
    int version = 0;
    QString file;       ///< of that version
    qint64 size = 0;    ///< 0 when the file is missing
    QDateTime modified; ///< invalid when it is missing
};

/** A rule that was asked, in the order of asking. */
struct Step
{
    enum Answer { Yes, No, NotReached };
    QString rule; ///< what holds with Yes, as in "its sale has begun"
    Answer answer = NotReached;
    QString value; ///< what the rule looked at; empty when it was not reached
};

/** A picture or an animation that belongs to the thing. */
struct Resource
{
    enum State {
        None,       ///< the thing has none
        NotFetched, ///< it has one, but no file is there
        There,
    };
    QString what;
    State state = None;
    QString path;
    QString address;
    QString cause; ///< why there is none
};

/** A stretch of a text that a forbidden word covers. */
struct Mask
{
    QString word;
    QString table;
    int row = 0;   ///< of the word; 0 when the file on disk has it no more
    int start = 0; ///< in the text, counted in UTF-16 units
    int length = 0;
};

/** Something else that is worth to know. */
struct Remark
{
    QString what;
    QString value;
};

/** What can be asked about. */
struct Subject
{
    QString kind; ///< "gift", "banner", "frame", "text", "page" or "table"
    QString table;
    QString id;
    QString name;
};

struct Explanation
{
    Subject subject;
    bool holds = false; ///< shown, can be sent, masked, embedded, loaded
    QString verdict;    ///< the same in words, with the cause
    QVector<Step> steps;
    int deciding = -1; ///< the step that settled it; -1 when all had to hold, and do
    QVector<Resource> resources;
    QVector<Mask> masks; ///< of a text, in the order of masking
    QVector<Remark> remarks;
    QVector<Origin> origins; ///< of the thing first, then of what else the answer hangs on

    /** Adds a rule; one that does not hold decides, and what follows is not reached. */
    bool ask(const QString& rule, bool answer, const QString& value);
    bool isDecided() const { return deciding >= 0; }
};

/** What came of a question: explanations of the one thing that was meant, of which two tables may
 *  have something to say; or all the things that may have been meant; or neither. */
struct Reply
{
    QVector<Explanation> explanations;
    QVector<Subject> candidates; ///< in the order of their tables
    QString fault;               ///< where there is neither: what was looked for, and where
};

/** With the names of the members above. */
QJsonObject asJson(const Explanation& explanation);
QJsonObject asJson(const Subject& subject);

} // namespace Why
