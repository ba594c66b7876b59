#include "inspector/parts/RowCells.h"

#include "inspector/parts/CopiedRows.h"
#include "inspector/parts/Look.h"
#include "lint/Wording.h"
#include "models/ZRecordModel.h"

#include <QApplication>
#include <QHeaderView>
#include <QTableWidget>

#include <algorithm>
#include <functional>

namespace {

enum Column { Name, InFile, InRecord, Note, ColumnCount };

constexpr int widestColumn = 120;

class Words
{
    Q_DECLARE_TR_FUNCTIONS(RowCells)
};

/** The row that became the record: of its key, the first one for the first record and so on; in a
 *  table without keys the one in the same place. */
const Why::RawRow* rowOf(const ZRecordModel& records, int row, const Why::RawTable& file)
{
    const QString key = records.key(row);
    QVector<const Why::RawRow*> found;
    for (const Why::RawRow& each : file.rows()) {
        if (file.isRecord(each) && (key.isEmpty() || each.id == key))
            found.append(&each);
    }
    int place = row;
    if (!key.isEmpty()) {
        place = 0;
        for (int before = 0; found.size() > 1 && before < row; ++before)
            place += records.key(before) == key ? 1 : 0;
    }
    return found.value(place, nullptr);
}

struct Line
{
    QString name;
    QJsonValue cell;
    QString held;
    QString note;
    bool isFaulty = false;
    bool isUnread = false;
};

Line lineOf(const QString& name, const Row& row, const Why::RawTable& file)
{
    const ColumnSchema* column = file.table().column(name);
    Line line {name, file.table().cell(row, name), {}, {}};
    if (column == nullptr || column->conversion.isEmpty()) {
        line.isUnread = true;
        line.note = column == nullptr ? Words::tr("nobody reads it") : column->remark;
        return line;
    }
    line.note = column->remark;
    if (!file.table().header().contains(name)) {
        line.note = Words::tr("the file has no such column");
    } else if (!column->fits(line.cell)) {
        line.isFaulty = true;
        line.note = Words::tr("no %1: reads as %2").arg(column->conversion, column->otherwise);
    }
    return line;
}

QTableWidgetItem* item(const QString& text, const Line& line)
{
    auto* made = new QTableWidgetItem(text);
    made->setData(Qt::UserRole, text); // which is what is copied
    made->setToolTip(Look::toolTip(text));
    if (line.isFaulty)
        made->setForeground(Look::faultColour(QApplication::palette()));
    else if (line.isUnread)
        made->setForeground(Look::unreadColour(QApplication::palette()));
    return made;
}

QStringList namesIn(const Why::RawTable& file)
{
    const QHash<QString, int>& header = file.table().header();
    QStringList names = header.keys();
    std::sort(names.begin(), names.end(), [&header](const QString& left, const QString& right) {
        return header.value(left) < header.value(right);
    });
    for (const ColumnSchema& column : file.table().columns()) {
        if (!header.contains(column.name))
            names.append(column.name);
    }
    return names;
}

QString fill(QTableWidget& cells, const Why::RawRow& raw, const Why::RawTable& file,
             const std::function<QString(const QString& name)>& held)
{
    const QStringList names = namesIn(file);
    cells.setRowCount(static_cast<int>(names.size()));
    for (int i = 0; i < names.size(); ++i) {
        Line line = lineOf(names.at(i), raw.row, file);
        if (file.table().columns().isEmpty())
            line = {names.at(i), file.table().cell(raw.row, names.at(i)), {}, {}};
        line.held = held(names.at(i));
        const QString cell =
            line.cell.isUndefined() ? Words::tr("none") : Wording::shown(line.cell);
        cells.setItem(i, Name, item(line.name, line));
        cells.setItem(i, InFile, item(cell, line));
        cells.setItem(i, InRecord, item(line.held, line));
        cells.setItem(i, Note, item(line.note, line));
    }
    for (int column = Name; column < Note; ++column) {
        cells.resizeColumnToContents(column);
        cells.setColumnWidth(column, qMin(cells.columnWidth(column), widestColumn));
    }
    return Words::tr("Row %1 of version %2: %3")
        .arg(raw.row.number)
        .arg(file.status().version)
        .arg(raw.words);
}

} // namespace

void RowCells::prepare(QTableWidget& cells)
{
    CopiedRows::setTitles(
        cells, "RowCells",
        {QT_TRANSLATE_NOOP("RowCells", "column"), QT_TRANSLATE_NOOP("RowCells", "in the file"),
         QT_TRANSLATE_NOOP("RowCells", "in the record"), QT_TRANSLATE_NOOP("RowCells", "note")});
    cells.setEditTriggers(QAbstractItemView::NoEditTriggers);
    cells.setSelectionBehavior(QAbstractItemView::SelectRows);
    cells.setTabKeyNavigation(false);
    CopiedRows::addActions(cells);
    cells.verticalHeader()->hide();
    // A note may take some lines; what is longer is in the tool tip.
    cells.verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    cells.verticalHeader()->setMinimumSectionSize(cells.fontMetrics().height() + 6);
    cells.verticalHeader()->setMaximumSectionSize(4 * cells.fontMetrics().height());
    cells.horizontalHeader()->setStretchLastSection(true);
}

QString RowCells::show(QTableWidget& cells, const ZRecordModel& records, int row,
                       const Why::RawTable& file)
{
    const Why::RawRow* raw = rowOf(records, row, file);
    cells.setRowCount(0);
    if (raw == nullptr)
        return Words::tr("The file has no such row any more.");
    return fill(cells, *raw, file, [&](const QString& name) {
        const int column = records.columnOf(name);
        return column < 0 ? QString() : records.index(row, column).data().toString();
    });
}

QString RowCells::showLost(QTableWidget& cells, const Why::RawRow& row, const Why::RawTable& file)
{
    return fill(cells, row, file, [](const QString&) { return QString(); });
}
