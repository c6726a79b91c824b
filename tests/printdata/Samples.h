#pragma once
// Model files and layer files, written from the layouts alone.

#include "support/LogCapture.h"
#include "support/TestInstall.h"

#include <QByteArray>
#include <QtEndian>

inline QByteArray with32(QByteArray bytes, int at, quint32 value)
{
    qToLittleEndian(value, bytes.data() + at);
    return bytes;
}

inline QByteArray with64(QByteArray bytes, int at, quint64 value)
{
    qToLittleEndian(value, bytes.data() + at);
    return bytes;
}

/// Header, settings, icon, preview.
inline QByteArray modelBytes(const QByteArray &text, const QByteArray &icon = {}, const QByteArray &view = {})
{
    const quint32 iconAt = quint32(84 + text.size());
    QByteArray header = with64(with64(QByteArray(84, '\x5a'), 52, 84), 60, quint64(text.size()));
    header = with32(with64(header, 16, iconAt), 24, quint32(icon.size()));
    header = with32(with64(header, 28, iconAt + quint32(icon.size())), 36, quint32(view.size()));
    return header + text + icon + view;
}

/// Settings of a picture of `x` and two blank margins by `y` pixels.
inline QByteArray pictureSettings(int x, int y, int blank, int passCnt)
{
    const char *text = "layerHeight=0.02\ndpiX=600\ndpiY=601.5\nmodelMaterial=12.5\nsupportMaterial=3\n"
                       "pixelsX=%d\npixelsY=%d\nextraBlankPixel=%d\npassCnt=%d\n";
    return QString::asprintf(text, x, y, blank, passCnt).toUtf8();
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
    return with32(with32(QByteArray(20, '\x5a'), 12, quint32(outer.size())), 16, quint32(inner.size())) +
           outer;
}
