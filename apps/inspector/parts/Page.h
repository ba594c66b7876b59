#pragma once

#include <QString>
#include <QVector>
#include <QWidget>

#include <functional>

class ClientHost;
class LogModel;
class Pictures;
class RawTables;
class TableChanges;
class TrafficMeter;

/** What all pages show something of. */
struct Inspected
{
    ClientHost& host;
    LogModel& log;
    TrafficMeter& traffic;
    Pictures& pictures;
    RawTables& files;
    TableChanges& changes;
};

/** A page of the window. It knows the models that it shows, and no other page. */
class Page : public QWidget
{
    Q_OBJECT

public:
    /** The page in a state that is worth a picture. */
    struct Scene
    {
        QString name; ///< of the picture's file, without extension
        std::function<void()> set;
    };

    using QWidget::QWidget;

    /** Looks anew at what may have changed by another hand; F5. */
    virtual void refresh() { }

    /** Shows a thing of its own: a table, a gift, a chat line. */
    virtual void open(const QString& /*thing*/) { }

    /** What open() would show as the page does now; empty where nothing is chosen. */
    virtual QString opened() const { return {}; }

    virtual QVector<Scene> scenes()
    {
        return {{objectName(), [] {}}};
    }

    /** Whether nothing is under way that will yet change what the page shows. */
    virtual bool isAtRest() const { return true; }

    /** Goes to the search box that is shown on the page, if there is one; Ctrl+F. */
    void search();

    /** Gives the keys to the part that is used first. */
    void takeFocus();

Q_SIGNALS:
    /** Another page, by its name, is to show a thing. */
    void sigOpen(const QString& page, const QString& thing);
    /** Something could not be done. */
    void sigFailure(const QString& words);

protected:
    /** Not as a focus proxy, before which Tab reaches nothing. */
    void setFirst(QWidget* part) { m_first = part; }

private:
    QWidget* m_first = this;
};
