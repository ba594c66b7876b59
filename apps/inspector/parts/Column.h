#pragma once

#include <QVBoxLayout>
#include <QWidget>

#include <initializer_list>

/** Widgets one below the other, without a margin. */
inline QWidget* column(std::initializer_list<QWidget*> widgets)
{
    auto* made = new QWidget;
    auto* layout = new QVBoxLayout(made);
    layout->setContentsMargins(0, 0, 0, 0);
    for (QWidget* widget : widgets)
        layout->addWidget(widget);
    return made;
}
