#pragma once

#include "ZGlobalExport.h"
#include "datatable/TableDescription.h"

#include <QObject>
#include <QSharedPointer>
#include <QString>
#include <QVector>

/**
 * The phrases with which a group greets a newcomer, from table GroupWelComeWord.
 *
 * Every cell that holds a text is a phrase, whatever its column is called. GUI thread only.
 */
class ZGLOBAL_EXPORT ZGroupWelcomelMgr : public QObject
{
    Q_OBJECT

public:
    static ZGroupWelcomelMgr* getInstance();

    /** Replaces the phrases; a table that cannot be read leaves none, unlike with other managers.
     */
    bool loadGroupWelcomeTable(const QString& path);

    /**
     * One phrase, drawn with qrand(), which is the program's to seed; empty when there is none.
     */
    QString getRandWelcome();

    /** The phrases in table order. */
    const QVector<QString>& getWelcomeList() const;

    static TableDescription describeTable();

protected:
    ZGroupWelcomelMgr() = default;

    static QSharedPointer<ZGroupWelcomelMgr> m_instance;

private:
    QVector<QString> m_phrases;
};
