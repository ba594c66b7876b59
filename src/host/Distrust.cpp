#include "host/Distrust.h"

#include <QDateTime>
#include <QSslCertificate>
#include <QSslError>
#include <QStringList>

namespace {

QString nameOf(const QStringList& commonName, const QStringList& organization)
{
    const QStringList names = commonName + organization;
    QString name = names.isEmpty() ? QStringLiteral("nobody") : names.first();
    // Anyone may write a certificate, and messages go to terminals.
    for (QChar& character : name) {
        if (!character.isPrint())
            character = QLatin1Char('?');
    }
    return name;
}

QString subjectOf(const QSslCertificate& certificate)
{
    return nameOf(certificate.subjectInfo(QSslCertificate::CommonName),
                  certificate.subjectInfo(QSslCertificate::Organization));
}

QString issuerOf(const QSslCertificate& certificate)
{
    return nameOf(certificate.issuerInfo(QSslCertificate::CommonName),
                  certificate.issuerInfo(QSslCertificate::Organization));
}

QString causeOf(const QSslError& error)
{
    const QSslCertificate certificate = error.certificate();
    const QString subject = subjectOf(certificate);
    switch (error.error()) {
    case QSslError::CertificateExpired:
        return QStringLiteral("the certificate of %1 expired on %2")
            .arg(subject, certificate.expiryDate().toString(Qt::ISODate));
    case QSslError::CertificateNotYetValid:
        return QStringLiteral("the certificate of %1 is valid from %2 on")
            .arg(subject, certificate.effectiveDate().toString(Qt::ISODate));
    case QSslError::HostNameMismatch:
        return QStringLiteral("the certificate of %1 is for another host name").arg(subject);
    case QSslError::SelfSignedCertificate:
        return QStringLiteral("the certificate of %1 is self-signed").arg(subject);
    case QSslError::SelfSignedCertificateInChain:
    case QSslError::UnableToGetIssuerCertificate:
    case QSslError::UnableToGetLocalIssuerCertificate:
    case QSslError::UnableToVerifyFirstCertificate:
    case QSslError::CertificateUntrusted:
        return QStringLiteral("the certificate of %1 has the unknown issuer %2")
            .arg(subject, issuerOf(certificate));
    default:
        return error.errorString();
    }
}

} // namespace

QString Distrust::causeOf(const QList<QSslError>& errors)
{
    QStringList causes;
    for (const QSslError& error : errors)
        causes.append(::causeOf(error));
    causes.removeDuplicates();
    return causes.join(QStringLiteral(", "));
}
