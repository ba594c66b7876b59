#pragma once

#include "ZGlobalExport.h"
#include "datatable/TableSchema.h"

#include <QHash>
#include <QObject>
#include <QSharedPointer>
#include <QString>
#include <QTime>
#include <QVector>

/** A decorative border round a user's avatar. */
struct ZImageFrameInfo
{
    int headFrameId = 0;
    int headFrameType = 0;
    QString name;
    QString description;
    QString icon2;            ///< the picture outside all periods
    QString flash;            ///< the animation outside all periods
    int version = 0;          ///< of the pictures
    QString micAnimation;     ///< shown while the user speaks
    QString timePeriodConfig; ///< the schedule as JSON text, or empty
};

/**
 * A period of a head frame's schedule. A time that is not written as "HH:mm:ss" is invalid here,
 * and the period then holds no time.
 */
struct ZGLOBAL_EXPORT stFramePeriod
{
    QTime start;
    QTime end;
    QString icon;
    QString flash;

    /** Both ends are in it, to the millisecond; one that starts after it ends runs over midnight.
     */
    bool holds(const QTime& at) const;
};

/**
 * The head frames of table CS_HeadframeList, by id.
 *
 * A frame may look different at certain hours. Its schedule is an object with an array
 * "periodConfigs" of periods {"startTime": "HH:mm:ss", "endTime": "HH:mm:ss", "icon1": picture,
 * "flash": animation}. The first that holds the time is in force.
 *
 * The lookups that depend on the hour have two forms: for a stated local time, and for now, which
 * reads the clock once. No period holds an invalid time. Unless said otherwise an unknown id gives
 * an empty text. The doubled slash in the paths is meant.
 */
class ZGLOBAL_EXPORT ZImageFrameInfoListMgr : public QObject
{
    Q_OBJECT

public:
    static ZImageFrameInfoListMgr* getInstance();
    static const TableDeclaration& declaration();

    bool loadImageFrameInfoListTable(const QString& path);
    void clear();

    const QHash<int, ZImageFrameInfo>& getImageFrameMap();

    ZImageFrameInfo getInfoById(int id);

    /** The start of the period in force; an invalid time when none is. */
    QTime getCurrentPeriodStartTime(int id);
    QTime getPeriodStartTimeAt(int id, const QTime& at);

    /** The periods of a schedule in its order, those that never hold among them. */
    static QVector<stFramePeriod> periodsOf(const QString& schedule);

    /**
     * The picture and the animation in force: the period's, even where it has an empty one, or the
     * frame's own when no period is in force.
     */
    QString getEffectiveIconById(int id);
    QString getEffectiveIconAt(int id, const QTime& at);
    QString getEffectiveFlashById(int id);
    QString getEffectiveFlashAt(int id, const QTime& at);

    /** The frame's own picture, under the record's version. */
    QString getFramePathById(int id);
    QString getFrameUrlById(int id);

    /** The picture in force; empty where that is. */
    QString getEffectiveFramePathById(int id);
    QString getEffectiveFramePathAt(int id, const QTime& at);
    QString getEffectiveFrameUrlById(int id);
    QString getEffectiveFrameUrlAt(int id, const QTime& at);

protected:
    ZImageFrameInfoListMgr() = default;

    static QSharedPointer<ZImageFrameInfoListMgr> m_instance;

private:
    const stFramePeriod* periodAt(const ZImageFrameInfo& frame, const QTime& at);
    QString effective(int id, const QTime& at, QString stFramePeriod::*ofPeriod,
                      QString ZImageFrameInfo::*ofFrame);

    QHash<int, ZImageFrameInfo> m_frames;
    QHash<int, QVector<stFramePeriod>> m_periods; // by id, of the frames that were asked for
};
