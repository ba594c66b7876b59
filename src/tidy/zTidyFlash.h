#pragma once

#include "ZGlobalExport.h"
#include "tidy/TidyPlan.h"

#include <QMap>
#include <QObject>
#include <QString>
#include <QStringList>

/**
 * Tidies "res/flash" and the files of its "tmp": of a configured flash the configured version
 * stays, of any other the highest version met in this process.
 */
class ZGLOBAL_EXPORT zTidyFlash : public QObject
{
    Q_OBJECT

public:
    zTidyFlash();

    /** The configured versions, as name, "_" and version; those of earlier calls stay known. */
    void setUseNames(const QStringList& names);

    /** One pass, on the tidying thread. */
    void tidy();

    /** Adds what a pass would do if these versions were configured too. */
    void plan(const QStringList& names, TidyPlan& plan) const;

private:
    QString m_folder;
    QMap<QString, QString> m_prepare; // flash name to configured version
    QMap<QString, QString> m_seen;    // flash name to the highest version met
};
