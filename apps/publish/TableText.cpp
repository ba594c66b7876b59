#include "publish/TableText.h"

#include "content/Table.h"

#include <QJsonDocument>

#include <algorithm>

namespace {

QByteArray textOf(const QJsonArray& cells)
{
    return QJsonDocument(cells).toJson(QJsonDocument::Compact);
}

bool areSameRows(const Table& left, const Table& right, const QStringList& columns)
{
    const auto isSame = [&](const Row& row, const Row& other) {
        return std::all_of(columns.begin(), columns.end(), [&](const QString& column) {
            return left.cell(row, column) == right.cell(other, column);
        });
    };
    return std::equal(left.rows().begin(), left.rows().end(), right.rows().begin(),
                      right.rows().end(), isSame);
}

/** Whether nothing but rows and blanked ones is among the rows. */
bool isClean(const Table& table)
{
    const QJsonArray& all = table.elements();
    return std::all_of(all.begin(), all.end(), [](const QJsonValue& element) {
        return element.isArray() || element.isNull();
    });
}

} // namespace

QByteArray TableText::file(const QStringList& columns, const QVector<QJsonArray>& rows)
{
    QByteArray text =
        "{\"columns\": " + textOf(QJsonArray::fromStringList(columns)) + ",\n\"rows\": [";
    for (int i = 0; i < rows.size(); ++i)
        text += (i == 0 ? "\n" : ",\n") + textOf(rows.at(i));
    return text + "\n]}\n";
}

QStringList TableText::columnsOf(const Table& table)
{
    QStringList columns = table.header().keys();
    std::sort(columns.begin(), columns.end(), [&table](const QString& left, const QString& right) {
        return table.header().value(left) < table.header().value(right);
    });
    return columns;
}

QString TableText::shown(const QJsonValue& cell)
{
    if (cell.isString())
        return cell.toString();
    if (cell.isBool())
        return cell.toBool() ? QStringLiteral("TRUE") : QStringLiteral("FALSE");
    if (cell.isNull() || cell.isUndefined())
        return {};
    const QByteArray text = textOf({cell});
    return QString::fromUtf8(text.mid(1, text.size() - 2));
}

QVector<QStringList> TableText::sheet(const Table& table)
{
    const QStringList columns = columnsOf(table);
    QVector<QStringList> rows {columns};
    for (const Row& row : table.rows()) {
        QStringList cells;
        for (const QString& column : columns)
            cells.append(shown(table.cell(row, column)));
        rows.append(cells);
    }
    return rows;
}

bool TableText::areSame(const QString& name, const QByteArray& left, const QByteArray& right)
{
    if (left == right)
        return true;
    const Table a(name, left);
    const Table b(name, right);
    if (!a.error().isEmpty() || !b.error().isEmpty() || !isClean(a) || !isClean(b))
        return false;
    QStringList columns = a.header().keys();
    QStringList others = b.header().keys();
    columns.sort();
    others.sort();
    return columns == others && areSameRows(a, b, columns);
}
