#include "inspector/parts/AnimatedPng.h"

#include <QPainter>
#include <QtEndian>

#include <zlib.h>

namespace {

constexpr char signature[] = "\x89PNG\r\n\x1a\n";
constexpr int signatureSize = 8;
constexpr int chunkOverhead = 12; // length, type, checksum
constexpr int mostFrames = 300;
constexpr quint32 largestSide = 4096;
constexpr qint64 mostPixels = 64LL * 1024 * 1024; // of all frames

struct Frame
{
    QRect place;
    int milliseconds = 0;
    enum Dispose : char { Keep, Clear, Restore } dispose = Keep;
    bool isBlended = false;
    QByteArray pixels;
};

struct Parts
{
    QByteArray header;
    QByteArray shared; ///< chunks that every frame needs: palette, colours
    QVector<Frame> frames;
};

quint32 number(const QByteArray& data, int at)
{
    return qFromBigEndian<quint32>(data.constData() + at);
}

QByteArray bytesOf(quint32 value)
{
    QByteArray bytes(4, '\0');
    qToBigEndian(value, bytes.data());
    return bytes;
}

QByteArray chunk(const QByteArray& type, const QByteArray& data)
{
    const QByteArray summed = type + data;
    const auto sum = crc32(0, reinterpret_cast<const Bytef*>(summed.constData()),
                           static_cast<uInt>(summed.size()));
    return bytesOf(static_cast<quint32>(data.size())) + summed + bytesOf(static_cast<quint32>(sum));
}

/** A frame's control: size, place, delay as a fraction of a second, what to do before and after. */
bool begin(const QByteArray& data, const QSize& whole, Parts& parts)
{
    if (data.size() < 26 || parts.frames.size() == mostFrames)
        return false;
    for (const int at : {4, 8, 12, 16}) {
        if (number(data, at) > largestSide)
            return false;
    }
    const QRect place(static_cast<int>(number(data, 12)), static_cast<int>(number(data, 16)),
                      static_cast<int>(number(data, 4)), static_cast<int>(number(data, 8)));
    if (place.isEmpty() || !QRect(QPoint(), whole).contains(place))
        return false;
    const int above = qFromBigEndian<quint16>(data.constData() + 20);
    const int below = qFromBigEndian<quint16>(data.constData() + 22);
    Frame frame;
    frame.place = place;
    frame.milliseconds = above * 1000 / (below == 0 ? 100 : below);
    frame.dispose = static_cast<Frame::Dispose>(data.at(24));
    frame.isBlended = data.at(25) == 1;
    parts.frames.append(frame);
    return true;
}

bool take(const QByteArray& type, const QByteArray& data, const QSize& whole, Parts& parts)
{
    if (type == "fcTL")
        return begin(data, whole, parts);
    if (type == "IDAT") {
        if (!parts.frames.isEmpty()) // else it is for readers that know no frames
            parts.frames.last().pixels += chunk("IDAT", data);
    } else if (type == "fdAT") {
        if (parts.frames.isEmpty())
            return false;
        parts.frames.last().pixels += chunk("IDAT", data.mid(4));
    } else if (parts.frames.isEmpty() && type != "acTL") {
        parts.shared += chunk(type, data);
    }
    return true;
}

Parts split(const QByteArray& bytes)
{
    Parts parts;
    if (!bytes.startsWith(signature))
        return parts;
    QSize whole;
    int at = signatureSize;
    while (bytes.size() - at >= chunkOverhead) {
        const quint32 size = number(bytes, at);
        if (size > static_cast<quint32>(bytes.size() - at - chunkOverhead))
            return {};
        const QByteArray type = bytes.mid(at + 4, 4);
        const QByteArray data = bytes.mid(at + 8, static_cast<int>(size));
        at += chunkOverhead + static_cast<int>(size);
        if (type == "IEND")
            break;
        if (parts.header.isEmpty()) {
            if (type != "IHDR" || size != 13 || number(data, 0) > largestSide
                || number(data, 4) > largestSide)
                return {};
            parts.header = data;
            whole = QSize(static_cast<int>(number(data, 0)), static_cast<int>(number(data, 4)));
        } else if (!take(type, data, whole, parts)) {
            return {};
        }
    }
    return parts;
}

QImage read(const Parts& parts, const Frame& frame)
{
    QByteArray header = parts.header;
    header.replace(0, 8,
                   bytesOf(static_cast<quint32>(frame.place.width()))
                       + bytesOf(static_cast<quint32>(frame.place.height())));
    return QImage::fromData(QByteArray(signature, signatureSize) + chunk("IHDR", header)
                                + parts.shared + frame.pixels + chunk("IEND", {}),
                            "PNG");
}

} // namespace

QVector<MovingFrame> AnimatedPng::frames(const QByteArray& bytes)
{
    const Parts parts = split(bytes);
    if (parts.frames.isEmpty())
        return {};
    QImage canvas(static_cast<int>(number(parts.header, 0)),
                  static_cast<int>(number(parts.header, 4)), QImage::Format_ARGB32_Premultiplied);
    const qint64 pixels = qint64(canvas.width()) * canvas.height();
    if (canvas.isNull() || pixels * parts.frames.size() > mostPixels)
        return {};
    canvas.fill(Qt::transparent);
    QVector<MovingFrame> shown;
    for (const Frame& frame : parts.frames) {
        const QImage image = read(parts, frame);
        if (image.isNull())
            return {};
        const QImage before = canvas;
        QPainter painter(&canvas);
        painter.setCompositionMode(frame.isBlended ? QPainter::CompositionMode_SourceOver
                                                   : QPainter::CompositionMode_Source);
        painter.drawImage(frame.place.topLeft(), image);
        painter.end();
        shown.append({canvas, frame.milliseconds});
        if (frame.dispose == Frame::Restore) {
            canvas = before;
        } else if (frame.dispose == Frame::Clear) {
            QPainter eraser(&canvas);
            eraser.setCompositionMode(QPainter::CompositionMode_Source);
            eraser.fillRect(frame.place, Qt::transparent);
        }
    }
    return shown;
}
