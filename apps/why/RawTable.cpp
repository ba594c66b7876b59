#include "why/RawTable.h"

#include "client/ZGlobalClient.h"
#include "datatable/ZDataTableMgr.h"
#include "lint/Wording.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>

namespace {

QByteArray bytesOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString shownPath(const QString& path)
{
    return QDir::toNativeSeparators(path);
}

} // namespace

Why::RawTable::RawTable(const TableStatus& status)
    : m_status(status)
    , m_path(ZGlobalClient::tableFile(status))
    , m_table(status.table, bytesOf(m_path))
{
    QFile file(m_path);
    if (!file.exists())
        m_fault = QStringLiteral("%1 is not there").arg(shownPath(m_path));
    else if (!file.open(QIODevice::ReadOnly))
        m_fault =
            QStringLiteral("%1 cannot be read: %2").arg(shownPath(m_path), file.errorString());
    else if (!m_table.error().isEmpty())
        m_fault = QStringLiteral("%1 is no table: %2").arg(shownPath(m_path), m_table.error());
    else if (m_table.isRefused())
        m_fault = QStringLiteral("%1 has no column \"%2\"")
                      .arg(shownPath(m_path), status.declaration->missingColumn(m_table.header()));
    if (!m_table.error().isEmpty())
        return;
    readRows();
    readPages();
    noteIds();
}

Why::RawTable Why::RawTable::with(const TableStatus& status) const
{
    RawTable table = *this;
    table.m_status = status;
    return table;
}

bool Why::RawTable::isRecord(const RawRow& row) const
{
    const bool isKept = row.fate == RawRow::Overwritten && m_table.schema().isEveryRowKept;
    return row.fate == RawRow::Record || isKept;
}

int Why::RawTable::count(RawRow::Fate fate) const
{
    return static_cast<int>(std::count_if(m_rows.begin(), m_rows.end(),
                                          [fate](const RawRow& row) { return row.fate == fate; }));
}

const Why::RawRow* Why::RawTable::find(const QString& id) const
{
    const auto place = m_places.constFind(id);
    return place == m_places.constEnd() ? nullptr : &m_rows.at(*place);
}

const ColumnSchema* Why::RawTable::embeddingColumn() const
{
    const auto& columns = m_table.columns();
    const auto found = std::find_if(columns.begin(), columns.end(), [](const ColumnSchema& column) {
        return !column.pageColumn.isEmpty();
    });
    return found == columns.end() ? nullptr : &*found;
}

QString Why::RawTable::nameColumn(const TableSchema& schema)
{
    const auto found =
        std::find_if(schema.columns.begin(), schema.columns.end(),
                     [](const ColumnSchema& column) { return column.use == TextUse::Name; });
    return found == schema.columns.end() ? QString() : found->name;
}

Why::Origin Why::RawTable::origin(const RawRow* row) const
{
    Origin origin = originOf(m_status);
    origin.row = row == nullptr ? 0 : row->row.number;
    return origin;
}

void Why::RawTable::readRows()
{
    const QString name = nameColumn(m_table.schema());
    QJsonArray elements;
    for (int i = 0; i < m_table.elements().size(); ++i) {
        const QJsonValue element = m_table.elements().at(i);
        RawRow row;
        row.row.number = i + 1;
        row.row.cells = element.toArray();
        if (element.isNull()) {
            row.fate = RawRow::NoRow;
            row.words = QStringLiteral("no row: null");
            m_rows.append(row);
            continue;
        }
        row.fate = RawRow::Unread;
        row.words = QStringLiteral("no manager reads the table");
        row.id = m_table.text(row.row, m_table.schema().key);
        row.name = m_table.text(row.row, name);
        elements.append(row.row.cells);
        m_rows.append(row);
    }
    if (m_status.declaration != nullptr)
        leaveOut(m_status.declaration->leftOutFor(m_table.header(), elements));
    noteOverwritten();
}

