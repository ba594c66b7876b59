#pragma once

#include "inspector/parts/ChatLines.h"

#include <QWidget>

#include <memory>

class QLabel;
class QTableWidget;
class RawTables;

namespace Why {
class RawTable;
}

/** Why a line of a chat is masked, mask by mask, or what comes near to that. */
class LineMasks : public QWidget
{
    Q_OBJECT

public:
    explicit LineMasks(RawTables& files, QWidget* parent = nullptr);

    /** A line that waits for its turn, or none, is told of as such. */
    void explain(const ChatLines::Line& line);

    /** Looks anew where the words stand. */
    void readTables();
    bool isReading() const { return m_older == nullptr || m_newer == nullptr; }

Q_SIGNALS:
    /** Somebody wants to see a word in its table: "Table/word". */
    void sigOpen(const QString& page, const QString& thing);

private:
    QVariant rowOf(const stWordMask& mask) const;
    void tellFaults();
    void showMasks();
    void lookNear();

    RawTables& m_files;
    ChatLines::Line m_line;
    QLabel* m_verdict;
    QLabel* m_fault;
    QTableWidget* m_masks;
    QLabel* m_near;
    std::shared_ptr<const Why::RawTable> m_older; // of the two lists; null while it is being read
    std::shared_ptr<const Why::RawTable> m_newer;
    int m_explained = 0; // how many times
    bool m_isLooking = false;
};
