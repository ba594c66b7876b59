#pragma once

#include <QLabel>

class QAbstractItemView;

/** Says over a view without rows why it has none. */
class EmptyNote : public QLabel
{
    Q_OBJECT

public:
    /** Of a view that has its model, which shows records of the table. */
    EmptyNote(QAbstractItemView* view, const QString& table);

    /** "Doutu did not load: ..."; empty when it did. */
    static QString faultOf(const QString& table);

protected:
    void changeEvent(QEvent* event) override;

private:
    void tell();

    QAbstractItemView* m_view;
    QString m_table;
};
