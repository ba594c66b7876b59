#include "SampleTables.h"

#include <QDateTime>
#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <functional>
#include <stdexcept>

namespace {

/** Makes the cell of a row, as it stands in the file. */
using CellOfRow = std::function<QByteArray(int row)>;

QString dateFormat()
{
    return QStringLiteral("yyyy-MM-dd HH:mm:ss");
}

QByteArray quoted(const QString& text)
{
    return '"' + text.toUtf8() + '"';
}

/** Four of two thousand Chinese characters, others for every row. */
QByteArray phrase(int row)
{
    QString text;
    for (int i = 0; i < 4; ++i, row /= 2000)
        text.append(QChar(0x4e00 + (row + i * 7) % 2000));
    return quoted(text);
}

QByteArray changed(int row)
{
    const int minutes = row * 7;
    const QDate date = QDate(2025, 1, 1).addDays(minutes / (24 * 60));
    return quoted(date.toString(QStringLiteral("yyyy-MM-dd "))
                  + QTime(minutes / 60 % 24, minutes % 60).toString(QStringLiteral("HH:mm:ss")));
}

QByteArray clientParam(int row)
{
    if (row % 3 != 0)
        return quoted({});
    return quoted(QStringLiteral(R"({\"pcIconGeo\":\"%1,6,60,60\",\"showGiftPanelType\":%2})")
                      .arg(row % 7)
                      .arg(row % 5));
}

/** Cells that differ from row to row, as far as there are rows. The first that a key takes is its.
 */
const QVector<CellOfRow>& differing()
{
    static const QVector<CellOfRow> differing {
        [](int row) { return quoted(QStringLiteral("G%1").arg(row)); },
        [](int row) { return QByteArray::number(row); },
        [](int row) { return quoted(QString::number(row)); },
    };
    return differing;
}

CellOfRow oneOf(const QByteArrayList& cells)
{
    return [cells](int row) { return cells.at(row % cells.size()); };
}

/** The same few cells again and again. The first that a column takes is its. */
const QVector<CellOfRow>& recurring()
{
    static const QVector<CellOfRow> recurring {
        oneOf({"\"\"", "\"svip_room\"", "\"\"", "\"星光系列：一份星光\"", "\"app/tab.png\""}),
        oneOf({"0", "1", "2", "10", "300"}),
        oneOf({"true"}),
        oneOf({"\"2025-11-01 00:00:00\"", "\"2026-03-08 12:30:00\"", "\"2026-06-18 23:59:59\""}),
        oneOf({"\"1\"", "\"2\"", "\"30\""}),
    };
    return recurring;
}

/** What a column gets instead, by the names of its table and its own. */
const QHash<QString, CellOfRow>& special()
{
    static const QHash<QString, CellOfRow> special {
        {QStringLiteral("CS_GiftList.giftName"), &phrase},
        {QStringLiteral("CS_GiftList.alterDateTime"), &changed},
        {QStringLiteral("CS_GiftList.pcAnimationName"), oneOf({"\"\""})},
        {QStringLiteral("CS_GiftList.clientParam"), &clientParam},
        {QStringLiteral("GroupWelComeWord.words"), &phrase},
        {QStringLiteral("ChatFilterWordKey.key"), &phrase},
        {QStringLiteral("NewChatFilterWordKey.key"), &phrase},
        {QStringLiteral("CS_BannerConfig.showPosition"), oneOf({"\"pc_anchor\""})},
        {QStringLiteral("CS_BannerConfigNew.showPosition"), oneOf({"\"pc_anchor\""})},
        // No pictures to be fetched, no pages that stay beyond a load.
        {QStringLiteral("CS_BannerConfig.bannerType"), oneOf({"3"})},
        {QStringLiteral("CS_BannerConfigNew.bannerType"), oneOf({"3"})},
        {QStringLiteral("CS_BannerConfig.isCefOpen"), oneOf({"0"})},
        {QStringLiteral("CS_BannerConfigNew.isCefOpen"), oneOf({"0"})},
    };
    return special;
}

QJsonValue valueOf(const QByteArray& cell)
{
    return QJsonDocument::fromJson('[' + cell + ']').array().at(0);
}

CellOfRow cellsFor(const TableStatus& table, const ColumnSchema& column)
{
    const auto own = special().constFind(table.table + QLatin1Char('.') + column.name);
    if (own != special().constEnd())
        return *own;
    const bool isKey = column.name == table.declaration->schema().key;
    for (const CellOfRow& cells : isKey ? differing() : recurring()) {
        if (column.fits == nullptr || column.fits(valueOf(cells(1))))
            return cells;
    }
    throw std::logic_error("no cell fits " + column.name.toStdString());
}

/** The columns, or for the one table that has none, one of phrases. */
QVector<ColumnSchema> columnsOf(const TableStatus& table)
{
    const QVector<ColumnSchema>& columns = table.declaration->schema().columns;
    if (!columns.isEmpty())
        return columns;
    ColumnSchema phrases;
    phrases.name = QStringLiteral("words");
    return {phrases};
}

/** What a column's field shows of a cell, where that is plainly told; undefined elsewhere. */
QJsonValue plainValue(const ColumnSchema& column, const QJsonValue& cell)
{
    static const QStringList asItStands {QStringLiteral("text"), QStringLiteral("integer"),
                                         QStringLiteral("flag"), QStringLiteral("number")};
    if (column.field != column.name)
        return QJsonValue::Undefined;
    if (asItStands.contains(column.conversion))
        return cell;
    const QDateTime date = QDateTime::fromString(cell.toString(), dateFormat());
    if (column.conversion == QLatin1String("date as seconds"))
        return date.toSecsSinceEpoch();
    if (column.conversion == QLatin1String("date as seconds written as text"))
        return QString::number(date.toSecsSinceEpoch());
    return QJsonValue::Undefined;
}

/** By a record's key what it should show. */
QHash<QString, QJsonObject> plainRecords(const TableSchema& schema, const QJsonObject& table)
{
    const QJsonArray names = table.value(QLatin1String("columns")).toArray();
    QHash<QString, QJsonObject> records;
    for (const QJsonValue& row : table.value(QLatin1String("rows")).toArray()) {
        QJsonObject record;
        QString key;
        for (const ColumnSchema& column : schema.columns) {
            int index = 0;
            while (names.at(index) != column.name)
                ++index;
            const QJsonValue cell = row.toArray().at(index);
            const QJsonValue value = plainValue(column, cell);
            if (!value.isUndefined())
                record.insert(column.name, value);
            if (column.name == schema.key)
                key = cell.toVariant().toString();
        }
        records.insert(key, record);
    }
    return records;
}

} // namespace

