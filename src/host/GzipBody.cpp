#include "host/GzipBody.h"

#include <zlib.h>

namespace {

/** The largest window, and a gzip header rather than one of zlib's own. */
constexpr int gzipWindow = MAX_WBITS + 16;

} // namespace

struct GzipBody::Stream : z_stream
{
    Stream()
        : z_stream()
    {
        ready = inflateInit2(this, gzipWindow) == Z_OK;
    }
    ~Stream() { inflateEnd(this); }
    Q_DISABLE_COPY(Stream)

    bool ready;
};

GzipBody::GzipBody()
    : m_stream(std::make_unique<Stream>())
{
}

GzipBody::~GzipBody() = default;

bool GzipBody::take(const QByteArray& block, QByteArray& body, qint64 limit)
{
    // zlib only reads from it.
    m_stream->next_in = reinterpret_cast<Bytef*>(const_cast<char*>(block.constData()));
    m_stream->avail_in = static_cast<uInt>(block.size());
    if (!m_stream->ready)
        m_error = QStringLiteral("no memory to decompress the body");
    while (m_error.isEmpty() && m_stream->avail_in > 0) {
        if (m_whole)
            m_error = QStringLiteral("something follows the gzip body");
        else if (!inflateInto(body, limit))
            return false;
    }
    return m_error.isEmpty();
}

bool GzipBody::inflateInto(QByteArray& body, qint64 limit)
{
    char out[32 * 1024];
    do {
        m_stream->next_out = reinterpret_cast<Bytef*>(out);
        m_stream->avail_out = sizeof out;
        const int result = inflate(m_stream.get(), Z_NO_FLUSH);
        const int count = static_cast<int>(sizeof out - m_stream->avail_out);
        m_whole = result == Z_STREAM_END;
        if (body.size() + count > limit)
            m_error = QStringLiteral("the body is larger than %1 bytes").arg(limit);
        else if (result != Z_OK && result != Z_STREAM_END && result != Z_BUF_ERROR)
            m_error = QStringLiteral("the gzip body is damaged");
        else
            body.append(out, count);
    } while (m_error.isEmpty() && !m_whole && m_stream->avail_out == 0);
    return m_error.isEmpty();
}
