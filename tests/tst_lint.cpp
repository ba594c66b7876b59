#include "lint/Lint.h"
#include "support/Cases.h"
#include "support/Literals.h"
#include "testing/ZTestFolder.h"

#include <QFile>
#include <QJsonValue>
#include <QRegularExpression>
#include <QtTest>

/** One fault in a copy of the example content, and what is said of it: that and nothing else. */
class tst_lint : public QObject
{
    Q_OBJECT

    static Content content()
    {
        Content content;
        const QString fault = content.read(u"."_s);
        return fault.isEmpty() ? content : Content();
    }

    /** Each finding as "rule: table row column: message". */
    QStringList found(const Content* published)
    {
        const QDateTime moment(QDate(2026, 5, 20), QTime(20, 0));
        QStringList texts;
        for (const Finding& finding : m_lint.findings(content(), published, moment))
            texts.append(u"%1: %2 %3 %4: %5"_s.arg(finding.rule, finding.place.table)
                             .arg(finding.place.row)
                             .arg(finding.place.column, finding.message));
        return texts;
    }

    static QStringList ruleNames()
    {
        QStringList names;
        for (const RuleInfo& rule : Rules::all())
            names.append(QString::fromLatin1(rule.name));
        return names;
    }

    ZTestFolder m_folder;
    Lint m_lint;
    Content m_published;

private Q_SLOTS:
    void initTestCase()
    {
        const QString source = QStringLiteral(ZGLOBAL_CONTENT "/");
        for (const QString& file : ZTestFolder::files(source))
            ZTestFolder::write(file, ZTestFolder::read(source + file));
        // What is kept from clients is no matter, nor how many phrases a row has, nor what stands
        // beside the tables.
        const auto edit = [](const QString& file, const QByteArray& find, const QByteArray& with) {
            ZTestFolder::write(file, ZTestFolder::read(file).replace(find, with));
        };
        edit(u"app/resources/CS_GiftList"_s, "18, false", "\"18\", false");
        edit(u"app/resources/CS_MedalList"_s, "1, 2, \"\"", "1, 2, \"/app/resources/Doutu\"");
        edit(u"app/resources/Message"_s, "h5.example.com/fans", "h5.example.com/[fans]?a b|c");
        edit(u"app/resources/GroupWelComeWord"_s, "\"\"]", "\"\", \"\"]");
        ZTestFolder::write(u"app/resources/Doutu.gz"_s, "x");
        m_published = content();
        QCOMPARE(found(&m_published), QStringList());
    }

    void faults_data()
    {
        QSet<QString> planted;
        for (const QString& tag : Cases::rows("lint"))
            planted.insert(tag.section(u':', 0, 0));
        const QStringList names = ruleNames();
        QCOMPARE(planted, QSet<QString>(names.begin(), names.end()));
    }
    void faults()
    {
        QFETCH(QString, against);
        QFETCH(QString, file);
        QFETCH(QString, find);
        QFETCH(QJsonValue, with);
        QFETCH(QString, expected);
        const bool wasThere = QFile::exists(file);
        if (find.isEmpty() && !with.isNull() && wasThere)
            QSKIP("this system does not tell letter case apart");
        const QByteArray before = ZTestFolder::read(file);
        QByteArray after = with.toString().toUtf8();
        if (!find.isEmpty())
            after = QByteArray(before).replace(find.toUtf8(), after);
        QVERIFY(after != before);
        if (with.isNull())
            QFile::remove(file);
        else
            ZTestFolder::write(file, after);
        Content published = m_published;
        if (against == u"tables"_s) // without versions nothing is said of a table's change
            published.versions.reset();
        const QStringList texts = found(against.isEmpty() ? nullptr : &published);
        QFile::remove(file);
        if (wasThere)
            ZTestFolder::write(file, before);
        const QString all = texts.join(u"\n"_s);
        const QString rule = QString::fromUtf8(QTest::currentDataTag()).section(u':', 0, 0);
        QVERIFY2(texts.size() == 1, qPrintable(all));
        QVERIFY2(all.startsWith(rule + u": "_s + expected), qPrintable(all));
    }

    /** The documentation says of every rule why it is one. */
    void page()
    {
        QStringList explained;
        const QString page =
            QString::fromUtf8(ZTestFolder::read(QStringLiteral(ZGLOBAL_LINT_PAGE)));
        auto rules = QRegularExpression(u"(?m)^- \\*\\*`([\\w-]+)`\\*\\*"_s).globalMatch(page);
        while (rules.hasNext())
            explained.append(rules.next().captured(1));
        QCOMPARE(explained, ruleNames());
    }
};

QTEST_GUILESS_MAIN(tst_lint)

#include "tst_lint.moc"
