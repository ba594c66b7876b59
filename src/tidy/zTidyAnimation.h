#pragma once

#include "ZGlobalExport.h"
#include "tidy/TidyPlan.h"

#include <QObject>
#include <QSet>
#include <QString>

/** Tidies "res/animation/": removes the folders of animations that no gift uses any more. */
class ZGLOBAL_EXPORT zTidyAnimation : public QObject
{
    Q_OBJECT

public:
    zTidyAnimation();

    /** The folders to keep, by their exact names; replaces those of before. */
    void setUseNames(const QSet<QString>& names);

    /** One pass, on the tidying thread. */
    void tidy();

    /** Adds what a pass would do if these names were to be kept. */
    void plan(const QSet<QString>& names, TidyPlan& plan) const;

private:
    QString m_folder;
    QSet<QString> m_useNames;
};
