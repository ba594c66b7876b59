#include "content/Table.h"

#include "host/ZGlobalConfig.h"

#include <QJsonDocument>
#include <QVariant>

namespace {

/** Where bytes cease to be JSON, as editors count: characters of a line; empty when they are JSON.
 */
QString placeOfFault(const QByteArray& bytes)
{
    QJsonParseError fault;
    QJsonDocument::fromJson(bytes, &fault);
    if (fault.error == QJsonParseError::NoError)
        return {};
    // Of other faults the character is already read.
    const int read = fault.error == QJsonParseError::IllegalNumber ? 1 : 0;
    const QByteArray before = bytes.left(fault.offset + read);
    const QByteArray line = before.mid(before.lastIndexOf('\n') + 1);
    return QStringLiteral("line %1, column %2: ")
        .arg(QString::number(before.count('\n') + 1),
             QString::number(QString::fromUtf8(line).size()));
}

} // namespace

Table::Table(const QString& name, const QByteArray& bytes)
    : m_name(name)
    , m_reader(tableEntry(name))
{
    if (m_reader != nullptr)
        m_schema = m_reader->reader.declaration().schema();
    for (int i = 0; i < columns().size(); ++i)
        m_places.insert(columns().at(i).name, i);
    if (!ZGlobalConfig::readTableFile(bytes, m_header, m_elements, &m_error))
        m_error.prepend(placeOfFault(bytes));
    QJsonArray rows;
    for (int i = 0; i < m_elements.size(); ++i) {
        if (!m_elements.at(i).isArray())
            continue;
        m_rows.append({i + 1, m_elements.at(i).toArray(), QString()});
        rows.append(m_elements.at(i));
    }
    if (m_reader == nullptr)
        return;
    const QStringList leftOut = m_reader->reader.declaration().leftOutFor(m_header, rows);
    for (int i = 0; i < m_rows.size(); ++i)
        m_rows[i].leftOutFor = leftOut.at(i);
}

const ColumnSchema* Table::column(const QString& name) const
{
    const int place = m_places.value(name, -1);
    return place < 0 ? nullptr : &columns().at(place);
}

bool Table::isRefused() const
{
    return !m_error.isEmpty()
        || (m_reader != nullptr
            && !m_reader->reader.declaration().missingColumn(m_header).isEmpty());
}

QJsonValue Table::cell(const Row& row, const QString& column) const
{
    const int index = m_header.value(column, -1);
    return index < 0 || index >= row.cells.size() ? QJsonValue(QJsonValue::Undefined)
                                                  : row.cells.at(index);
}

QJsonValue Table::value(const Row& row, const QString& name) const
{
    const QJsonValue stands = cell(row, name);
    const ColumnSchema* schema = column(name);
    return schema == nullptr || schema->becomes == nullptr ? stands : schema->becomes(stands);
}

QString Table::text(const Row& row, const QString& column) const
{
    return value(row, column).toVariant().toString();
}

bool Table::counts(const Row& row, const ColumnSchema& column) const
{
    if (column.onlyWhere.isEmpty())
        return true;
    const int number = value(row, column.onlyWhere).toInt();
    return column.onlyFrom <= number && number <= column.onlyTo;
}

QString Table::startUpNote(const TableEntry* reader)
{
    return reader != nullptr && reader->essential ? QStringLiteral(", and its start-up load fails")
                                                  : QString();
}
