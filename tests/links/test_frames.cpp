// The serial frames on literal bytes, with no port.

#include "links/CanMsg.h"
#include "links/FrameCodec.h"
#include "scripted/FakeBridge.h"

#include <QtTest>

#include <random>

namespace
{

QByteArray encoded(const QByteArray &payload)
{
    QByteArray out(2 * (payload.size() + 1) + 4, '\0');
    out.resize(encodeFrame(reinterpret_cast<const quint8 *>(payload.constData()), payload.size(),
                           reinterpret_cast<quint8 *>(out.data())));
    return out;
}

QByteArrayList decoded(FrameDecoder &decoder, const QByteArray &bytes)
{
    QByteArrayList frames;
    for (char byte : bytes)
        if (decoder.feed(quint8(byte)))
            frames << QByteArray(reinterpret_cast<const char *>(decoder.frame()), decoder.length());
    return frames;
}

const QByteArray good = FakeBridge::record(5, QByteArray::fromHex("3200010203040506"));

} // namespace

class TestFrames : public QObject
{
    Q_OBJECT
private slots:
    void escapesComeBackUnchanged_data()
    {
        QTest::addColumn<QByteArray>("payload");
        QTest::addColumn<QByteArray>("frame");
        QTest::newRow("head, tail and escape in the payload")
            << QByteArray("aa55a501") << QByteArray("aaaa a5aa a555 a5a5 01 a5a5 5555");
        QTest::newRow("sum is the head") << QByteArray("a901") << QByteArray("aaaa a901 a5aa 5555");
        QTest::newRow("sum is the tail") << QByteArray("5401") << QByteArray("aaaa 5401 a555 5555");
        QTest::newRow("sum is the escape") << QByteArray("a401") << QByteArray("aaaa a401 a5a5 5555");
        QTest::newRow("only tails") << QByteArray("555555") << QByteArray("aaaa a555 a555 a555 ff 5555");
    }

    void escapesComeBackUnchanged()
    {
        QFETCH(QByteArray, payload);
        QFETCH(QByteArray, frame);
        const QByteArray raw = QByteArray::fromHex(payload);
        QCOMPARE(encoded(raw), QByteArray::fromHex(frame));
        FrameDecoder decoder;
        QCOMPARE(decoded(decoder, QByteArray::fromHex(frame)), QByteArrayList{raw});
        QCOMPARE(decoder.errors(), 0U);
    }

    void decoderStream_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<int>("goodFrames");
        QTest::addColumn<int>("errors");
        const QByteArray frame = FakeBridge::frame(good);
        const QByteArray head = QByteArray::fromHex("aaaa");
        QByteArray badSum = frame;
        badSum[10] = char(badSum[10] + 1);

        QTest::newRow("two frames") << frame + frame << 2 << 0;
        QTest::newRow("noise between")
            << "\x12\x55\x55\xA5\xAA\x01" + frame + "\x55\x55\x55\xA5" + frame << 2 << 0;
        QTest::newRow("bad sum, then good") << badSum + frame << 1 << 1;
        QTest::newRow("cut off, then good") << frame.left(9) + frame << 1 << 1;
        QTest::newRow("third and fourth head") << head + frame << 1 << 0;
        QTest::newRow("cut off after 15 and the head's own byte")
            << head + QByteArray(15, 'x') + frame << 1 << 1;
        QTest::newRow("cut off after 16 and the head's own byte")
            << head + QByteArray(16, 'x') + frame << 1 << 0;
        QTest::newRow("escape left open before the head") << head + "x\xA5" + frame + frame << 1 << 1;
        QTest::newRow("nothing between head and tail") << head + "\x55\x55" + frame << 1 << 1;
        QTest::newRow("no end") << head + QByteArray(3 * frameBufferSize, 'x') + frame << 1 << 0;
        QTest::newRow("no end, all escaped")
            << head + QByteArray(5 * frameBufferSize, '\xA5') + frame + frame << 2 << 0;
    }

    void decoderStream()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(int, goodFrames);
        QFETCH(int, errors);
        FrameDecoder decoder;
        const QByteArrayList frames = decoded(decoder, bytes);
        QCOMPARE(frames, QVector<QByteArray>(goodFrames, good).toList());
        QCOMPARE(int(decoder.errors()), errors);
    }

    // Whatever came before, the second of two whole frames is read.
    void recoversFromAnyNoise()
    {
        std::mt19937 random(20240611);
        const char nasty[] = {'\xAA', '\x55', '\xA5', '\x00', 'x'};
        FrameDecoder decoder;
        for (int round = 0; round < 2000; ++round) {
            QByteArray noise;
            for (unsigned i = random() % 60; i > 0; --i)
                noise += nasty[random() % sizeof nasty];
            decoded(decoder, noise + FakeBridge::frame(good));
            QCOMPARE(decoded(decoder, FakeBridge::frame(good)), QByteArrayList{good});
        }
    }
};

QTEST_GUILESS_MAIN(TestFrames)
#include "test_frames.moc"
