#pragma once

#include <QJsonValue>
#include <QString>

/** What messages are made of. */
namespace Wording {

/** A cell as its file has it, but no longer than a part of a line. */
QString shown(const QJsonValue& cell);

/** The same of a text. */
QString shown(const QString& text);

/** Whether two names differ, but so little that one is likely the other, mistyped. */
bool areNear(const QString& left, const QString& right);

/** The first of the names that is near; empty when none is. */
template <class Names>
QString nearest(const QString& name, const Names& names)
{
    for (const QString& other : names) {
        if (areNear(name, other))
            return other;
    }
    return {};
}

} // namespace Wording
