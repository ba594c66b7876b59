#pragma once

#include <QSortFilterProxyModel>
#include <QStringMatcher>
#include <QVector>

/**
 * Sorts by the values of a model, texts that are whole numbers as numbers and before the others,
 * and shows the rows that a search finds. Each word of the search
 * has to stand in some column of the row, or, written "column:word", in that one, whatever the
 * letter case; words between quotes are one.
 *
 * What the rows of a large model show is read once and kept until the model tells a change.
 */
class FilterModel : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    explicit FilterModel(QObject* parent = nullptr);

    void setSourceModel(QAbstractItemModel* model) override;

    void setSearch(const QString& search);

    /** In the order that is told above. */
    static bool isBefore(const QString& left, const QString& right);

    /** Texts that are sorted as numbers stand at the right, like numbers. */
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

protected:
    bool lessThan(const QModelIndex& left, const QModelIndex& right) const override;
    bool filterAcceptsRow(int row, const QModelIndex& parent) const override;

private:
    struct Word
    {
        int column; ///< -1 for any
        QStringMatcher text;
    };
    /** What a row shows in its first columns. */
    struct Shown
    {
        QString text;
        int columns = 0;
    };
    Word wordOf(const QString& text) const;
    bool holds(const Word& word, int row) const;
    QString cell(int row, int column) const;

    QVector<Word> m_words;
    mutable QVector<Shown> m_shown; // by row of the source, once a search looks at it
};
