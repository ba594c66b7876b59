#include "inspector/host/LogModel.h"
#include "inspector/parts/CacheEntries.h"
#include "inspector/window/PageList.h"
#include "models/ZRecordModel.h"
#include "models/ZTableModel.h"
#include "support/InspectorTest.h"

#include <QAbstractProxyModel>
#include <QAction>
#include <QClipboard>
#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QProcess>
#include <QTabBar>
#include <QTranslator>

namespace {

/** A language in which every text of the program stands in brackets; Qt's own are Qt's affair. */
class Brackets : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char* context, const char* text, const char* /*disambiguation*/,
                      int /*n*/) const override
    {
        return *context == 'Q' ? QString() : u'⟦' + QString::fromUtf8(text) + u'⟧';
    }
};

/** What is left of a text but for paths and addresses, which are content. */
QString unbracketed(QString text)
{
    static const QRegularExpression innermost(u"⟦[^⟦⟧]*⟧"_s);
    while (text.contains(innermost))
        text.remove(innermost);
    static const QRegularExpression path(u"\\S*/\\S*"_s);
    return text.remove(path);
}

/** Columns of records are called as in their tables. */
bool isOfRecord(const QAbstractItemModel* model, const QString& title)
{
    while (const auto* proxy = qobject_cast<const QAbstractProxyModel*>(model))
        model = proxy->sourceModel();
    const auto* records = qobject_cast<const ZRecordModel*>(model);
    return records != nullptr && records->columnOf(title) >= 0;
}

constexpr int last = -1;

/** The columns whose cells are the program's words, in views by page and name. */
const QHash<QString, QVector<int>> ownCells {
    {u"window/pages"_s, {0}},
    {u"overview/tables"_s, {ZTableModel::State, ZTableModel::AtStart, ZTableModel::Modified}},
    {u"chat/masks"_s, {1}},
    {u"pages/others"_s, {last}},
    {u"pages/leftOut"_s, {0}},
    {u"look/PCSkin"_s, {last}},
    {u"look/NobleConsume"_s, {last}},
    {u"look/FlashConfig"_s, {last}},
    {u"cache/folders"_s, {CacheEntries::Tidying}},
    {u"cache/entries"_s, {CacheEntries::Tidying, CacheEntries::Why}},
    {u"log/lines"_s, {LogModel::Severity}}};

} // namespace

/** Whatever the window says of its own can be said in another language. */
class tst_translation : public InspectorTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void everyText();
    void copiedKeys();
    void language_data();
    void language();

private:
    void look(const QString& page, const QWidget& widget);
    void lookAtHeader(const QString& where, const QHeaderView& header);
    void see(const QString& where, const QString& text);

    Brackets m_brackets;
    QSet<QString> m_seen;
    QSet<QString> m_faults;
};

void tst_translation::initTestCase()
{
    QCoreApplication::installTranslator(&m_brackets);
    InspectorTest::initTestCase();
}

void tst_translation::see(const QString& where, const QString& text)
{
    static const QRegularExpression word(u"[A-Za-z]{2}"_s);
    m_seen.insert(where + u": "_s + text);
    if (unbracketed(text).contains(word))
        m_faults.insert(where + u": "_s + text);
}

void tst_translation::lookAtHeader(const QString& where, const QHeaderView& header)
{
    for (int section = 0; section < header.count() && !header.isHidden(); ++section) {
        const QString title = header.model()->headerData(section, header.orientation()).toString();
        if (!isOfRecord(header.model(), title))
            see(where, title);
    }
}

void tst_translation::look(const QString& page, const QWidget& widget)
{
    const QString where = page + u'/' + widget.objectName();
    if (const auto* header = qobject_cast<const QHeaderView*>(&widget)) {
        lookAtHeader(where, *header);
        return;
    }
    const auto* view = qobject_cast<const QAbstractItemView*>(&widget);
    for (const int column : ownCells.value(where)) {
        const int place = column == last ? view->model()->columnCount() - 1 : column;
        for (int row = 0; row < view->model()->rowCount(); ++row)
            see(where, view->model()->index(row, place).data().toString());
    }
    for (const char* property : {"toolTip", "placeholderText", "title", "format"})
        see(where, widget.property(property).toString());
    if (qobject_cast<const QLineEdit*>(&widget) == nullptr) // which has what is typed
        see(where, widget.property("text").toString());
    const auto* box = qobject_cast<const QComboBox*>(&widget);
    for (int item = 0; box != nullptr && item < box->count(); ++item)
        see(where, box->itemText(item));
    const auto* tabs = qobject_cast<const QTabBar*>(&widget);
    for (int tab = 0; tabs != nullptr && tab < tabs->count(); ++tab)
        see(where, tabs->tabText(tab) + tabs->tabToolTip(tab));
    const auto actions = widget.actions();
    for (const QAction* action : actions)
        see(where, action->text());
}

