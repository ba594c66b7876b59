#pragma once

#include "inspector/parts/Page.h"

/** The pages of the window, in the order of the list at its left. */
struct PageEntry
{
    const char* name;  ///< of the page's widget, of its picture, and for links between pages
    const char* title; ///< to be translated in the context "PageList"
    Page* (*make)(const Inspected& inspected, QWidget* parent);
};

const QVector<PageEntry>& pageList();
