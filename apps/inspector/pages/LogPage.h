#pragma once

#include "inspector/parts/Page.h"

class FilterModel;
class RecordView;

/** The library's lines as they come. */
class LogPage : public Page
{
    Q_OBJECT

public:
    explicit LogPage(const Inspected& inspected, QWidget* parent = nullptr);

private:
    class BySeverity;
    BySeverity* m_bySeverity;
    FilterModel* m_filter;
    RecordView* m_view;
    bool m_atEnd = true; // before the last lines came
};
