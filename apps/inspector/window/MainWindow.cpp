#include "inspector/window/MainWindow.h"

#include "inspector/parts/Look.h"
#include "inspector/window/PageList.h"
#include "inspector/window/StatusStrip.h"

#include <QAction>
#include <QApplication>
#include <QListWidget>
#include <QMouseEvent>
#include <QSettings>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace {

QString geometryKey()
{
    return QStringLiteral("window/geometry");
}

QString pageKey()
{
    return QStringLiteral("window/page");
}

int placeOf(const QString& name)
{
    for (int place = 0; place < pageList().size(); ++place) {
        if (name == QLatin1String(pageList().at(place).name))
            return place;
    }
    return -1;
}

} // namespace

MainWindow::MainWindow(QWidget* parent)
    : QMainWindow(parent)
    , m_list(new QListWidget)
    , m_pages(new QStackedWidget)
    , m_status(new StatusStrip(m_host))
{
    setWindowTitle(tr("ZGlobal Inspector"));
    m_list->setObjectName(QStringLiteral("pages"));
    for (const PageEntry& entry : pageList()) {
        m_list->addItem(QCoreApplication::translate("PageList", entry.title));
        m_pages->addWidget(new QWidget); // until the page is asked for
    }
    m_list->setSpacing(3);
    m_list->setFrameShape(QFrame::NoFrame);
    m_list->setFixedWidth(m_list->sizeHintForColumn(0) + 40);
    auto* middle = new QWidget;
    auto* across = new QHBoxLayout(middle);
    across->setContentsMargins(0, 0, 0, 0);
    across->setSpacing(0);
    across->addWidget(m_list);
    across->addWidget(m_pages, 1);
    auto* whole = new QWidget;
    auto* layout = new QVBoxLayout(whole);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(middle, 1);
    layout->addWidget(m_status);
    setCentralWidget(whole);
    addActions();

    connect(&m_host, &ClientHost::sigStopping, &m_pictures, &Pictures::pause);
    connect(&m_host, &ClientHost::sigTask, &m_pictures, [this](const QString& task) {
        if (task.isEmpty())
            m_pictures.resume();
    });
    connect(m_list, &QListWidget::currentRowChanged, this, &MainWindow::showPage);
    resize(1280, 800);
    restoreGeometry(QSettings().value(geometryKey()).toByteArray());
    m_list->setEnabled(false); // the focus would choose a page
    connect(&m_host, &ClientHost::sigEntered, this, [this] {
        m_list->setEnabled(true);
        if (current() == nullptr)
            m_list->setCurrentRow(qMax(0, placeOf(QSettings().value(pageKey()).toString())));
    });
    // Before the pages, which then ask for what may have come.
    connect(&m_host, &ClientHost::sigFilesChanged, &m_pictures, &Pictures::retry);
    QString advice;
    if (!Look::hasChineseFont(&advice))
        m_status->tellAdvice(advice);
}

Page* MainWindow::page(const QString& name)
{
    const int place = placeOf(name);
    if (place < 0)
        return nullptr;
    if (auto* made = qobject_cast<Page*>(m_pages->widget(place)))
        return made;
    Page* page = pageList().at(place).make(
        {m_host, m_log, m_traffic, m_pictures, m_files, m_changes}, nullptr);
    page->setObjectName(name);
    connect(page, &Page::sigOpen, this,
            [this](const QString& other, const QString& thing) { show(other, thing); });
    connect(page, &Page::sigFailure, m_status, &StatusStrip::tellFailure);
    QWidget* empty = m_pages->widget(place);
    const bool isShown = m_pages->currentIndex() == place;
    m_pages->removeWidget(empty);
    m_pages->insertWidget(place, page);
    delete empty;
    if (isShown)
        m_pages->setCurrentIndex(place);
    return page;
}

void MainWindow::show(const QString& name, const QString& thing)
{
    const int place = placeOf(name);
    if (place < 0 || !m_list->isEnabled())
        return;
    const Visit before = visit();
    m_list->setCurrentRow(place);
    // A page that one comes back to stays as it was left.
    if (!thing.isEmpty() && !(m_travels && thing == current()->opened()))
        current()->open(thing);
    current()->takeFocus();
    if (before.page == name && before.thing != current()->opened())
        remember(before); // showPage() has, where the page is another
}

Page* MainWindow::current() const
{
    return qobject_cast<Page*>(m_pages->currentWidget());
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event)
{
    const bool isPress =
        event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick;
    const auto* widget = isPress ? qobject_cast<QWidget*>(watched) : nullptr;
    if (widget == nullptr || widget->window() != this)
        return QMainWindow::eventFilter(watched, event);
    const Qt::MouseButton button = static_cast<QMouseEvent*>(event)->button();
    if (button == Qt::BackButton)
        goBack();
    else if (button == Qt::ForwardButton)
        goForward();
    return button == Qt::BackButton || button == Qt::ForwardButton;
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    QSettings().setValue(geometryKey(), saveGeometry());
    if (current() != nullptr)
        QSettings().setValue(pageKey(), current()->objectName());
    QMainWindow::closeEvent(event);
}

void MainWindow::addActions()
{
    const auto add = [this](const QString& text, const QKeySequence& keys, const auto& call) {
        auto* action = new QAction(text, this);
        action->setShortcut(keys);
        connect(action, &QAction::triggered, this, call);
        addAction(action);
    };
    add(tr("Search"), QKeySequence::Find, [this] { current()->search(); });
    add(tr("Refresh"), QKeySequence(Qt::Key_F5), [this] {
        m_pictures.retry();
        current()->refresh();
    });
    add(tr("Back"), QKeySequence(QStringLiteral("Alt+Left")), [this] { goBack(); });
    add(tr("Forward"), QKeySequence(QStringLiteral("Alt+Right")), [this] { goForward(); });
    qApp->installEventFilter(this);
    add(tr("Quit"), QKeySequence(QStringLiteral("Ctrl+Q")), [this] { close(); });
    for (int place = 0; place < pageList().size(); ++place)
        add(m_list->item(place)->text(), QKeySequence(QStringLiteral("Ctrl+%1").arg(place + 1)),
            [this, place] { show(QString::fromLatin1(pageList().at(place).name)); });
}

void MainWindow::showPage(int place)
{
    if (place < 0)
        return;
    remember(visit());
    m_pages->setCurrentWidget(page(QString::fromLatin1(pageList().at(place).name)));
}

MainWindow::Visit MainWindow::visit() const
{
    return current() == nullptr ? Visit() : Visit {current()->objectName(), current()->opened()};
}

void MainWindow::remember(const Visit& left)
{
    if (m_travels || left.page.isEmpty())
        return;
    m_back.append(left);
    m_forward.clear();
}

void MainWindow::travel(QVector<Visit>& from, QVector<Visit>& to)
{
    if (from.isEmpty())
        return;
    to.append(visit());
    const Visit next = from.takeLast();
    m_travels = true;
    show(next.page, next.thing);
    m_travels = false;
}
