#pragma once

#include "inspector/window/MainWindow.h"
#include "support/Patience.h"
#include "support/Tables.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QtTest>

#include <functional>
#include <memory>

/**
 * The desktop program's window as somebody uses it, on content of its own that the test may break.
 * It is opened once for a test program, and each function begins on the overview.
 */
class InspectorTest : public QObject
{
    Q_OBJECT

protected Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    virtual void init();

protected:
    MainWindow& window() { return *m_window; }
    ClientHost& host() { return m_window->host(); }
    QString site() const { return m_site; }

    /** Of the page that is shown. */
    template <class Widget>
    Widget* find(const char* name)
    {
        auto* found = m_window->current()->findChild<Widget*>(QLatin1String(name));
        if (found == nullptr)
            qFatal("no widget %s on the page", name);
        return found;
    }

    /** What is told at the foot of the window, all of it; empty while all is well. */
    QString failure() const;

    /** Closes the window and opens another on the same content, as on the next day; what happens
     *  meanwhile is between the two. */
    void restart(const std::function<void()>& meanwhile = {});

    /** Calls look() on each tab of each page; the text says which it is. */
    void onEveryTab(const std::function<void(const QString& where)>& look);

    /** Clicks, and waits until the task that this begins is done. */
    void click(const char* button);
    void waitForTask();

    /** Publishes a table of the site in its next version. */
    void publish(const QString& table, const QByteArray& bytes);
    /** The same of what is published now, with a text in it replaced. */
    void publish(const QString& table, const QByteArray& before, const QByteArray& after);
    /** What the site has of a table. */
    QByteArray published(const QString& table) const;

    /** The cells of a column, as they are shown. */
    static QStringList column(const QAbstractItemView& view, int column);

private:
    void open();

    ZTestFolder m_folder;
    QString m_site = QDir::currentPath() + u"/site"_s;
    std::unique_ptr<MainWindow> m_window;
};

/** A test program of one such class, on a display that nobody sees. */
#define INSPECTOR_TEST_MAIN(TestClass)                                                             \
    int main(int argc, char** argv)                                                                \
    {                                                                                              \
        qputenv("QT_QPA_PLATFORM", "offscreen");                                                   \
        const QApplication application(argc, argv);                                                \
        TestClass test;                                                                            \
        return QTest::qExec(&test, argc, argv);                                                    \
    }
