#pragma once

#include <QSortFilterProxyModel>
#include <QVector>

/**
 * Sorts by the values of a model and shows the rows that a search finds. Each word of the search
 * has to stand in some column of the row, or, written "column:word", in that one, whatever the
 * letter case; words between quotes are one.
 */
class FilterModel : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    explicit FilterModel(QObject* parent = nullptr);

    void setSearch(const QString& search);

protected:
    bool filterAcceptsRow(int row, const QModelIndex& parent) const override;

private:
    struct Word
    {
        int column; ///< -1 for any
        QString text;
    };
    Word wordOf(const QString& text) const;
    bool holds(const Word& word, int row) const;

    QVector<Word> m_words;
};
