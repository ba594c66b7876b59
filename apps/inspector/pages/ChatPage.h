#pragma once

#include "inspector/parts/Page.h"

class BubbleDelegate;
class ChatLines;
class DerivedColumn;
class FilterModel;
class LineMasks;
class QLabel;
class QLineEdit;
class QListView;
class QPlainTextEdit;
class QTabWidget;
class RecordView;
class ZRecordModel;

/** Lines as the room sees them, and why; what else a chat is made of. */
class ChatPage : public Page
{
    Q_OBJECT

public:
    explicit ChatPage(const Inspected& inspected, QWidget* parent = nullptr);

    /** A line. */
    void open(const QString& thing) override;
    void refresh() override;
    QVector<Scene> scenes() override;
    bool isAtRest() const override;

private:
    QWidget* makeTyping();
    QWidget* makeLines();
    void makeBubbles(Pictures& pictures);
    void makeStickers(Pictures& pictures);
    void makePhrases();
    void makeMessages();
    void showTab(const QString& name);

    void append(const QString& line);
    int currentLine() const;
    void goToLine(int line);
    void tellLines();
    void markMasks();
    void explain();
    QString filled(const QString& message) const;

    ChatLines* m_lines;
    FilterModel* m_filter;
    QPlainTextEdit* m_text;
    LineMasks* m_masks;
    RecordView* m_view;
    QLabel* m_told;
    QTabWidget* m_tabs;
    QListView* m_bubbles;
    BubbleDelegate* m_bubble;
    ZRecordModel* m_messages;
    DerivedColumn* m_filled;
    QLineEdit* m_values;
};
