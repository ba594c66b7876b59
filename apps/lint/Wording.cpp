#include "lint/Wording.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QVector>

#include <algorithm>

namespace {

/** How many characters have to be put in, taken out or replaced. */
int distance(const QString& left, const QString& right)
{
    QVector<int> row(right.size() + 1);
    for (int i = 0; i < row.size(); ++i)
        row[i] = i;
    for (int i = 0; i < left.size(); ++i) {
        int diagonal = row.at(0);
        row[0] = i + 1;
        for (int j = 0; j < right.size(); ++j) {
            const int replaced = diagonal + (left.at(i) == right.at(j) ? 0 : 1);
            diagonal = row.at(j + 1);
            row[j + 1] = std::min({replaced, row.at(j) + 1, diagonal + 1});
        }
    }
    return row.constLast();
}

} // namespace

QString Wording::shown(const QJsonValue& cell)
{
    constexpr int longest = 40;
    const QByteArray list = QJsonDocument(QJsonArray {cell}).toJson(QJsonDocument::Compact);
    QString text = QString::fromUtf8(list.mid(1, list.size() - 2));
    if (text.size() <= longest)
        return text;
    // Not within a character.
    return text.left(text.at(longest).isLowSurrogate() ? longest - 1 : longest)
        + QStringLiteral("...");
}

QString Wording::shown(const QString& text)
{
    return shown(QJsonValue(text));
}

bool Wording::areNear(const QString& left, const QString& right)
{
    if (left == right)
        return false;
    constexpr int shortest = 4; // shorter names are near to too many
    if (std::min(left.size(), right.size()) < shortest)
        return left.compare(right, Qt::CaseInsensitive) == 0;
    return distance(left.toLower(), right.toLower()) <= 2;
}
