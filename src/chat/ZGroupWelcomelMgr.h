#pragma once

#include "ZGlobalExport.h"
#include "datatable/TableSchema.h"

#include <QObject>
#include <QSharedPointer>
#include <QString>
#include <QVector>

/**
 * The phrases with which a group greets a newcomer, from table GroupWelComeWord.
 *
 * Every cell that holds a text is a phrase, whatever its column is called.
 */
class ZGLOBAL_EXPORT ZGroupWelcomelMgr : public QObject
{
    Q_OBJECT

public:
    static ZGroupWelcomelMgr* getInstance();
    static const TableDeclaration& declaration();

    /** Replaces the phrases; a table that cannot be read leaves none, unlike with other managers.
     */
    bool loadGroupWelcomeTable(const QString& path);
    void clear();

    /**
     * One phrase, drawn with qrand(), on Qt 6 with std::rand(), which is the program's to seed;
     * empty when there is none.
     */
    QString getRandWelcome();

    /** The phrases in table order. */
    const QVector<QString>& getWelcomeList() const;

protected:
    ZGroupWelcomelMgr() = default;

    static QSharedPointer<ZGroupWelcomelMgr> m_instance;

private:
    QVector<QString> m_phrases;
};
