#pragma once
// Model files and layer files, written from the layouts alone.

#include "support/LogCapture.h"
#include "support/TestInstall.h"

#include <QBuffer>
#include <QByteArray>
#include <QImage>
#include <QtEndian>

inline void put32(QByteArray *bytes, int at, qint32 value)
{
    qToLittleEndian(value, bytes->data() + at);
}
inline void put64(QByteArray *bytes, int at, quint64 value)
{
    qToLittleEndian(value, bytes->data() + at);
}

/// A picture of one colour with a black corner.
inline QByteArray png(int width, int height, QRgb colour)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(colour);
    for (int i = 0; i < 16; ++i)
        image.setPixel(i % 4, i / 4, qRgb(0, 0, 0));
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, "PNG");
    return bytes;
}

/// Header, settings, icon, preview.
inline QByteArray modelBytes(const QByteArray &settings, const QByteArray &icon = {},
                             const QByteArray &preview = {})
{
    QByteArray header(84, '\x5a');
    put64(&header, 52, 84);
    put64(&header, 60, quint64(settings.size()));
    put64(&header, 16, quint64(84 + settings.size()));
    put32(&header, 24, icon.size());
    put64(&header, 28, quint64(84 + settings.size() + icon.size()));
    put32(&header, 36, preview.size());
    return header + settings + icon + preview;
}

/// Settings of a picture of `pixels` plus two blank margins.
inline QByteArray pictureSettings(int pixelsX, int pixelsY, int blank, int passCnt)
{
    return QString("layerHeight=0.02\ndpiX=600\ndpiY=601.5\nextraBlankPixel=%1\npixelsX=%2\npixelsY=%"
                   "3\npassCnt=%4\n"
                   "modelMaterial=12.5\nsupportMaterial=3\n")
        .arg(blank)
        .arg(pixelsX)
        .arg(pixelsY)
        .arg(passCnt)
        .toUtf8();
}

/// A zlib stream; qCompress puts 4 bytes of length before it.
inline QByteArray packed(const QByteArray &bytes)
{
    return qCompress(bytes).mid(4);
}

/// A layer file around a finished inner block.
inline QByteArray layerAround(const QByteArray &inner)
{
    const QByteArray outer = packed(inner);
    QByteArray head(20, '\x5a');
    put32(&head, 12, outer.size());
    put32(&head, 16, inner.size());
    return head + outer;
}

/// The layer file of a picture's rows, which go in bottom row first.
inline QByteArray layerBytes(const QByteArray &rowsBottomFirst)
{
    return layerAround(packed(rowsBottomFirst));
}