void tst_translation::everyText()
{
    const auto lookAtAll = [this](const QString& page, const QWidget& root) {
        const auto widgets = root.findChildren<QWidget*>();
        for (const QWidget* widget : widgets)
            look(page, *widget);
    };
    const QString title = window().windowTitle();
    look(u"window"_s, window());
    QVERIFY2(unbracketed(title).isEmpty(), qPrintable(title));
    lookAtAll(u"window"_s, window());
    for (const PageEntry& entry : pageList()) {
        const QString name = QString::fromLatin1(entry.name);
        const auto scenes = window().page(name)->scenes();
        for (const Page::Scene& scene : scenes) {
            window().show(name);
            scene.set();
            QTRY_VERIFY(window().current()->isAtRest());
            lookAtAll(name, *window().current());
        }
    }
    QVERIFY2(m_seen.size() > 300, "it has not been looked at");
    const QStringList faults = m_faults.values();
    QVERIFY2(faults.isEmpty(), qPrintable(u'\n' + faults.join(u'\n')));
}

/** What reads copied rows knows their columns in one language. */
void tst_translation::copiedKeys()
{
    onEveryTab([this](const QString& where) {
        const auto views = window().current()->findChildren<QAbstractItemView*>();
        for (QAbstractItemView* view : views) {
            if (!view->isVisible() || qobject_cast<QHeaderView*>(view) != nullptr
                || view->model()->rowCount() == 0)
                continue;
            view->setFocus();
            view->setCurrentIndex(view->model()->index(0, 0));
            QTest::keyClick(view, Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
            const QByteArray json = QGuiApplication::clipboard()->text().toUtf8();
            const QJsonObject row = QJsonDocument::fromJson(json).array().first().toObject();
            const QString input = where + u": "_s + view->objectName();
            QVERIFY2(!row.isEmpty(), qPrintable(input));
            for (const QString& key : row.keys())
                QVERIFY2(!key.contains(u'⟦'), qPrintable(input + u' ' + key));
        }
    });
}

void tst_translation::language_data()
{
    QTest::addColumn<QString>("languages");
    QTest::addColumn<QString>("option");
    QTest::addColumn<QString>("said");
    QTest::newRow("the system's") << u"zh_CN"_s << QString() << u"客户端"_s;
    QTest::newRow("first that it has") << u"xx:zh_CN:en"_s << QString() << u"客户端"_s;
    QTest::newRow("English before") << u"en:zh_CN"_s << QString() << u"a client"_s;
    QTest::newRow("none") << u"xx"_s << QString() << u"a client"_s;
    QTest::newRow("named") << u"en"_s << u"zh_CN"_s << u"客户端"_s;
    QTest::newRow("unknown") << u"zh_CN"_s << u"xx"_s << u"no translation to xx"_s;
}

void tst_translation::language()
{
    QFETCH(QString, languages);
    QFETCH(QString, option);
    QFETCH(QString, said);
    QProcess program;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(u"LC_ALL"_s);
    environment.insert(u"LC_CTYPE"_s, u"C.UTF-8"_s); // what it says is read as UTF-8
    environment.insert(u"LANG"_s, u"zh_CN.UTF-8"_s);
    environment.insert(u"LANGUAGE"_s, languages);
    program.setProcessEnvironment(environment);
    program.setProcessChannelMode(QProcess::MergedChannels);
    QStringList arguments {u"--help"_s};
    if (!option.isEmpty())
        arguments.append({u"--language"_s, option});
    program.start(QStringLiteral(ZGLOBAL_INSPECTOR), arguments);
    QVERIFY(program.waitForFinished(-1));
    const QString words = QString::fromUtf8(program.readAll());
    QVERIFY2(words.contains(said), qPrintable(words));
}

INSPECTOR_TEST_MAIN(tst_translation)
#include "tst_translation.moc"
