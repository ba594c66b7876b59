#pragma once

#include "inspector/parts/ChatLines.h"

#include <QWidget>

#include <memory>

class QLabel;
class QTableWidget;

/** Why a line of a chat is masked, mask by mask, or what comes near to that. */
class LineMasks : public QWidget
{
    Q_OBJECT

public:
    explicit LineMasks(QWidget* parent = nullptr);
    ~LineMasks() override;

    /** A line that waits for its turn, or none, is told of as such. */
    void explain(const ChatLines::Line& line);

    /** Looks anew where the words stand. */
    void readTables();
    bool isReading() const { return m_tables == nullptr; }

Q_SIGNALS:
    /** Somebody wants to see a word in its table: "Table/word". */
    void sigOpen(const QString& page, const QString& thing);

private:
    struct Tables;

    void tellFaults();
    void showMasks();
    void lookNear();

    ChatLines::Line m_line;
    QLabel* m_verdict;
    QLabel* m_fault;
    QTableWidget* m_masks;
    QLabel* m_near;
    std::shared_ptr<const Tables> m_tables; // null while they are being read
    int m_reading = 0;
    int m_looking = 0;
};
