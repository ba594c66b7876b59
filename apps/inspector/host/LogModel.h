#pragma once

#include <QAbstractTableModel>
#include <QDateTime>
#include <QVector>

/**
 * The library's log as it comes, from every thread; the newest line is the last. Older ones than
 * the last 20,000 are forgotten.
 *
 * While it lives it is the process's message handler; what others say goes to the one before.
 */
class LogModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { Time, Severity, Category, Text, ColumnCount };
    /** What QSortFilterProxyModel may sort and filter by: of Severity 0 for debug to 3 for worse
     *  than a warning. */
    static constexpr int valueRole = Qt::UserRole;

    explicit LogModel(QObject* parent = nullptr);
    ~LogModel() override;

    static QString nameOf(int severity);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;

private Q_SLOTS:
    void take();

private:
    struct Line
    {
        QDateTime time;
        int severity;
        QString category;
        QString text;
    };
    class Queue;

    static void handle(QtMsgType type, const QMessageLogContext& context, const QString& text);

    QVector<Line> m_lines;
};
