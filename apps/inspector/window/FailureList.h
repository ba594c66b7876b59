#pragma once

#include <QFrame>

class QPlainTextEdit;

/** All that could not be done, above the line at the foot of the window: to be read and copied.
 *  Esc or a click elsewhere puts it away. */
class FailureList : public QFrame
{
    Q_OBJECT

public:
    explicit FailureList(QWidget* parent);

    /** A line each; without any, what is shown goes. */
    void setWords(const QString& words);

    /** Opens it as wide as the widget, and above it. */
    void openAbove(const QWidget& widget);

private:
    QPlainTextEdit* m_words;
};
