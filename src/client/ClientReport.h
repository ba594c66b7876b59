#pragma once

#include "client/ClientResults.h"

#include <QJsonObject>
#include <QVector>

/** The state of a client for those who look for a fault from afar. */
namespace ClientReport {

/** As ZGlobalClient::report(), with what the client itself knows to have failed. */
QJsonObject of(const QVector<ZClientFailure>& failures);

} // namespace ClientReport
