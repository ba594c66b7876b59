#pragma once

#include <QTableView>

/**
 * Rows as people want them: sorted by a click on a column, copied as text (Ctrl+C) or as JSON
 * (Ctrl+Shift+C), with columns that keep their widths from one run to the next. Rows are of one
 * height, so that a hundred thousand of them scroll.
 */
class RecordView : public QTableView
{
    Q_OBJECT

public:
    explicit RecordView(QWidget* parent = nullptr);

    /** Under which name the columns' state is kept from now on; what is known of it is put into
     *  force. */
    void keepColumns(const QString& name);

    /** Makes the columns as wide as what they hold, unless somebody has given them a width. */
    void fitColumns();

private:
    QVector<int> shownColumns() const;
    QString settingsKey() const;
    bool isStretched(int column) const;
    void saveColumns() const;

    QString m_name;
    bool m_fitting = false;
};
