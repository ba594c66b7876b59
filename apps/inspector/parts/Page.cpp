#include "inspector/parts/Page.h"

#include "inspector/parts/SearchBox.h"

void Page::search()
{
    const auto boxes = findChildren<SearchBox*>();
    for (SearchBox* box : boxes) {
        if (!box->isVisible())
            continue;
        box->setFocus(Qt::ShortcutFocusReason);
        box->selectAll();
        return;
    }
}

void Page::takeFocus()
{
    m_first->setFocus(Qt::OtherFocusReason);
}
