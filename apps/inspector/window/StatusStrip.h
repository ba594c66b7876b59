#pragma once

#include <QFrame>
#include <QString>

class ClientHost;
class FailureList;
class QLabel;
class QProgressBar;
class QPushButton;
class QToolButton;

/** The line below the pages: what is being done, with what stops it, and what could not be. */
class StatusStrip : public QFrame
{
    Q_OBJECT

public:
    explicit StatusStrip(ClientHost& host, QWidget* parent = nullptr);

    /** Says what could not be done, until something is done well; empty words say that it was. Of
     *  several lines the first stands here, and a button opens all of them. */
    void tellFailure(const QString& words);
    /** Says something about this machine that stays so. */
    void tellAdvice(const QString& words);

protected:
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void makeLine();
    void tellTask(const QString& task);
    QString words() const { return m_failure.isEmpty() ? m_advice : m_failure; }
    void showWords();
    void showMore();

    ClientHost& m_host;
    QLabel* m_place;
    QLabel* m_words;
    QToolButton* m_more;
    QProgressBar* m_progress;
    QPushButton* m_stop;
    FailureList* m_all;
    QString m_failure;
    QString m_advice;
};
