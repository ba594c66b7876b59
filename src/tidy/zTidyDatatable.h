#pragma once

#include "ZGlobalExport.h"

#include <QObject>
#include <QString>
#include <QStringList>

/** Tidies "res/dataTable/": removes the files of tables that are no longer current. */
class ZGLOBAL_EXPORT zTidyDatatable : public QObject
{
    Q_OBJECT

public:
    zTidyDatatable();

    /** The names of the files to keep, in whatever letter case; replaces those of before. */
    void setUseNames(const QStringList& names);

    /** One pass, on the tidying thread. */
    void tidy();

private:
    QString m_folder;
    QStringList m_useNames;
};
