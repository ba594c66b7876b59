#include "file/FileNames.h"

#include <QRegularExpression>
#include <QStringList>

#include <algorithm>

QString FileNames::fault(const QString& name)
{
    static const QRegularExpression forbidden(QStringLiteral("[\\x00-\\x1f\\x7f/\\\\:*?\"<>|]"));
    static const QRegularExpression device(
        QStringLiteral("^(CON|PRN|AUX|NUL|CONIN\\$|CONOUT\\$|(COM|LPT)[0-9]) *(\\.|$)"),
        QRegularExpression::CaseInsensitiveOption);
    if (name.isEmpty())
        return QStringLiteral("is empty");
    if (name == QLatin1String(".."))
        return QStringLiteral("leads out of the folder");
    if (name.endsWith(QLatin1Char('.')) || name.endsWith(QLatin1Char(' ')))
        return QStringLiteral("ends in a dot or a space");
    // Half a surrogate pair is no character at all.
    if (name.contains(forbidden) || QString::fromUtf8(name.toUtf8()) != name)
        return QStringLiteral("has a character that not every system stores");
    if (name.normalized(QString::NormalizationForm_KC).contains(device))
        return QStringLiteral("is a device on some systems");
    return {};
}

bool FileNames::staysBelow(const QString& path, const QString& folder)
{
    const QStringList parts = path.split(QLatin1Char('/'), Qt::SkipEmptyParts);
    const QStringList above = folder.split(QLatin1Char('/'), Qt::SkipEmptyParts);
    return !path.startsWith(QLatin1Char('/')) && parts.size() > above.size()
        && parts.mid(0, above.size()) == above
        && std::all_of(parts.begin() + above.size(), parts.end(),
                       [](const QString& part) { return fault(part).isEmpty(); });
}
