#pragma once

#include "ZGlobalExport.h"
#include "datatable/TableSchema.h"

#include <QHash>
#include <QObject>
#include <QRect>
#include <QSet>
#include <QString>
#include <QVector>

/** A gift as the table declares it. Times are seconds since the epoch. */
struct ZGiftInfo
{
    int id = 0;
    int giftType = 0;
    QString giftId; ///< what everything else calls the gift
    int price = 0;
    QString giftName;
    qint64 startTime = 0; ///< on sale from here ...
    qint64 endTime = 0;   ///< ... to here, both ends included
    int prankType = 0;
    QString animationName;
    QString broadcastStart;
    QString broadcastEnd;
    QString broadcastAnimationName;
    QString broadcastBgAndAnimationName;
    QString descs;
    int showArea = 0;
    int sequenceId = 0;
    QString giftLabelId;
    bool isVisible = false;
    bool isPcAnimation = false; ///< animationName is the one meant for this client alone
    QString alterDateTime;      ///< seconds in decimal: the version of the gift's resources
    int giftDisplayLocation = 0;
    int giftFamily = 0;
    qint64 labelStartTime = -1;
    qint64 labelEndTime = -1;
    double animScaleRate = 0.5;
    int maxGiftGroup = -1;
    int sendTimeInterval = 0;
    int showTab = 0;
    QString showTabIcon;
    QString activityPage;
    int wishGift = 0;
    QString effectUrl;
    QString activityId;
    QString clientParam;       ///< a JSON object as text, whole
    QRect pcIconGeo;           ///< from clientParam
    int showGiftPanelType = 0; ///< from clientParam
    QString assignId;
};

/** One of the conditions that ZGiftListMgr::checkGiftValid() puts to a gift that it knows. */
struct stGiftRule
{
    enum EWhen {
        Always,
        CheckVisible,         ///< where the caller asks for visible gifts
        CheckDisplayLocation, ///< where the caller asks for those of the gift panel
    };

    EWhen when;
    const char* words;  ///< what holds then, as in "its sale has begun"
    const char* column; ///< the one that it looks at
    bool (*holds)(const ZGiftInfo& gift, qint64 time);
};

/**
 * The gift catalogue of table CS_GiftList, by gift id and in table order.
 *
 * Every path and address carries the record's alterDateTime, so a changed gift gets a new file and
 * a new address. Paths are relative to the working directory; the doubled slash after
 * "res/animation/" is meant. Unless said otherwise an empty or unknown id, and an empty field that
 * names the resource, give an empty text.
 */
class ZGLOBAL_EXPORT ZGiftListMgr : public QObject
{
    Q_OBJECT

public:
    static ZGiftListMgr* getInstance();
    static const TableDeclaration& declaration();

    bool loadGiftListTable(const QString& path);
    void clear();

    ZGiftInfo getGiftInfoById(const QString& id);
    QString getGiftNameById(const QString& id);

    /** One record per gift id: the last of its rows. */
    const QHash<QString, ZGiftInfo>& getGiftMap();
    /** Every valid row in table order, several of one gift id included. */
    const QVector<ZGiftInfo>& getGiftList();

    /** Picture, 138 by 138; an unknown id still has an address, one without a version. */
    QString getGiftImageUrlById(const QString& id);
    /** The picture's file in "res/images/", named after its address. */
    QString getGiftImagePathById(const QString& id);

    /** The animation's name without extension; whole when it ends in ".mp4". */
    QString getGiftAnimationNameById(const QString& id);
    QString getGiftAnimationPathById(const QString& id);
    QString getGiftAnimationUrlById(const QString& id);

    /** The same for an animation by its own name and version, extension rules included. */
    QString getGiftAnimationPathByAniName(const QString& animationName, const QString& version);
    QString getGiftAnimationUrlByAniName(const QString& animationName, const QString& version);

    /**
     * The broadcast's background with its animation in one, from broadcastBgAndAnimationName, and
     * the animation alone, from broadcastAnimationName. On the server their files are called "bc"
     * and the name; so are their folders in "res/flash".
     */
    QString getGiftBGAndAnimationPathById(const QString& id);
    QString getGiftBGAndAnimationUrlById(const QString& id);
    QString getGiftBGAnimationPathById(const QString& id);
    QString getGiftBGAnimationUrlById(const QString& id);

    /** The broadcast's background picture, named after the gift id. */
    QString getGiftBGImageUrlById(const QString& id);

    /** The icon of the gift's tab, from showTabIcon; its file is named after its address. */
    QString getGiftShowTabIconPathById(const QString& id);
    QString getGiftShowTabIconUrlById(const QString& id);

    /** The folder in "res/animation/" of every gift, which keeps it from being tidied away. */
    QSet<QString> getAllAnimationName();

    /** Whether no gift has this id. */
    bool isGiftInvalid(const QString& id);

    /**
     * Whether the gift is on sale at a time, in seconds since the epoch; both ends of its period
     * count. False for an empty or unknown id. The two names answer alike.
     */
    bool checkGiftTimeValid(const QString& id, qint64 time);
    bool checkGiftValidForVote(const QString& id, qint64 time);

    /**
     * Whether the gift may be sent: on sale at the time and, where asked for, visible and shown in
     * the gift panel (display location 0 or 2). Three gifts of past events count as visible always.
     */
    bool checkGiftValid(const QString& id, qint64 time, const bool& checkDisplayLocation,
                        bool checkVisible);
    /** Its conditions, in the order in which it asks. */
    static QVector<stGiftRule> validityRules();

    /** Whether the gift is known and of this family, or on this tab. */
    bool checkGiftFamilyEq(const QString& id, int family);
    bool checkShowTabEq(const QString& id, int showTab);

private:
    ZGiftListMgr() = default;

    /** The record in the map, good until the next load; a default one for an unknown id. */
    const ZGiftInfo& gift(const QString& id) const;

    QHash<QString, ZGiftInfo> m_giftMap;
    QVector<ZGiftInfo> m_giftList;
};
