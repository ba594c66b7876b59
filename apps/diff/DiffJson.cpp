#include "diff/DiffJson.h"

#include <QJsonObject>

namespace {

QString key(const char* name)
{
    return QString::fromLatin1(name);
}

/** What is said only where there is something to say. */
void addIf(bool condition, const char* name, const QJsonValue& value, QJsonObject& object)
{
    if (condition)
        object.insert(key(name), value);
}

QJsonObject objectOf(const FieldChange& field)
{
    QJsonObject object {{key("column"), field.column}};
    addIf(!field.before.isUndefined(), "old", field.before, object);
    addIf(!field.after.isUndefined(), "new", field.after, object);
    addIf(!field.remark.isEmpty(), "remark", field.remark, object);
    return object;
}

QJsonObject objectOf(const RecordChange& record)
{
    QJsonArray fields;
    for (const FieldChange& field : record.fields)
        fields.append(objectOf(field));
    QJsonObject object {{key("change"), DiffJson::word(record.kind)},
                        {key("key"), record.key},
                        {key("name"), record.name},
                        {key("fields"), fields}};
    addIf(record.rowBefore > 0, "oldRow", record.rowBefore, object);
    addIf(record.rowAfter > 0, "newRow", record.rowAfter, object);
    addIf(!record.leftOutFor.isEmpty(), "leftOutFor", record.leftOutFor, object);
    return object;
}

QJsonObject objectOf(const FileChange& file)
{
    QJsonObject object {{key("change"), DiffJson::word(file.kind)},
                        {key("path"), file.path},
                        {key("records"), QJsonArray::fromStringList(file.records)}};
    addIf(file.kind != Change::Added, "oldBytes", file.sizeBefore, object);
    addIf(file.kind != Change::Removed, "newBytes", file.sizeAfter, object);
    return object;
}

template <class Part>
QJsonArray arrayOf(const QVector<Part>& parts)
{
    QJsonArray array;
    for (const Part& part : parts)
        array.append(objectOf(part));
    return array;
}

QJsonObject objectOf(const TableChange& change)
{
    QJsonObject object {{key("table"), change.table},
                        {key("change"), DiffJson::word(change.kind)},
                        {key("columnsAdded"), QJsonArray::fromStringList(change.columnsAdded)},
                        {key("columnsRemoved"), QJsonArray::fromStringList(change.columnsRemoved)},
                        {key("records"), arrayOf(change.records)},
                        {key("remarks"), QJsonArray::fromStringList(change.remarks)},
                        {key("files"), arrayOf(change.files)}};
    addIf(!change.versionBefore.isUndefined(), "oldVersion", change.versionBefore, object);
    addIf(!change.versionAfter.isUndefined(), "newVersion", change.versionAfter, object);
    addIf(!change.errorBefore.isEmpty(), "oldError", change.errorBefore, object);
    addIf(!change.errorAfter.isEmpty(), "newError", change.errorAfter, object);
    return object;
}

} // namespace

QJsonArray DiffJson::of(const QVector<TableChange>& changes)
{
    QJsonArray all;
    for (const TableChange& change : changes) {
        if (change.isDifferent())
            all.append(objectOf(change));
    }
    return all;
}

QString DiffJson::word(Change kind)
{
    switch (kind) {
    case Change::None:
        break;
    case Change::Added:
        return QStringLiteral("added");
    case Change::Removed:
        return QStringLiteral("removed");
    case Change::Changed:
        return QStringLiteral("changed");
    }
    return QStringLiteral("unchanged");
}
