#pragma once

#include "ZGlobalExport.h"
#include "datatable/TableSchema.h"

#include <QMap>
#include <QObject>
#include <QSharedPointer>
#include <QString>

/** What a user's level is worth and how it looks. */
struct stFunLevelItem
{
    int level = 0;
    int exp = 0;    ///< experience at which the level is reached
    int ingots = 0; ///< what reaching it costs
    QString levelName;
    QString carId;
    int upgradeType = 0;
    QString iconName;
    QString bigIconName;
    QString name;
    QString iconFlashName;
    QString levelBackgroundColor;
    QString levelBorderColor;
    QString bcFlashName;
    QString enterFlashName;
};

/**
 * A user's levels from table CS_PlatFunLevel, and a built-in ladder of 26 rank titles and badges
 * for the levels up to 190, which is there before any table and does not depend on it.
 *
 * A level below 1 belongs to the ladder's first rank. Unless said otherwise a level that the table
 * does not hold counts as one whose fields are empty.
 */
class ZGLOBAL_EXPORT ZFunLevelMgr : public QObject
{
    Q_OBJECT

public:
    static ZFunLevelMgr* getInstance();
    static const TableDeclaration& declaration();

    bool loadFunLevelInfoListTable(const QString& path);
    void clear();

    stFunLevelItem getFunLevelItem(int level) const;

    /**
     * The table's title of the level; below the table's first level that of the first, above its
     * last that of the last, in a gap between them empty. stripNumber drops the digits at its end.
     */
    QString getLevelNameByLevel(int level, bool stripNumber);

    /** The lowest level of exactly this title; 0 for an empty or unknown one. */
    int getLevelByLevelName(QString levelName);

    /** The ladder's title with the number inside the rank; above the ladder the table's title. */
    QString getFunLevelNameById(int level);

    /**
     * The ladder's badge, below "ui//funlevel/new/" with its doubled slash. Above the ladder it is
     * the address of the table's bigIconName on the "ImageResServer", whose value has to end in a
     * slash for this one; without a bigIconName it is the bare local folder.
     */
    QString getLocalFunLevelImagePathById(int level);

    /** The picture of the number on the badge: below "ui//", some ranks sharing their numbers. */
    QString getLocalFunLevelNumberPathById(int level);

    /** The highest level of the table, 200 without one. */
    int getMaxLevel();

    /**
     * The file of the picture that the server has for the level: "lv<level>.png" in the folder that
     * the configuration names as "funlevelDir", or, where it names none, in "res/images/" under the
     * cache name of the address. Empty unless the table gives the level an iconName.
     */
    QString getFunLevelImagePathById(int level);

    /**
     * The animation of the level's badge on the "ZZResServer", in the form that flash animations
     * without a version have: the table's iconFlashName or, where that is empty, the animation of
     * the ladder's rank. Empty where the rank has none: up to level 50 and from 171 on.
     */
    QString getFunLevelFlashUrlById(int level);

protected:
    ZFunLevelMgr() = default;

    /** What getFunLevelImagePathById() holds, on the "ZZResServer"; empty where that is. */
    QString getFunLevelImageUrlById(int level);

    static QSharedPointer<ZFunLevelMgr> m_instance;

private:
    QMap<int, stFunLevelItem> m_levels;
};
