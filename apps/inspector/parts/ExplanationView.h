#pragma once

#include "why/Explanation.h"

#include <QTextBrowser>

/** An answer of Why as people read it: the verdict, the rules in the order of asking, what belongs
 *  to the thing, and where it stands, as a link into the tables. */
class ExplanationView : public QTextBrowser
{
    Q_OBJECT

public:
    explicit ExplanationView(QWidget* parent = nullptr);

    void show(const Why::Reply& reply);
    using QTextBrowser::show;

Q_SIGNALS:
    /** Somebody wants to see "Table/id". */
    void sigOrigin(const QString& thing);
    /** Of the things that may have been meant this one is. */
    void sigMeant(const QString& id);

protected:
    void changeEvent(QEvent* event) override;

private:
    QString pageOf(const Why::Explanation& explanation) const;
    QString rowOf(const QString& mark, const QColor& colour, const QString& words,
                  const QString& value) const;
    QString stepOf(const Why::Step& step, bool decides) const;
    QString resourceOf(const Why::Resource& resource) const;
    QString candidates() const;
    void render();
    void follow(const QUrl& link);

    Why::Reply m_reply;
};
