#pragma once

#include <QModelIndexList>
#include <QString>
#include <QVector>

#include <functional>

class QAbstractItemView;
class QTableWidget;

/** Rows of a model as people paste them elsewhere. */
namespace CopiedRows {

/** Which columns are copied, in their order. */
using Columns = std::function<QVector<int>()>;

/** Adds what copies the selected rows to a view and its context menu: between tabs with Ctrl+C,
 *  as a list of objects with Ctrl+Shift+C. Without columns all of the model's are copied. */
void addActions(QAbstractItemView& view, const Columns& columns = {});

/** Gives a table its columns, whose titles are translated in a context; rows that are copied have
 *  them in English. */
void setTitles(QTableWidget& table, const char* context, const QVector<const char*>& titles);

} // namespace CopiedRows
