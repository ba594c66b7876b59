#pragma once

#include <QMap>
#include <QObject>
#include <QString>

/**
 * Tidies "res/flashext" and the files of its "tmp": of every flash the highest version met in this
 * process stays, archive included.
 */
class zTidyFlashext : public QObject
{
    Q_OBJECT

public:
    zTidyFlashext();

    /** One pass, on the tidying thread. */
    void tidy();

private:
    QString m_folder;
    QMap<QString, QString> m_seen; // flash name to the highest version met
};
