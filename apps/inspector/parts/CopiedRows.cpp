#include "inspector/parts/CopiedRows.h"

#include "inspector/host/ColumnTitle.h"

#include <QAbstractItemView>
#include <QAction>
#include <QClipboard>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTableWidget>

#include <algorithm>
#include <numeric>

namespace {

QModelIndexList selectedRows(const QAbstractItemView& view)
{
    if (view.selectionModel() == nullptr)
        return {};
    // Of a list only one column is selected, so rows are not asked for.
    QModelIndexList rows = view.selectionModel()->selectedIndexes();
    std::sort(rows.begin(), rows.end(), [](const QModelIndex& left, const QModelIndex& right) {
        return left.row() < right.row();
    });
    const auto isSame = [](const QModelIndex& left, const QModelIndex& right) {
        return left.row() == right.row();
    };
    rows.erase(std::unique(rows.begin(), rows.end(), isSame), rows.end());
    return rows;
}

QVector<int> columnsOf(const QAbstractItemView& view, const CopiedRows::Columns& columns)
{
    if (columns)
        return columns();
    QVector<int> all(view.model()->columnCount());
    std::iota(all.begin(), all.end(), 0);
    return all;
}

/** Between quotes, as spreadsheets want it, where a cell would be taken for several. */
QString cellOf(const QString& text)
{
    static const QRegularExpression separator(QStringLiteral("^\"|[\\t\\n\\r]"));
    return text.contains(separator)
        ? u'"' + QString(text).replace(u'"', QStringLiteral("\"\"")) + u'"'
        : text;
}

QString textOf(const QModelIndexList& rows, const QVector<int>& columns)
{
    QStringList lines;
    for (const QModelIndex& row : rows) {
        QStringList cells;
        for (const int column : columns)
            cells.append(cellOf(row.sibling(row.row(), column).data().toString()));
        lines.append(cells.join(u'\t'));
    }
    return lines.join(u'\n');
}

QVariant either(const QVariant& first, const QVariant& other)
{
    return first.isValid() ? first : other;
}

QString jsonOf(const QModelIndexList& rows, const QVector<int>& columns)
{
    QJsonArray objects;
    for (const QModelIndex& row : rows) {
        QJsonObject object;
        for (const int column : columns) {
            // What reads it is to find the same names in every language.
            const auto title = [&](int role) {
                return row.model()->headerData(column, Qt::Horizontal, role);
            };
            const QVariant name = either(title(Qt::UserRole), title(Qt::DisplayRole));
            const QModelIndex cell = row.sibling(row.row(), column);
            const QVariant value = either(cell.data(Qt::UserRole), cell.data());
            object.insert(name.toString(), QJsonValue::fromVariant(value));
        }
        objects.append(object);
    }
    return QString::fromUtf8(QJsonDocument(objects).toJson());
}

} // namespace

void CopiedRows::addActions(QAbstractItemView& view, const Columns& columns)
{
    const auto add = [&](const char* text, const QKeySequence& keys, const auto& copy) {
        auto* action = new QAction(QCoreApplication::translate("CopiedRows", text), &view);
        action->setShortcut(keys);
        action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        QObject::connect(action, &QAction::triggered, &view, [&view, columns, copy] {
            const QModelIndexList rows = selectedRows(view);
            if (!rows.isEmpty()) // or what was copied before would be lost
                QGuiApplication::clipboard()->setText(copy(rows, columnsOf(view, columns)));
        });
        view.addAction(action);
    };
    view.setContextMenuPolicy(Qt::ActionsContextMenu);
    add(QT_TRANSLATE_NOOP("CopiedRows", "Copy as text"), QKeySequence::Copy, &textOf);
    add(QT_TRANSLATE_NOOP("CopiedRows", "Copy as JSON"),
        QKeySequence(QStringLiteral("Ctrl+Shift+C")), &jsonOf);
}

void CopiedRows::setTitles(QTableWidget& table, const char* context,
                           const QVector<const char*>& titles)
{
    table.setColumnCount(static_cast<int>(titles.size()));
    for (int column = 0; column < titles.size(); ++column) {
        auto* title = new QTableWidgetItem;
        for (const int role : {Qt::DisplayRole, Qt::UserRole})
            title->setData(role, columnTitle(context, titles.at(column), role));
        table.setHorizontalHeaderItem(column, title);
    }
}