QByteArray SampleTables::bytes(const TableStatus& table, int rows)
{
    QByteArrayList names;
    QVector<CellOfRow> cells;
    for (const ColumnSchema& column : columnsOf(table)) {
        names.append(quoted(column.name));
        cells.append(cellsFor(table, column));
    }
    QByteArrayList lines;
    for (int row = 0; row < rows; ++row) {
        QByteArrayList line;
        for (int i = 0; i < cells.size(); ++i)
            line.append(cells.at(i)(row + 1));
        lines.append('[' + line.join(',') + ']');
    }
    return "{\"columns\":[" + names.join(',') + "],\"rows\":[" + lines.join(",\n") + "]}\n";
}

QString SampleTables::difference(const TableStatus& table, const QByteArray& bytes)
{
    const QJsonObject whole = QJsonDocument::fromJson(bytes).object();
    const int rows = whole.value(QLatin1String("rows")).toArray().size();
    if (table.declaration->recordCount() != rows)
        return QStringLiteral("%1: %2 records of %3 rows")
            .arg(table.table, QString::number(table.declaration->recordCount()),
                 QString::number(rows));
    const TableSchema& schema = table.declaration->schema();
    if (schema.key.isEmpty())
        return {};
    const auto expected = plainRecords(schema, whole);
    for (const QJsonValue& record : table.declaration->records()) {
        const QJsonObject shown = record.toObject();
        const QString key = shown.value(schema.key).toVariant().toString();
        const QJsonObject plain = expected.value(key);
        for (auto member = plain.begin(); member != plain.end(); ++member) {
            if (shown.value(member.key()) != member.value())
                return QStringLiteral("%1: record %2 differs in %3")
                    .arg(table.table, key, member.key());
        }
    }
    return {};
}
