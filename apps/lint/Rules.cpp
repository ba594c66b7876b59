#include "lint/Rules.h"

#include <algorithm>

const QVector<RuleInfo>& Rules::all()
{
    using S = Severity;
    static const QVector<RuleInfo> rules {
        {"not-a-table", S::Error, "the file is no table"},
        {"column-twice", S::Error, "two columns have one name"},
        {"missing-column", S::Error, "a column is missing without which nothing is read"},
        {"misspelt-column", S::Warning, "an unknown column is spelt nearly like a known one"},
        {"not-a-row", S::Error, "something between the rows is no row"},
        {"long-row", S::Warning, "a row has more cells than there are columns"},
        {"short-row", S::Error, "a row has fewer cells than there are columns"},

        {"wrong-type", S::Error, "a cell is of a type that reads as 0, false or empty"},
        {"out-of-range", S::Error, "an integer is too large to be read"},
        {"fraction", S::Error, "a number has a fraction where an integer is read"},
        {"unreadable-number", S::Error, "a text is no number where one is parsed"},
        {"bad-date", S::Error, "a text is no date where one is parsed"},
        {"reversed-period", S::Error, "a period ends before it begins"},
        {"outer-blanks", S::Warning, "an id, a name or a file's name begins or ends with blanks"},
        {"invisible-character", S::Warning, "a text holds a character that no font shows"},

        {"duplicate-id", S::Warning, "two rows have one id"},
        {"empty-id", S::Error, "the id of a record is empty"},
        {"dropped-row", S::Warning, "a row becomes no record, though nobody seems to want that"},
        {"unknown-value", S::Warning, "a number means nothing to a client"},
        {"useless-period", S::Warning,
         "a period is over at once, or outside of what it is a part of"},
        {"bad-schedule", S::Error, "a schedule or one of its periods cannot be read"},
        {"schedule-overlap", S::Warning, "two periods of a schedule hold the same time"},
        {"schedule-gap", S::Warning, "a schedule of nearly all day leaves a part of it out"},
        {"placeholder", S::Warning, "words for people hold something that was to be filled in"},
        {"bad-file-name", S::Error, "a name may not be that of a file, or not in an address"},
        {"bad-colour", S::Error, "a text is no colour"},
        {"bad-address", S::Warning, "a text is no web address"},
        {"bad-object", S::Error, "a text is no JSON object where one is read"},
        {"useless-page", S::Warning, "a page tells no address to open embedded, or nearly all"},

        {"dangling-reference", S::Error, "a cell names a record that is not there"},
        {"unused-record", S::Hint, "nothing names a record that is there to be named"},

        {"missing-file", S::Error, "a cell names a file that is not there"},
        {"refused-archive", S::Error, "an archive cannot be unpacked"},
        {"missing-description", S::Error, "an archive lacks the file that tells how to play it"},
        {"unused-file", S::Hint, "nothing names a file"},
        {"letter-case", S::Warning, "two files differ in letter case only"},

        {"bad-versions", S::Error, "the file of the versions is missing or cannot be read"},
        {"unknown-table", S::Error, "there is no table of that name"},
        {"bad-version", S::Error, "a version is no number"},
        {"missing-version", S::Error, "a table has no version"},
        {"missing-table", S::Error, "a version has no table"},
        {"lowered-version", S::Error, "a version is lower than the published one"},
        {"needless-version", S::Warning, "a version was raised, though its table did not change"},
        {"same-version", S::Error, "a table changed, though its version was not raised"},

        {"empty-word", S::Error, "a forbidden word is empty, and masks everything"},
        {"word-without-effect", S::Error, "a forbidden word masks nothing"},
        {"everyday-word", S::Warning, "a forbidden word masks what people say every day"},
        {"metacharacter", S::Warning, "a character of a forbidden word means something else"},
        {"slow-word", S::Warning, "a forbidden word is tried on every line"},
        {"contained-word", S::Hint, "a forbidden word holds another, which does its work"},

        {"shown-otherwise", S::Hint, "clients show something else than by the published tables"},
    };
    return rules;
}

const RuleInfo& Rules::info(Rule rule)
{
    return all().at(static_cast<int>(rule));
}

QString Rules::word(Severity severity)
{
    switch (severity) {
    case Severity::Error:
        return QStringLiteral("error");
    case Severity::Warning:
        return QStringLiteral("warning");
    case Severity::Hint:
        break;
    }
    return QStringLiteral("hint");
}

bool Rules::isName(const QString& name)
{
    return std::any_of(all().begin(), all().end(),
                       [&name](const RuleInfo& rule) { return name == QLatin1String(rule.name); });
}
