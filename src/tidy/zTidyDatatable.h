#pragma once

#include "ZGlobalExport.h"
#include "tidy/TidyPlan.h"

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

    /** Adds what a pass would do if these names were to be kept. */
    void plan(const QStringList& names, TidyPlan& plan) const;

private:
    QString m_folder;
    QStringList m_useNames;
};
