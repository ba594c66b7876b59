#pragma once

#include "models/ZTableModel.h"

#include <QIdentityProxyModel>

/** The tables as people read them: sizes, ages and states in words; failed and missing ones in the
 *  colour of faults, those that nobody reads in grey. */
class ShownTables : public QIdentityProxyModel
{
    Q_OBJECT

public:
    explicit ShownTables(QObject* parent = nullptr);

    ZTableModel& tables() { return m_tables; }

    /** Whether a table that is read has no file, or did not load. */
    bool isFaulty(int row) const;

    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;

Q_SIGNALS:
    /** Somebody has written another version. */
    void sigVersionWritten();

private:
    QVariant shown(const QModelIndex& index) const;
    static QString stateOf(const TableStatus& status);
    QString causeOf(const TableStatus& status) const;
    QVariant toolTipOf(const QModelIndex& index) const;

    ZTableModel m_tables;
};
