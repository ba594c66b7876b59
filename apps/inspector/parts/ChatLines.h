#pragma once

#include "chat/ZSensitiveWordsInfoListMgr.h"

#include <QAbstractTableModel>
#include <QStringList>
#include <QTimer>
#include <QVector>

/**
 * Lines of a text as the room may see them: each masked by both word lists, and how long that took.
 *
 * A few milliseconds' worth of lines at a time, so that a long text can be pasted; lines that stay
 * when the text changes keep what is known of them. Loads of the lists mask all of them anew.
 */
class ChatLines : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { Typed, Shown, Masks, Time, ColumnCount };

    struct Line
    {
        QString typed;
        QString shown;
        QVector<stWordMask> masks;
        qint64 nanoseconds = -1; ///< below zero while it waits for its turn
    };

    explicit ChatLines(QObject* parent = nullptr);

    void setLines(const QStringList& typed);

    const Line& line(int row) const { return m_lines.at(row); }

    /** How many lines were masked, and how many wait. */
    int masked() const;
    int waiting() const;
    qint64 nanoseconds() const;
    static QString timeText(qint64 nanoseconds);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;

private:
    void maskAnew();
    void maskSome();
    static void mask(Line& line);

    QVector<Line> m_lines;
    int m_next = 0; // none before it waits
    QTimer m_turn;
};
