#pragma once

#include <QModelIndexList>
#include <QString>
#include <QVector>

#include <functional>

class QAbstractItemView;

/** Rows of a model as people paste them elsewhere. */
namespace CopiedRows {

/** Which columns are copied, in their order. */
using Columns = std::function<QVector<int>()>;

/** Adds what copies the selected rows to a view and its context menu: between tabs with Ctrl+C,
 *  as a list of objects with Ctrl+Shift+C. Without columns all of the model's are copied. */
void addActions(QAbstractItemView& view, const Columns& columns = {});

} // namespace CopiedRows