void Why::RawTable::leaveOut(QStringList columns)
{
    const QString missing = m_status.declaration->missingColumn(m_table.header());
    for (RawRow& row : m_rows) {
        if (row.fate == RawRow::NoRow)
            continue;
        row.row.leftOutFor = columns.takeFirst();
        if (!missing.isEmpty()) {
            row.fate = RawRow::Refused;
            row.words = QStringLiteral("refused with the table: no column \"%1\"").arg(missing);
        } else if (!row.row.leftOutFor.isEmpty()) {
            row.fate = RawRow::LeftOut;
            row.words = leftOutWords(row);
        } else {
            row.fate = RawRow::Record;
            row.words = recordWords();
        }
        if (!m_table.elements().at(row.row.number - 1).isArray())
            row.words.prepend(QStringLiteral("no row, and read as one without cells: "));
    }
}

void Why::RawTable::noteOverwritten()
{
    const TableSchema& schema = m_table.schema();
    if (!schema.laterRowAnswers || schema.key.isEmpty())
        return;
    QHash<QString, int> later; // by id
    for (auto row = m_rows.rbegin(); row != m_rows.rend(); ++row) {
        if (row->fate != RawRow::Record)
            continue;
        if (!later.contains(row->id)) {
            later.insert(row->id, row->row.number);
            continue;
        }
        row->fate = RawRow::Overwritten;
        row->overwrittenBy = later.value(row->id);
        row->words = QStringLiteral("overwritten by row %1").arg(row->overwrittenBy);
        if (schema.isEveryRowKept)
            row->words += QStringLiteral(": ") + schema.duplicates;
    }
}

void Why::RawTable::readPages()
{
    const ColumnSchema* column = embeddingColumn();
    if (column == nullptr)
        return;
    const QRegularExpression pattern(column->pagePattern);
    for (RawRow& row : m_rows) {
        if (row.fate == RawRow::NoRow)
            continue;
        row.page = m_table.text(row.row, column->pageColumn).trimmed();
        row.path = pattern.match(row.page).captured(1);
        row.isEmbedding = m_table.value(row.row, column->name).toInt() > 0;
    }
}

void Why::RawTable::noteIds()
{
    m_places.reserve(static_cast<int>(m_rows.size()));
    for (int place = 0; place < m_rows.size(); ++place) {
        const RawRow& row = m_rows.at(place);
        const RawRow* before = find(row.id);
        if (row.fate == RawRow::NoRow
            || (before != nullptr && before->fate == RawRow::Record && row.fate != RawRow::Record))
            continue;
        m_places.insert(row.id, place);
    }
}

QString Why::RawTable::leftOutWords(const RawRow& row) const
{
    const QString& name = row.row.leftOutFor;
    const ColumnSchema* column = m_table.column(name);
    const QJsonValue cell = m_table.cell(row.row, name);
    const QString value = cell.isUndefined() ? QStringLiteral("no cell") : Wording::shown(cell);
    return QStringLiteral("left out for %1, %2: %3")
        .arg(name, value, column == nullptr ? QString() : column->remark);
}

QString Why::RawTable::recordWords() const
{
    // Without columns it is the cells that count.
    const TableSchema& schema = m_table.schema();
    return schema.columns.isEmpty() ? schema.duplicates : QStringLiteral("a record");
}

Why::Origin Why::originOf(const TableStatus& status)
{
    Origin origin;
    origin.table = status.table;
    origin.version = status.version;
    origin.file = ZGlobalClient::tableFile(status);
    const QFileInfo file(origin.file);
    if (file.isFile()) {
        origin.size = file.size();
        origin.modified = file.lastModified();
    }
    return origin;
}

TableStatus Why::statusOf(const QString& table)
{
    const QVector<TableStatus> tables = ZDataTableMgr::getInstance()->getTableStatuses();
    for (const TableStatus& status : tables) {
        if (status.table == table)
            return status;
    }
    TableStatus unknown;
    unknown.table = table;
    return unknown;
}
