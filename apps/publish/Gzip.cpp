#include "publish/Gzip.h"

#include <zlib.h>

QString Gzip::twinOf(const QString& path)
{
    return path + QStringLiteral(".gz");
}

bool Gzip::isWanted(const QString& path)
{
    return path == QLatin1String("app/versions.json")
        || path.startsWith(QLatin1String("app/resources/"))
        || path.startsWith(QLatin1String("cms/"));
}

QByteArray Gzip::compressed(const QByteArray& bytes)
{
    constexpr int gzipWindow = MAX_WBITS + 16; // with gzip's header, which then holds no time
    constexpr int memory = 8;
    z_stream stream {};
    if (deflateInit2(&stream, Z_BEST_COMPRESSION, Z_DEFLATED, gzipWindow, memory,
                     Z_DEFAULT_STRATEGY)
        != Z_OK)
        return {};
    QByteArray packed(bytes.size(), '\0');
    // zlib does not write to it, but has no const.
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.constData()));
    stream.avail_in = static_cast<uInt>(bytes.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    const bool isFewer = deflate(&stream, Z_FINISH) == Z_STREAM_END;
    packed.truncate(packed.size() - static_cast<int>(stream.avail_out));
    deflateEnd(&stream);
    return isFewer ? packed : QByteArray();
}
