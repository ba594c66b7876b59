#pragma once

#include "diff/Changes.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>

#include <functional>

/**
 * Changes as one HTML page that can be sent around: everything is in it, pictures too, it runs no
 * script and loads nothing, and it reads in the dark and on a phone.
 */
class DiffPage
{
public:
    /** One of the two states. */
    struct Side
    {
        QString title;                                       ///< where it is from
        std::function<QByteArray(const QString& path)> read; ///< a file of it; null for none
    };

    DiffPage(const Side& before, const Side& after);

    QByteArray html(const QVector<TableChange>& changes) const;

    /** The files of one side that the page of these changes shows. */
    static QStringList filesBefore(const QVector<TableChange>& changes);
    static QStringList filesAfter(const QVector<TableChange>& changes);

private:
    QString section(const TableChange& change) const;
    QString record(const RecordChange& record) const;
    QString pictures(const RecordChange& record) const;
    QString files(const TableChange& change) const;
    QString picturePair(const QString& before, const QString& after) const;

    Side m_before;
    Side m_after;
};
