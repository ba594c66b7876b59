#include "inspector/parts/FilterModel.h"

#include <QRegularExpression>

#include <algorithm>

namespace {

constexpr int rowsWorthKeeping = 1000; // fewer are read at once, some of which show an age
constexpr QChar between(u'\n');        // which nobody can type into a box

} // namespace

FilterModel::FilterModel(QObject* parent)
    : QSortFilterProxyModel(parent)
{
    setSortRole(Qt::UserRole); // where every model of ours has its values
}

void FilterModel::setSourceModel(QAbstractItemModel* model)
{
    if (sourceModel() != nullptr)
        disconnect(sourceModel(), nullptr, this, nullptr);
    // Before the proxy's own connections, which filter anew.
    using Model = QAbstractItemModel;
    const auto forget = [this] { m_shown.clear(); };
    connect(model, &Model::modelReset, this, forget);
    connect(model, &Model::layoutChanged, this, forget);
    connect(model, &Model::rowsMoved, this, forget);
    connect(model, &Model::rowsInserted, this, forget);
    connect(model, &Model::rowsRemoved, this, forget);
    connect(model, &Model::columnsInserted, this, forget);
    connect(model, &Model::columnsRemoved, this, forget);
    connect(model, &Model::dataChanged, this,
            [this](const QModelIndex& first, const QModelIndex& last, const QVector<int>& roles) {
                const bool isShown = roles.isEmpty() || roles.contains(Qt::DisplayRole);
                for (int row = first.row(); isShown && row <= last.row() && row < m_shown.size();
                     ++row)
                    m_shown[row] = Shown();
            });
    m_shown.clear();
    QSortFilterProxyModel::setSourceModel(model);
}

void FilterModel::setSearch(const QString& search)
{
    static const QRegularExpression word(QStringLiteral("(?:[^\\s\"]|\"[^\"]*\"?)+"));
    m_words.clear();
    if (m_shown.size() < rowsWorthKeeping)
        m_shown.clear();
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

QVariant FilterModel::data(const QModelIndex& index, int role) const
{
    QVariant value = QSortFilterProxyModel::data(index, role);
    if (role != Qt::TextAlignmentRole || value.isValid())
        return value;
    const QVariant sorted = QSortFilterProxyModel::data(index, sortRole());
    bool isNumber = false;
    if (sorted.userType() == QMetaType::QString)
        sorted.toString().toLongLong(&isNumber);
    return isNumber ? QVariant(Qt::AlignRight | Qt::AlignVCenter) : value;
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
            return {column, QStringMatcher(text.section(colon, 1), Qt::CaseInsensitive)};
    }
    return {-1, QStringMatcher(text, Qt::CaseInsensitive)};
}

bool FilterModel::holds(const Word& word, int row) const
{
    if (m_shown.isEmpty())
        m_shown.resize(sourceModel()->rowCount());
    Shown& shown = m_shown[row];
    const bool isSeen = word.text.indexIn(shown.text) >= 0;
    const int columns = sourceModel()->columnCount();
    if (word.column >= 0) {
        const bool canHold = isSeen || word.column >= shown.columns;
        return canHold && word.text.indexIn(cell(row, word.column)) >= 0;
    }
    bool isFound = isSeen;
    while (!isFound && shown.columns < columns) {
        const QString next = cell(row, shown.columns++);
        shown.text += between + next;
        isFound = word.text.indexIn(next) >= 0;
    }
    return isFound;
}

QString FilterModel::cell(int row, int column) const
{
    return sourceModel()->index(row, column).data().toString();
}
