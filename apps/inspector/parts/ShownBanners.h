#pragma once

#include "models/ZBannerModel.h"

#include <QString>

/** Banners with what a view writes beside them, and the file and address of what it draws: none
 *  for those that carry no picture. */
class ShownBanners : public ZBannerModel
{
    Q_OBJECT

public:
    explicit ShownBanners(bool isNew, QObject* parent = nullptr);

    QString id(int row) const { return value(row, QStringLiteral("id")).toString(); }

    int wordsRole() const { return m_wordsRole; }
    int pathRole() const { return m_pathRole; }
    int addressRole() const { return m_addressRole; }

private:
    bool hasPicture(int row) const;
    QString words(int row) const;

    bool m_isNew;
    int m_wordsRole;
    int m_pathRole;
    int m_addressRole;
};
