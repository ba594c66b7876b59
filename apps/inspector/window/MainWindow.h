#pragma once

#include "inspector/host/ClientHost.h"
#include "inspector/host/LogModel.h"
#include "inspector/host/TrafficMeter.h"
#include "inspector/parts/Page.h"
#include "inspector/parts/Pictures.h"
#include "inspector/parts/RawTables.h"
#include "inspector/parts/TableChanges.h"

#include <QMainWindow>
#include <QString>
#include <QVector>

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
    /** The buttons of a mouse that lead back and forth, wherever it points. */
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void addActions();
    void showPage(int place);

    /** A page, with what it shows. */
    struct Visit
    {
        QString page;
        QString thing;
    };
    Visit visit() const;
    void remember(const Visit& left);
    void travel(QVector<Visit>& from, QVector<Visit>& to);
    void goBack() { travel(m_back, m_forward); }
    void goForward() { travel(m_forward, m_back); }

    LogModel m_log;
    ClientHost m_host;
    TrafficMeter m_traffic;
    Pictures m_pictures;
    RawTables m_files;
    TableChanges m_changes {m_host};
    QListWidget* m_list;
    QStackedWidget* m_pages;
    StatusStrip* m_status;
    QVector<Visit> m_back; // the last is the nearest
    QVector<Visit> m_forward;
    bool m_travels = false;
};
