#pragma once

#include <QCoreApplication>
#include <QVariant>

/** What headerData() answers for a title that is translated in a context: in the language of the
 *  window to be read, and in English as Qt::UserRole, by which programs know the column. */
inline QVariant columnTitle(const char* context, const char* title, int role)
{
    if (role == Qt::DisplayRole)
        return QCoreApplication::translate(context, title);
    return role == Qt::UserRole ? QVariant(QString::fromLatin1(title)) : QVariant();
}
