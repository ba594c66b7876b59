#include "fuzz/Fuzz.h"
#include "host/GzipBody.h"
#include "host/RetryPolicy.h"

#include <zlib.h>

namespace {

constexpr qint64 limit = 100 * 1000;

struct Taken
{
    QByteArray body;
    QString error;
    bool isWhole = false;
};

Taken take(const QByteArray& stream, int block)
{
    GzipBody gzip;
    Taken taken;
    for (int at = 0; at < stream.size() && taken.error.isEmpty(); at += block) {
        if (!gzip.take(stream.mid(at, block), taken.body, limit))
            taken.error = gzip.error();
    }
    taken.isWhole = taken.error.isEmpty() && gzip.isWhole();
    return taken;
}

/** Whether zlib alone, given all at once, finds one whole stream that is no larger than allowed. */
bool isStream(const QByteArray& stream, QByteArray& body)
{
    z_stream state {};
    inflateInit2(&state, MAX_WBITS + 16);
    body.resize(limit + 1);
    state.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(stream.constData()));
    state.avail_in = uInt(stream.size());
    state.next_out = reinterpret_cast<Bytef*>(body.data());
    state.avail_out = uInt(body.size());
    const int result = inflate(&state, Z_FINISH);
    body.truncate(int(state.total_out));
    inflateEnd(&state);
    return result == Z_STREAM_END && state.avail_in == 0 && body.size() <= limit;
}

} // namespace

/** The first byte says in which blocks the others come in, as the body of an answer. */
ZGLOBAL_FUZZER
{
    const QByteArray stream = bytes.mid(1);
    const Taken taken = take(stream, bytes.isEmpty() ? 1 : 1 + uchar(bytes.at(0)));
    const Taken atOnce = take(stream, qMax(1, stream.size()));
    QByteArray body;
    require(taken.isWhole == isStream(stream, body), "whole is what zlib calls so");
    require(!taken.isWhole || taken.body == body, "with the same bytes");
    require(taken.isWhole == atOnce.isWhole && taken.error == atOnce.error,
            "the blocks do not matter");
    require(taken.body.size() <= limit, "the limit holds");
    require(RetryPolicy::retryAfter(bytes, QDateTime::fromMSecsSinceEpoch(0)) >= 0,
            "no pause is negative");
}
