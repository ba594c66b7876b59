#include "models/ZGiftModel.h"

#include "datatable/ZDataTableMgr.h"
#include "gift/ZGiftLabelMgr.h"
#include "gift/ZGiftListMgr.h"

#include <QDateTime>

ZGiftModel::ZGiftModel(QObject* parent)
    : ZRecordModel(QStringLiteral("CS_GiftList"), parent)
    , m_time(QDateTime::currentSecsSinceEpoch())
{
    ZGiftListMgr* gifts = ZGiftListMgr::getInstance();
    m_sendableRole = addRole("sendable", [this](int row) { return isSendable(row); });
    addRole("imageUrl", [=](int row) { return gifts->getGiftImageUrlById(key(row)); });
    m_imagePathRole =
        addRole("imagePath", [=](int row) { return gifts->getGiftImagePathById(key(row)); });
    const auto addLabelRole = [this](const char* name, QString ZGiftLabelInfo::*field) {
        return addRole(name, [this, field](int row) {
            const QString id = value(row, QStringLiteral("giftLabelId")).toString();
            return ZGiftLabelMgr::getInstance().getInfoById(id).*field;
        });
    };
    const QVector<int> labelRoles {addLabelRole("labelName", &ZGiftLabelInfo::giftLabelName),
                                   addLabelRole("labelStartColor", &ZGiftLabelInfo::startColor),
                                   addLabelRole("labelEndColor", &ZGiftLabelInfo::endColor)};
    connect(&ZGiftLabelMgr::getInstance(), &ZGiftLabelMgr::sigUpdate, this, [this, labelRoles] {
        if (rowCount() > 0)
            Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1), labelRoles);
    });
}

void ZGiftModel::setTime(qint64 seconds)
{
    if (seconds == m_time)
        return;
    QVector<bool> changed = sendable();
    m_time = seconds;
    for (int row = 0; row < rowCount(); ++row)
        changed[row] = changed.at(row) != isSendable(row);
    tellChanges(changed, m_sendableRole);
    Q_EMIT sigTimeChanged();
}

bool ZGiftModel::isSendable(int row) const
{
    return ZGiftListMgr::getInstance()->checkGiftValid(key(row), m_time, true, true);
}

QVector<bool> ZGiftModel::sendable() const
{
    QVector<bool> all(rowCount());
    for (int row = 0; row < rowCount(); ++row)
        all[row] = isSendable(row);
    return all;
}
