#pragma once

#include <QList>
#include <QString>

class QSslError;

/** Why a server was not trusted, in words. */
namespace Distrust {

/** Names each cause once, with the certificate it is about; empty for no errors. */
QString causeOf(const QList<QSslError>& errors);

} // namespace Distrust
