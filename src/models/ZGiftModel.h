#pragma once

#include "models/ZRecordModel.h"

/**
 * The gifts in table order, and at a moment which of them may be sent.
 *
 * Roles beside the columns of CS_GiftList: "sendable", see ZGiftListMgr::checkGiftValid() with
 * visibility and display location; "imageUrl" and "imagePath"; "labelName", "labelStartColor" and
 * "labelEndColor", empty without a label. All are those of the gift's id, which is its last row.
 */
class ZGLOBALMODELS_EXPORT ZGiftModel : public ZRecordModel
{
    Q_OBJECT
    Q_PROPERTY(qint64 time READ time WRITE setTime NOTIFY sigTimeChanged)

public:
    explicit ZGiftModel(QObject* parent = nullptr);

    /** The moment, in seconds since the epoch; at first that of the object's making. */
    qint64 time() const { return m_time; }
    void setTime(qint64 seconds);

    bool isSendable(int row) const;
    int sendableRole() const { return m_sendableRole; }
    int imagePathRole() const { return m_imagePathRole; }

Q_SIGNALS:
    void sigTimeChanged();

private:
    QVector<bool> sendable() const;

    qint64 m_time;
    int m_sendableRole;
    int m_imagePathRole;
};
