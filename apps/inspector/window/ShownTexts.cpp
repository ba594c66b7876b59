#include "inspector/window/ShownTexts.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTabBar>
#include <QTextDocumentFragment>
#include <QTextEdit>

namespace {

QStringList ofHeader(const QHeaderView& header)
{
    QStringList texts;
    for (int section = 0; section < header.count(); ++section) {
        const int left = header.sectionViewportPosition(section);
        if (!header.isSectionHidden(section) && left < header.viewport()->width()
            && left + header.sectionSize(section) > 0)
            texts.append(header.model()->headerData(section, header.orientation()).toString());
    }
    return texts;
}

QStringList ofRows(const QAbstractItemView& view)
{
    QStringList texts;
    const QAbstractItemModel* model = view.model();
    const QModelIndex root = view.rootIndex();
    for (int row = 0; row < model->rowCount(root); ++row) {
        for (int column = 0; column < model->columnCount(root); ++column) {
            const QModelIndex cell = model->index(row, column, root);
            if (view.visualRect(cell).intersects(view.viewport()->rect()))
                texts.append(cell.data().toString());
        }
    }
    return texts;
}

QString plain(const QString& text)
{
    return Qt::mightBeRichText(text) ? QTextDocumentFragment::fromHtml(text).toPlainText() : text;
}

/** Of the widget itself, without those inside. */
QStringList own(const QWidget& widget)
{
    if (const auto* label = qobject_cast<const QLabel*>(&widget))
        return {plain(label->text())};
    if (const auto* button = qobject_cast<const QAbstractButton*>(&widget))
        return {button->text()};
    if (const auto* line = qobject_cast<const QLineEdit*>(&widget))
        return {line->text()};
    if (const auto* box = qobject_cast<const QComboBox*>(&widget))
        return {box->currentText()};
    if (const auto* lines = qobject_cast<const QPlainTextEdit*>(&widget))
        return {lines->toPlainText()};
    if (const auto* page = qobject_cast<const QTextEdit*>(&widget))
        return {page->toPlainText()};
    if (const auto* tabs = qobject_cast<const QTabBar*>(&widget)) {
        QStringList titles;
        for (int tab = 0; tab < tabs->count(); ++tab)
            titles.append(tabs->tabText(tab));
        return titles;
    }
    const auto* view = qobject_cast<const QAbstractItemView*>(&widget);
    if (view == nullptr || view->model() == nullptr)
        return {};
    const auto* header = qobject_cast<const QHeaderView*>(view);
    return header != nullptr ? ofHeader(*header) : ofRows(*view);
}

} // namespace

QStringList ShownTexts::of(const QWidget& widget)
{
    QStringList texts = own(widget);
    texts.removeAll(QString());
    for (const QObject* child : widget.children()) {
        const auto* inside = qobject_cast<const QWidget*>(child);
        if (inside != nullptr && inside->isVisible())
            texts += of(*inside);
    }
    return texts;
}
