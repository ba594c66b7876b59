#pragma once

#include "console/TextTable.h"

#include <QJsonArray>
#include <QString>

/** The banners of the client and the pages that they open. */
namespace Banners {

/** Why there is none of the two lists; empty when its table is loaded. */
QString loadFault(bool isNew);

/** One of the two lists in its order. */
TextTable asTable(bool isNew);
QJsonArray asJson(bool isNew);

/** Why an address opens where it does. */
struct Verdict
{
    bool embedded = false;
    QString page;     ///< the listed page whose path the address holds
    QString listedBy; ///< who lists it
};
Verdict verdictOn(const QString& address);

/** The verdict as a sentence. */
QString told(const Verdict& verdict);

} // namespace Banners
