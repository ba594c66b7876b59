#include "Published.h"

#include "datatable/TableCatalogue.h"

#include <QFile>

#include <stdexcept>
#include <zlib.h>

QString Published::versionsFile()
{
    return QStringLiteral("app/versions.json");
}

QStringList Published::tableFiles()
{
    QStringList files;
    for (const auto type : TableCatalogue::types())
        files.append(QStringLiteral("app/resources/") + TableCatalogue::name(type));
    return files;
}

QByteArray Published::bytesOf(const QString& file)
{
    QFile source(QStringLiteral(ZGLOBAL_EXAMPLES "/content/") + file);
    if (!source.open(QIODevice::ReadOnly))
        throw std::runtime_error(qPrintable(QStringLiteral("cannot read ") + source.fileName()));
    return source.readAll();
}

QByteArray Published::gzip(const QByteArray& bytes)
{
    z_stream stream {};
    if (deflateInit2(&stream, Z_BEST_COMPRESSION, Z_DEFLATED, MAX_WBITS + 16, MAX_MEM_LEVEL,
                     Z_DEFAULT_STRATEGY)
        != Z_OK)
        throw std::runtime_error("no memory to compress");
    QByteArray compressed(static_cast<int>(deflateBound(&stream, uLong(bytes.size()))), '\0');
    // zlib only reads from it.
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.constData()));
    stream.avail_in = static_cast<uInt>(bytes.size());
    stream.next_out = reinterpret_cast<Bytef*>(compressed.data());
    stream.avail_out = static_cast<uInt>(compressed.size());
    deflate(&stream, Z_FINISH);
    compressed.truncate(static_cast<int>(stream.total_out));
    deflateEnd(&stream);
    return compressed;
}
