#pragma once

#include "inspector/host/ClientHost.h"
#include "inspector/host/LogModel.h"
#include "inspector/host/TrafficMeter.h"
#include "inspector/parts/Page.h"
#include "inspector/parts/Pictures.h"
#include "inspector/parts/RawTables.h"
#include "inspector/parts/TableChanges.h"

#include <QMainWindow>

class QListWidget;
class QStackedWidget;
class StatusStrip;

/** The one window: the list of pages, the page that is shown, the status. */
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit MainWindow(QWidget* parent = nullptr);

    ClientHost& host() { return m_host; }
    Pictures& pictures() { return m_pictures; }

    /** The page of a name, which is made when it is asked for first; null when there is none. */
    Page* page(const QString& name);

    /** Shows a page, and a thing on it unless that is empty. */
    void show(const QString& name, const QString& thing = {});
    using QMainWindow::show;

    /** The page that is shown; null until the host has entered its folder. */
    Page* current() const;

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void addActions();
    void showPage(int place);

    LogModel m_log;
    ClientHost m_host;
    TrafficMeter m_traffic;
    Pictures m_pictures;
    RawTables m_files;
    TableChanges m_changes {m_host};
    QListWidget* m_list;
    QStackedWidget* m_pages;
    StatusStrip* m_status;
};
