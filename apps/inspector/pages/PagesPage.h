#pragma once

#include "inspector/parts/Page.h"

#include <QTimer>
#include <QVector>

class DerivedColumn;
class ExplanationView;
class QLabel;
class QListWidget;
class QTabWidget;
class RawTables;
class RecordView;
class SearchBox;

/** Banners in their order, the client's web pages, and where an address opens. */
class PagesPage : public Page
{
    Q_OBJECT

public:
    explicit PagesPage(const Inspected& inspected, QWidget* parent = nullptr);

    /** An address, or a banner by its id or name. */
    void open(const QString& thing) override;
    QString opened() const override;
    void refresh() override;
    QVector<Scene> scenes() override;
    bool isAtRest() const override;

private:
    QWidget* makeAnswer();
    QWidget* makeBanners(Pictures& pictures);
    QWidget* makeList(bool isNew, Pictures& pictures);
    RecordView* addRecords(const QString& name, const QString& title, DerivedColumn* records,
                           int askedColumn);
    void showTab(const QString& name);
    void showLeftOut();
    void answer();

    ClientHost& m_host;
    RawTables& m_files;
    SearchBox* m_question;
    ExplanationView* m_answer;
    QTabWidget* m_tabs;
    QLabel* m_leftOutTitle;
    QListWidget* m_leftOut;
    QVector<DerivedColumn*> m_derived;
    QTimer m_pause; // while somebody types
};
