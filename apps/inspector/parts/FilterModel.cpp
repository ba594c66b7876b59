#include "inspector/parts/FilterModel.h"

#include <QRegularExpression>

#include <algorithm>

FilterModel::FilterModel(QObject* parent)
    : QSortFilterProxyModel(parent)
{
    setSortRole(Qt::UserRole); // where every model of ours has its values
}

void FilterModel::setSearch(const QString& search)
{
    static const QRegularExpression word(QStringLiteral("(?:[^\\s\"]|\"[^\"]*\"?)+"));
    m_words.clear();
    for (auto found = word.globalMatch(search); found.hasNext();)
        m_words.append(wordOf(found.next().captured().remove(u'"')));
    invalidateFilter();
}

bool FilterModel::isBefore(const QString& left, const QString& right)
{
    bool isLeftNumber = false;
    bool isRightNumber = false;
    const qint64 leftNumber = left.toLongLong(&isLeftNumber);
    const qint64 rightNumber = right.toLongLong(&isRightNumber);
    if (isLeftNumber != isRightNumber)
        return isLeftNumber;
    return isLeftNumber && leftNumber != rightNumber ? leftNumber < rightNumber
                                                     : left.compare(right, Qt::CaseInsensitive) < 0;
}

bool FilterModel::lessThan(const QModelIndex& left, const QModelIndex& right) const
{
    const QVariant leftValue = left.data(sortRole());
    const QVariant rightValue = right.data(sortRole());
    const bool areTexts =
        leftValue.userType() == QMetaType::QString && rightValue.userType() == QMetaType::QString;
    return areTexts ? isBefore(leftValue.toString(), rightValue.toString())
                    : QSortFilterProxyModel::lessThan(left, right);
}

bool FilterModel::filterAcceptsRow(int row, const QModelIndex& /*parent*/) const
{
    return std::all_of(m_words.begin(), m_words.end(),
                       [&](const Word& word) { return holds(word, row); });
}

FilterModel::Word FilterModel::wordOf(const QString& text) const
{
    static const QRegularExpression colon(QStringLiteral("[:：]")); // as Chinese is typed
    const QString name = text.section(colon, 0, 0);
    for (int column = 0; name != text && column < columnCount(); ++column) {
        const QString header = headerData(column, Qt::Horizontal).toString();
        if (header.compare(name, Qt::CaseInsensitive) == 0)
            return {column, text.section(colon, 1)};
    }
    return {-1, text};
}

bool FilterModel::holds(const Word& word, int row) const
{
    const auto has = [&](int column) {
        const QVariant shown = sourceModel()->index(row, column).data();
        return shown.toString().contains(word.text, Qt::CaseInsensitive);
    };
    if (word.column >= 0)
        return has(word.column);
    for (int column = 0; column < sourceModel()->columnCount(); ++column) {
        if (has(column))
            return true;
    }
    return false;
}
