#pragma once

#include <QString>
#include <QVector>

/** How bad a finding is. */
enum class Severity {
    Error,   ///< a client refuses it, loses it or shows it wrong
    Warning, ///< likely a mistake
    Hint,    ///< worth a look
};

/** What may be found, in the order of the rules' list. */
enum class Rule {
    NotATable,
    ColumnTwice,
    MissingColumn,
    MisspeltColumn,
    NotARow,
    LongRow,
    ShortRow,

    WrongType,
    OutOfRange,
    Fraction,
    UnreadableNumber,
    BadDate,
    ReversedPeriod,
    OuterBlanks,
    InvisibleCharacter,

    DuplicateId,
    EmptyId,
    DroppedRow,
    UnknownValue,
    UselessPeriod,
    BadSchedule,
    ScheduleOverlap,
    ScheduleGap,
    Placeholder,
    BadFileName,
    BadColour,
    BadAddress,
    BadObject,
    UselessPage,

    DanglingReference,
    UnusedRecord,

    MissingFile,
    RefusedArchive,
    MissingDescription,
    UnusedFile,
    LetterCase,

    BadVersions,
    UnknownTable,
    BadVersion,
    MissingVersion,
    MissingTable,
    LoweredVersion,
    NeedlessVersion,
    SameVersion,

    EmptyWord,
    WordWithoutEffect,
    EverydayWord,
    Metacharacter,
    SlowWord,
    ContainedWord,

    ShownOtherwise,
};

/** A rule in words. Its name is what silences it. */
struct RuleInfo
{
    const char* name;
    Severity severity;
    const char* summary;
};

namespace Rules {

/** Every rule; an element's place is the value of its Rule. */
const QVector<RuleInfo>& all();

const RuleInfo& info(Rule rule);

/** "error", "warning" or "hint". */
QString word(Severity severity);

/** Whether there is a rule of that name. */
bool isName(const QString& name);

} // namespace Rules
