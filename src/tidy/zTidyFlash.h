#pragma once

#include "ZGlobalExport.h"

#include <QMap>
#include <QObject>
#include <QString>
#include <QStringList>

class TidyPass;
struct TidyEntry;

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

private:
    void tidyFolder(TidyPass& pass, const TidyEntry& entry);

    QString m_folder;
    QMap<QString, QString> m_prepare; // flash name to configured version
    QMap<QString, QString> m_seen;    // flash name to the highest version met
};
