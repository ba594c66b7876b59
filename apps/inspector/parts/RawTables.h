#pragma once

#include "why/Explanation.h"
#include "why/Why.h"

#include <QHash>
#include <QObject>
#include <QString>

#include <memory>

/**
 * The files of tables row by row, read off the GUI thread when a page asks for one, and kept until
 * it changes. GUI thread only.
 */
class RawTables : public QObject
{
    Q_OBJECT

public:
    using File = std::shared_ptr<const Why::RawTable>;

    using QObject::QObject;

    /** The file of a table as it lies there now; null while it is being read, and sigRead() tells
     *  when it is there. */
    File get(const QString& table);

    /** What a question of Why of a kind is to be given; empty while one of its files is read. */
    Why::Files filesFor(const QString& kind);

    bool isReading() const { return !m_reading.isEmpty(); }

Q_SIGNALS:
    void sigRead(const QString& table);

private:
    struct Kept
    {
        File file;
        Why::Origin origin; // as it was when the reading began
    };

    void read(const TableStatus& status, const Why::Origin& origin);

    QHash<QString, Kept> m_kept;           // by table
    QHash<QString, Why::Origin> m_reading; // the same
};
