#pragma once

#include <QFrame>

class ClientHost;
class QLabel;
class QProgressBar;

/** The line below the pages: what is being done, and what could not be. */
class StatusStrip : public QFrame
{
    Q_OBJECT

public:
    explicit StatusStrip(const ClientHost& host, QWidget* parent = nullptr);

    /** Says what could not be done, until something is done well; empty words say that it was. */
    void tellFailure(const QString& words);
    /** Says something about this machine that stays so. */
    void tellAdvice(const QString& words);

private:
    void tellTask(const QString& task);
    void showWords();

    QLabel* m_place;
    QLabel* m_words;
    QProgressBar* m_progress;
    QString m_failure;
    QString m_advice;
};
