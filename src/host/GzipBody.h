#pragma once

#include <QByteArray>
#include <QString>

#include <memory>

/** Takes a gzip body apart while it comes in; whole only when length and checksum are right. */
class GzipBody
{
public:
    GzipBody();
    ~GzipBody();
    Q_DISABLE_COPY(GzipBody)

    /** Appends to body what comes out of the next block; false when body would exceed limit bytes,
     *  the block is damaged or something follows the end, which error() then tells. */
    bool take(const QByteArray& block, QByteArray& body, qint64 limit);
    QString error() const { return m_error; }

    bool isWhole() const { return m_whole; }

private:
    struct Stream;
    bool inflateInto(QByteArray& body, qint64 limit);

    std::unique_ptr<Stream> m_stream;
    QString m_error;
    bool m_whole = false;
};
