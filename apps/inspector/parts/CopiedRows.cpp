#include "inspector/parts/CopiedRows.h"

#include <QAbstractItemView>
#include <QAction>
#include <QClipboard>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

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

QString jsonOf(const QModelIndexList& rows, const QVector<int>& columns)
{
    QJsonArray objects;
    for (const QModelIndex& row : rows) {
        QJsonObject object;
        for (const int column : columns) {
            const QString name = row.model()->headerData(column, Qt::Horizontal).toString();
            const QVariant value = row.sibling(row.row(), column).data(Qt::UserRole);
            object.insert(name, QJsonValue::fromVariant(value));
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
