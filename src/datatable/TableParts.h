#pragma once

#include <QtGlobal>

#include <cstddef>

/**
 * The parts of a table's declaration besides its columns; see DeclaredTable. In all of them a
 * field is a pointer to a member of the record, a container one to a member of the manager.
 */
namespace TableParts {

/** Rows go into a map by this field, a later one replacing an earlier one of its key. */
template <class Field, class Container>
struct KeyedBy
{
    Field field;
    Container container;
};
template <class Field, class Container>
KeyedBy(Field, Container) -> KeyedBy<Field, Container>;

/** The same for a map that other tables go into too, which a load therefore does not empty. */
template <class Field, class Container>
struct JoinedBy
{
    Field field;
    Container container;
};
template <class Field, class Container>
JoinedBy(Field, Container) -> JoinedBy<Field, Container>;

/** Rows go into a list in table order; the field names a record, where no map says what does. */
template <class Container, class Field = std::nullptr_t>
struct Listed
{
    Container container;
    Field field {};
};
template <class Container>
Listed(Container) -> Listed<Container>;
template <class Container, class Field>
Listed(Container, Field) -> Listed<Container, Field>;

/** Rows go into lists by this field, in table order within each. */
template <class Field, class Container>
struct GroupedBy
{
    Field field;
    Container container;
};
template <class Field, class Container>
GroupedBy(Field, Container) -> GroupedBy<Field, Container>;

/**
 * A row for which condition(row) holds goes nowhere; the field's column says so by the remark. In a
 * table that lacks the column it holds for no row, unless said otherwise.
 */
template <class Field, class Condition>
struct LeftOut
{
    Field field;
    const char* remark;
    Condition condition;
    bool evenWithoutColumn = false;
};
template <class Field, class Condition>
LeftOut(Field, const char*, Condition) -> LeftOut<Field, Condition>;
template <class Field, class Condition>
LeftOut(Field, const char*, Condition, bool) -> LeftOut<Field, Condition>;

/** call(row) makes the record of a row where reading the cells does not do. */
template <class Call>
struct MadeBy
{
    Call call;
};
template <class Call>
MadeBy(Call) -> MadeBy<Call>;

/** call(manager, row, cells) for every row, before it is known whether it is left out. */
template <class Call>
struct EachRow
{
    Call call;
};
template <class Call>
EachRow(Call) -> EachRow<Call>;

/** A further container that a load empties. */
template <class Container>
struct Emptied
{
    Container container;
};
template <class Container>
Emptied(Container) -> Emptied<Container>;

/** call(manager) before the file is read, whether or not it can be. */
template <class Call>
struct Beforehand
{
    Call call;
};
template <class Call>
Beforehand(Call) -> Beforehand<Call>;

/** call(manager, rows) once the file is read, before the columns are looked for. */
template <class Call>
struct OnceRead
{
    Call call;
};
template <class Call>
OnceRead(Call) -> OnceRead<Call>;

/** call(manager), or a signal, after a successful load; in order with Logs. */
template <class Call>
struct Afterwards
{
    Call call;
};
template <class Call>
Afterwards(Call) -> Afterwards<Call>;

/** The log line of a successful load, on the debug or the information channel. */
struct Logs
{
    const char* line;
    QtMsgType channel = QtDebugMsg;
};

/** What becomes of two rows of one key, where more is to be said than follows from the rest. */
struct Duplicates
{
    const char* words;
};

} // namespace TableParts
