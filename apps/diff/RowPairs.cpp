#include "diff/RowPairs.h"

#include "content/Table.h"
#include "diff/CellText.h"

#include <QHash>
#include <QJsonDocument>

#include <algorithm>

namespace {

/** Beyond this many pairs rows that are no longer there as they were are told as gone and new. */
constexpr qint64 mostPairs = 250'000;
/** From here on two rows are one that was edited. */
constexpr double alike = 0.5;

/** How much of the longer text is at both ends of both. */
double likeness(const QString& left, const QString& right)
{
    const auto most = std::min(left.size(), right.size());
    const auto beginning =
        std::mismatch(left.begin(), left.begin() + most, right.begin()).first - left.begin();
    const auto end =
        std::mismatch(left.rbegin(), left.rbegin() + (most - beginning), right.rbegin()).first
        - left.rbegin();
    return static_cast<double>(beginning + end) / std::max(left.size(), right.size());
}

/** Two tables whose rows are compared cell by cell. */
class Rows
{
public:
    Rows(const Table& before, const Table& after, const QStringList& columns)
        : m_before(before)
        , m_after(after)
        , m_columns(columns)
    {
    }

    QByteArray bytes(const Table& table, int row) const
    {
        QJsonArray cells;
        for (const QString& column : m_columns)
            cells.append(table.cell(table.rows().at(row), column));
        return QJsonDocument(cells).toJson(QJsonDocument::Compact);
    }

    /** From 0 to 1; what is empty in both says nothing. */
    double likeness(int before, int after) const
    {
        double sum = 0;
        int count = 0;
        for (const QString& column : m_columns) {
            const QJsonValue left = m_before.cell(m_before.rows().at(before), column);
            const QJsonValue right = m_after.cell(m_after.rows().at(after), column);
            if (CellText::isEmpty(left) && CellText::isEmpty(right))
                continue;
            ++count;
            if (left == right)
                sum += 1;
            else if (left.isString() && right.isString())
                sum += ::likeness(left.toString(), right.toString());
        }
        return count == 0 ? 1 : sum / count;
    }

    /** Takes the rows away that have the same cells. */
    void pairEqual(QVector<int>& before, QVector<int>& after, QVector<RowPair>& pairs) const
    {
        QHash<QByteArray, QVector<int>> byBytes;
        for (const int row : qAsConst(before))
            byBytes[bytes(m_before, row)].append(row);
        QVector<int> left;
        for (const int row : qAsConst(after)) {
            QVector<int>& equal = byBytes[bytes(m_after, row)];
            if (equal.isEmpty())
                left.append(row);
            else
                pairs.append({equal.takeFirst(), row});
        }
        QVector<int> gone;
        for (const QVector<int>& rows : qAsConst(byBytes))
            gone += rows;
        std::sort(gone.begin(), gone.end());
        before = gone;
        after = left;
    }

    /** Pairs the others in order, so that they are as alike as can be; least is what it takes. */
    void pairAlike(const QVector<int>& before, const QVector<int>& after, double least,
                   QVector<RowPair>& pairs) const;

private:
    const Table& m_before;
    const Table& m_after;
    QStringList m_columns;
};

void Rows::pairAlike(const QVector<int>& before, const QVector<int>& after, double least,
                     QVector<RowPair>& pairs) const
{
    const int height = static_cast<int>(before.size());
    const int width = static_cast<int>(after.size());
    if (static_cast<qint64>(height) * width > mostPairs)
        return;
    constexpr double forAnyPair = 0.01; // rows of one key are one record however little alike
    QVector<double> gains(height * width);
    QVector<double> sums((height + 1) * (width + 1)); // the most that can be had from there on
    const auto sum = [&](int i, int j) -> double& { return sums[i * (width + 1) + j]; };
    for (int i = height - 1; i >= 0; --i) {
        for (int j = width - 1; j >= 0; --j) {
            const double likeness = this->likeness(before.at(i), after.at(j));
            double& gain = gains[i * width + j];
            gain = likeness >= least ? likeness + forAnyPair : 0;
            sum(i, j) = std::max({gain + sum(i + 1, j + 1), sum(i + 1, j), sum(i, j + 1)});
        }
    }
    for (int i = 0, j = 0; i < height && j < width;) {
        const double gain = gains.at(i * width + j);
        if (gain > 0 && sum(i, j) <= gain + sum(i + 1, j + 1))
            pairs.append({before.at(i++), after.at(j++)});
        else if (sum(i + 1, j) >= sum(i, j + 1))
            ++i;
        else
            ++j;
    }
}

QString keyIn(const Table& table, int row, const QString& key)
{
    return table.cell(table.rows().at(row), key).toVariant().toString();
}

/** What such a column is called in a table that nobody here reads. */
bool looksLikeKey(const QString& column)
{
    return column.compare(QLatin1String("id"), Qt::CaseInsensitive) == 0
        || column.endsWith(QLatin1String("Id"));
}

/** The rows without a pair come in, each behind the one that it followed. */
QVector<RowPair> ordered(const QVector<RowPair>& pairs, int before, int after)
{
    QVector<int> ofBefore(before, -1);
    QVector<int> ofAfter(after, -1);
    for (const RowPair& pair : pairs) {
        ofBefore[pair.before] = pair.after;
        ofAfter[pair.after] = pair.before;
    }
    QVector<QVector<int>> gone(after + 1); // by the place of the new row that they precede
    for (int row = 0, place = 0; row < before; ++row) {
        if (ofBefore.at(row) >= 0)
            place = ofBefore.at(row) + 1;
        else
            gone[place].append(row);
    }
    QVector<RowPair> all;
    for (int row = 0; row <= after; ++row) {
        for (const int old : qAsConst(gone[row]))
            all.append({old, -1});
        if (row < after)
            all.append({ofAfter.at(row), row});
    }
    return all;
}

} // namespace

QString RowPairs::keyOf(const Table& before, const Table& after)
{
    QString key = after.schema().key;
    if (after.reader() == nullptr) {
        const QString first = after.header().key(0);
        key = looksLikeKey(first) ? first : QString();
    }
    return before.header().contains(key) && after.header().contains(key) ? key : QString();
}

QVector<RowPair> RowPairs::of(const Table& before, const Table& after, const QStringList& columns)
{
    const Rows rows(before, after, columns);
    const QString key = keyOf(before, after);
    const int old = static_cast<int>(before.rows().size());
    const int now = static_cast<int>(after.rows().size());
    QHash<QString, QPair<QVector<int>, QVector<int>>> groups;
    for (int row = 0; row < old; ++row)
        groups[key.isEmpty() ? key : keyIn(before, row, key)].first.append(row);
    for (int row = 0; row < now; ++row)
        groups[key.isEmpty() ? key : keyIn(after, row, key)].second.append(row);
    QVector<RowPair> pairs;
    for (auto& group : groups) {
        if (group.first.size() == 1 && group.second.size() == 1 && !key.isEmpty()) {
            pairs.append({group.first.constFirst(), group.second.constFirst()});
            continue;
        }
        rows.pairEqual(group.first, group.second, pairs);
        rows.pairAlike(group.first, group.second, key.isEmpty() ? alike : 0, pairs);
    }
    return ordered(pairs, old, now);
}
