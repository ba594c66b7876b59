#pragma once

#include <QLineEdit>

/** A box whose text filters what a page shows; Ctrl+F leads to it, Escape empties it. */
class SearchBox : public QLineEdit
{
    Q_OBJECT

public:
    explicit SearchBox(const QString& hint = tr("Search, or column:text"),
                       QWidget* parent = nullptr)
        : QLineEdit(parent)
    {
        setObjectName(QStringLiteral("search"));
        setPlaceholderText(hint);
        setClearButtonEnabled(true);
    }

protected:
    void keyPressEvent(QKeyEvent* event) override;
};
