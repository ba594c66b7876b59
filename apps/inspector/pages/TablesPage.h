#pragma once

#include "inspector/parts/Page.h"

#include <memory>

class ChangeMarks;
class FilterModel;
class LostRows;
class QCheckBox;
class QLabel;
class QTableWidget;
class RawTables;
class RecordView;
class SearchBox;
class ShownTables;
class TableChanges;
class ZRecordModel;
namespace Why {
class RawTable;
}

/** The records of one table after the other; beside them the selected row as its file has it. */
class TablesPage : public Page
{
    Q_OBJECT

public:
    explicit TablesPage(const Inspected& inspected, QWidget* parent = nullptr);

    /** "Table", or "Table/key" of a record or of a row that became none. */
    void open(const QString& thing) override;
    QString opened() const override;
    void refresh() override;
    QVector<Scene> scenes() override;
    bool isAtRest() const override { return m_file != nullptr; }

private:
    QWidget* makeTables();
    QWidget* makeRecords();
    QWidget* makeLost();
    QWidget* makeRow();
    void showTable(const QString& table);
    void select(const QString& key);
    void selectLost();
    void readFile();
    void showRow();
    void showLost();
    void showLostRow();
    void tellChanges();

    RawTables& m_files;
    TableChanges& m_changes;
    ShownTables* m_tables;
    FilterModel* m_shownTables;
    RecordView* m_tableView;
    ZRecordModel* m_records = nullptr; // those of the table that is shown
    ChangeMarks* m_marks = nullptr;
    FilterModel* m_filter;
    RecordView* m_view;
    LostRows* m_lost;
    RecordView* m_lostView;
    QCheckBox* m_showLost;
    SearchBox* m_search;
    QLabel* m_told;
    QLabel* m_place;
    QTableWidget* m_cells;
    std::shared_ptr<const Why::RawTable> m_file; // null while it is being read
    QString m_wanted; // the key of a row that is to be selected once the file has been read
};
