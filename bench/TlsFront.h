#pragma once

#include "Nginx.h"

#include <memory>

/** HTTP/2 over TLS in front of a server that speaks HTTP/1.1, below the current folder. */
class TlsFront
{
public:
    /** Makes the certificate of all fronts, which this process then trusts. Throws
     *  std::runtime_error when openssl cannot. */
    static void makeCertificate();
    /** The certificate's file. */
    static QString certificate();

    /** A front of the server at that port; throws std::runtime_error when it does not run. */
    explicit TlsFront(int serverPort);

    int port() const { return m_port; }

    /** Ends it; the protocol of every request that it has answered. */
    QStringList endAndTellProtocols();

private:
    int m_port;
    std::unique_ptr<Nginx> m_nginx;
};
