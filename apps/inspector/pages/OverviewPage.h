#pragma once

#include "inspector/parts/Page.h"

class DerivedColumn;
class FilterModel;
class QLabel;
class RecordView;
class ShownTables;

/** The tables as they stand, and what can be done with them. */
class OverviewPage : public Page
{
    Q_OBJECT

public:
    explicit OverviewPage(const Inspected& inspected, QWidget* parent = nullptr);

    void refresh() override;

private:
    QWidget* makeTop(ClientHost& host);
    void makeView();
    void count();

    ShownTables* m_tables;
    DerivedColumn* m_shown;
    FilterModel* m_filter;
    RecordView* m_view;
    QLabel* m_summary;
};
