#pragma once

#include "publish/Release.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>

#include <optional>

/** The file of the versions. */
namespace Versions {

/** Why nobody can tell the versions in the file of that path, or an empty text; none has no fault.
 */
QString fault(const std::optional<QByteArray>& file, const QString& path);

/**
 * Raises the version of each table in the published file; of one that it has none of, it takes the
 * version wanted, else 1. Both files may be empty. Answers why that cannot be done, or an empty
 * text.
 */
QString raise(const QStringList& tables, const QByteArray& published, const QByteArray& wanted,
              QByteArray& file, QVector<VersionChange>& changes);

} // namespace Versions
