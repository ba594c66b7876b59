#include "inspector/parts/SearchBox.h"

#include <QKeyEvent>

void SearchBox::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape && !text().isEmpty())
        clear();
    else
        QLineEdit::keyPressEvent(event);
}
