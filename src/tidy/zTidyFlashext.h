#pragma once

#include "ZGlobalExport.h"
#include "tidy/TidyPlan.h"

#include <QMap>
#include <QObject>
#include <QString>
#include <QStringList>

/**
 * Tidies "res/flashext" and the files of its "tmp": of every flash the highest version met in this
 * process stays, archive included.
 */
class ZGLOBAL_EXPORT zTidyFlashext : public QObject
{
    Q_OBJECT

public:
    zTidyFlashext();

    /** Nothing here is configured: the names are not used. There because every task has it. */
    void setUseNames(const QStringList& names);

    /** One pass, on the tidying thread. */
    void tidy();

    /** Adds what a pass would do. */
    void plan(TidyPlan& plan) const;

private:
    QString m_folder;
    QMap<QString, QString> m_seen; // flash name to the highest version met
};
