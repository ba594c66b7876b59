#include "support/InspectorTest.h"

#include "inspector/window/PageList.h"

#include <QSettings>
#include <QTabWidget>

namespace {

/** The pictures of the gifts, four hundred small files, stay where they are: nobody looks at them
 * here. */
void copyContent(const QString& from, const QString& to)
{
    QDir().mkpath(to);
    const auto entries = QDir(from).entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot);
    for (const QFileInfo& entry : entries) {
        const QString copy = to + u'/' + entry.fileName();
        if (entry.fileName() == u"gift"_s)
            continue;
        if (entry.isDir())
            copyContent(entry.filePath(), copy);
        else
            QVERIFY2(QFile::copy(entry.filePath(), copy), qPrintable(copy));
    }
}

} // namespace

void InspectorTest::initTestCase()
{
    QSettings::setDefaultFormat(QSettings::IniFormat);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope,
                       QDir::currentPath() + u"/settings"_s);
    QCoreApplication::setOrganizationName(u"ZGlobal"_s);
    copyContent(QStringLiteral(ZGLOBAL_CONTENT), m_site);
    open();
}

void InspectorTest::open()
{
    m_window = std::make_unique<MainWindow>();
    m_window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get(), patience));
    host().open({{}, {}, m_site});
    waitForTask();
    QCOMPARE(failure(), QString());
}

void InspectorTest::restart(const std::function<void()>& meanwhile)
{
    m_window->close();
    m_window.reset();
    if (meanwhile)
        meanwhile();
    open();
}

void InspectorTest::onEveryTab(const std::function<void(const QString& where)>& look)
{
    for (const PageEntry& entry : pageList()) {
        const QString name = QString::fromLatin1(entry.name);
        m_window->show(name);
        auto* tabs = m_window->current()->findChild<QTabWidget*>();
        for (int tab = 0; tab < (tabs == nullptr ? 1 : tabs->count()); ++tab) {
            if (tabs != nullptr)
                tabs->setCurrentIndex(tab);
            look(tabs == nullptr ? name : name + u'/' + tabs->tabText(tab));
        }
    }
}

void InspectorTest::cleanupTestCase()
{
    m_window.reset();
}

void InspectorTest::init()
{
    m_window->show(u"overview"_s);
}

QString InspectorTest::failure() const
{
    return m_window->findChild<QLabel*>(u"failure"_s)->toolTip();
}

void InspectorTest::click(const char* button)
{
    QTest::mouseClick(find<QPushButton>(button), Qt::LeftButton);
    waitForTask();
}

void InspectorTest::waitForTask()
{
    QTRY_COMPARE(host().task(), QString());
}

void InspectorTest::publish(const QString& table, const QByteArray& bytes)
{
    const QString versions = m_site + u"/app/versions.json"_s;
    QJsonObject whole = QJsonDocument::fromJson(ZTestFolder::read(versions)).object();
    QJsonObject told = whole[u"versions"_s].toObject();
    told[table] = told[table].toInt() + 1;
    whole[u"versions"_s] = told;
    QVERIFY2(told[table].toInt() > 1, qPrintable(table));
    ZTestFolder::write(m_site + u"/app/resources/"_s + table, bytes);
    ZTestFolder::write(versions, QJsonDocument(whole).toJson());
}

void InspectorTest::publish(const QString& table, const QByteArray& before, const QByteArray& after)
{
    QByteArray bytes = published(table);
    QVERIFY2(bytes.contains(before), qPrintable(table));
    publish(table, bytes.replace(before, after));
}

QByteArray InspectorTest::published(const QString& table) const
{
    return ZTestFolder::read(m_site + u"/app/resources/"_s + table);
}

QStringList InspectorTest::column(const QAbstractItemView& view, int column)
{
    QStringList cells;
    for (int row = 0; row < view.model()->rowCount(); ++row)
        cells.append(view.model()->index(row, column).data().toString());
    return cells;
}
