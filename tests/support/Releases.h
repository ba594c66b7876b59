#pragma once

#include "publish/Plan.h"
#include "support/Literals.h"
#include "support/Patience.h"
#include "testing/ZTestFolder.h"

#include <QFileInfo>
#include <QJsonDocument>
#include <QProcess>

/** What is published out of "src" into "www" of the working folder. */
namespace Releases {

using Tree = QMap<QString, QByteArray>; // path and content

/** The program's streams, and its status before them where it is another. */
inline QString run(const QStringList& arguments, int status = 0)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(QStringLiteral(ZGLOBAL_PROGRAM), arguments);
    process.waitForFinished(patience);
    const QString told = QString::fromUtf8(process.readAll());
    return process.exitCode() == status && process.exitStatus() == QProcess::NormalExit
        ? told
        : u"%1: %2"_s.arg(QString::number(process.exitCode()), told);
}

inline Tree filesIn(const QString& folder)
{
    Tree tree;
    for (const QString& file : ZTestFolder::files(folder))
        tree.insert(file, ZTestFolder::read(folder + u'/' + file));
    return tree;
}

inline Tree served()
{
    return filesIn(QFileInfo(u"www/current"_s).canonicalFilePath());
}

inline int versionIn(const Tree& tree, const QString& table)
{
    const QJsonDocument file = QJsonDocument::fromJson(tree[u"app/versions.json"_s]);
    return file[u"versions"_s][table].toInt(-1);
}

/** What becomes of it, by the rules that find something. */
inline QString published(const PublishOptions& options = {})
{
    PublishedTree tree(u"www"_s);
    Plan plan;
    QString fault = tree.lock();
    fault += plan.publish(u"src"_s, tree, options);
    QStringList found;
    for (const Finding& finding : plan.findings) {
        if (finding.severity != Severity::Hint)
            found.append(u"%1 %2 %3 %4"_s.arg(finding.rule, finding.place.table)
                             .arg(finding.place.row)
                             .arg(finding.place.column));
    }
    if (!fault.isEmpty() || !found.isEmpty() || !plan.changesAnything())
        return fault + found.join(u'\n');
    return tree.add(plan.release, options.kept, [](int, int) {});
}

inline QString rolledBack(int release)
{
    PublishedTree tree(u"www"_s);
    Plan plan;
    QString fault = tree.lock();
    fault += plan.rollBack(release, tree, {});
    return fault.isEmpty() ? tree.add(plan.release, 5, [](int, int) {}) : fault;
}

} // namespace Releases
