#pragma once

#include <QHash>
#include <QObject>
#include <QString>

class ChangeMarks;
class ClientHost;
class ZRecordModel;

/** What the last load of each table changed, watched for all tables from the first load on. GUI
 *  thread only. */
class TableChanges : public QObject
{
    Q_OBJECT

public:
    explicit TableChanges(const ClientHost& host, QObject* parent = nullptr);

    /** The records of a published table, and the same with their changes highlighted; null for any
     *  other table. */
    ZRecordModel* records(const QString& table) const { return m_watched.value(table).records; }
    ChangeMarks* marks(const QString& table) const { return m_watched.value(table).marks; }

    /** "3 new or changed, 1 gone"; empty when the last load changed nothing. */
    QString words(const QString& table) const;

Q_SIGNALS:
    /** A table was loaded, and its changes are those of this load. */
    void sigLoaded(const QString& table);

private:
    struct Watched
    {
        ZRecordModel* records = nullptr;
        ChangeMarks* marks = nullptr;
    };
    void watch();

    QHash<QString, Watched> m_watched; // by table
};
