// Port and request/answer against the scripted bridge on a pseudo terminal.

#include "links/Usb2Can.h"
#include "platform/PlatformSettings.h"
#include "scripted/FakeBridge.h"
#include "support/LogCapture.h"

#include <QtTest>

#include <atomic>
#include <cstring>
#include <thread>

namespace
{

constexpr unsigned longMs = 10000; // for answers that come
constexpr unsigned shortMs = 20;   // for answers that never come

struct ClosingCan : Usb2Can {
    ~ClosingCan() override { ClosePort(); }
};

int sendMessage(Usb2Can &can, CanMsg request, CanMsg *reply, unsigned timeoutMs, quint8 channel = 0)
{
    return can.SendMsg(&request, reply, timeoutMs, channel, 8, 0, 0);
}

CanMsg marked()
{
    CanMsg message = canMessage(9, 0x77);
    setValue32(message, 0x01020304);
    return message;
}

bool same(const CanMsg &a, const CanMsg &b)
{
    return std::memcmp(&a, &b, sizeof a) == 0;
}

} // namespace

class TestUsb2Can : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<FakeBridge> m_bridge;
    std::unique_ptr<ClosingCan> m_can;
    std::unique_ptr<LogCapture> m_log;
    QString m_device;

private slots:
    void init()
    {
        m_bridge = std::make_unique<FakeBridge>();
        m_device = m_bridge->path();
        setPlatformSettings([this](const QString &key) {
            return key == QLatin1String("COM16") ? QJsonValue(m_device) : QJsonValue();
        });
        m_log = std::make_unique<LogCapture>();
        m_can = std::make_unique<ClosingCan>();
        QVERIFY(m_can->OpenPort(16, 115200));
    }

    void cleanup()
    {
        m_can.reset();
        m_log.reset();
        m_bridge.reset();
    }

    void requestAndAnswer()
    {
        CanMsg message = canMessage(2, 0x8E);
        setValue32(message, 400);
        QCOMPARE(m_can->SendMsg(&message, &message, longMs, 0, 8, 0, 0), int(SendOk));
        QCOMPARE(m_bridge->received().toHex(), QByteArray("aaaa420000008e0000009001000008000000695555"));
        QCOMPARE(value32(message), 400);
        QCOMPARE(message.id, 2U);
        QTRY_COMPARE(m_can->counters().receivedFrames.load(), quint64(1));
    }

    // One bad exchange, sent once; the next one is good again.
    void failures()
    {
        const std::pair<FakeBridge::Failure, unsigned> rows[] = {
            {FakeBridge::Silent, shortMs}, {FakeBridge::Late, shortMs}, {FakeBridge::Corrupt, 200},
            {FakeBridge::WrongEcho, 200},  {FakeBridge::CutOff, 200},   {FakeBridge::Noise, longMs}};
        for (const auto &[failure, timeoutMs] : rows) {
            m_bridge->reset();
            m_bridge->fail(failure, 3, 0x36, 1);
            const int result = failure == FakeBridge::Noise ? SendOk : SendNoAnswer;
            const unsigned errors = m_can->counters().framingErrors;
            CanMsg reply = marked();
            QCOMPARE(sendMessage(*m_can, canMessage(3, 0x36), &reply, timeoutMs), result);
            QCOMPARE(int(reply.data[0]), result == SendOk ? 0x36 : 0);
            QCOMPARE(value32(reply), 0);
            QCOMPARE(m_bridge->count(), 1);
            if (failure == FakeBridge::Corrupt)
                QTRY_VERIFY(m_can->counters().framingErrors > errors); // the reader counts after it hands over
            QCOMPARE(sendMessage(*m_can, canMessage(3, 0x50), &reply, longMs), int(SendOk));
            QCOMPARE(int(reply.data[0]), 0x50);
            QCOMPARE(m_bridge->violations(), 0);
        }
    }

    void notSent()
    {
        CanMsg reply = marked();
        QCOMPARE(sendMessage(*m_can, canMessage(2, 0x22), &reply, longMs, 0xFF), int(SendBridgeChannel));
        QVERIFY(same(reply, CanMsg()));

        reply = marked();
        m_can->SetFilter(5, true);
        QCOMPARE(sendMessage(*m_can, canMessage(5, 0x22), &reply, longMs), int(SendClosed));
        QVERIFY(same(reply, marked()));
        QCOMPARE(m_log->count("filter id=5"), 1);
        QCOMPARE(sendMessage(*m_can, canMessage(2, 0x22), &reply, longMs), int(SendOk));
        m_can->SetFilter(5, false);
        QCOMPARE(sendMessage(*m_can, canMessage(5, 0x23), &reply, longMs), int(SendOk));

        reply = marked();
        m_can->ClosePort();
        QCOMPARE(sendMessage(*m_can, canMessage(2, 0x22), &reply, longMs), int(SendClosed));
        QVERIFY(same(reply, marked()));
        QCOMPARE(m_bridge->count(), 2);
    }

    void otherFramesAreNoAnswers()
    {
        m_bridge->sendAnswer(2, "\x22\x01", 0xFF); // the bridge's own channel
        m_bridge->sendBytes(FakeBridge::frame("\x22\x02"));
        m_bridge->sendBytes(FakeBridge::frame(FakeBridge::record(2, "\x22\x03") + 'x'));
        QTRY_COMPARE(m_can->counters().receivedBytes.load(), quint64(21 + 7 + 22));
        m_bridge->fail(FakeBridge::Silent, FakeBridge::any, FakeBridge::any, 1);
        CanMsg reply;
        QCOMPARE(sendMessage(*m_can, canMessage(2, 0x22), &reply, shortMs), int(SendNoAnswer));
        QCOMPARE(m_can->counters().receivedFrames.load(), quint64(0));
    }

    void openingAgain()
    {
        const QString bridge = m_device;
        m_device = QStringLiteral("/nowhere/at all");
        QVERIFY(m_can->OpenPort(16, 115200)); // same values: nothing is touched
        CanMsg reply;
        QCOMPARE(sendMessage(*m_can, canMessage(2, 1), &reply, longMs), int(SendOk));
        QVERIFY(!m_can->OpenPort(16, 9600)); // other values: closed first
        QVERIFY(!m_can->isOpen());
        QVERIFY(m_can->lastError() != 0);
        QCOMPARE(sendMessage(*m_can, canMessage(2, 1), &reply, longMs), int(SendClosed));
        m_device = bridge;
        QVERIFY(m_can->OpenPort(16, 115200));
        QCOMPARE(sendMessage(*m_can, canMessage(2, 2), &reply, longMs), int(SendOk));
    }

    void deviceGoesAway()
    {
        m_bridge->hangUp();
        QTRY_COMPARE(m_log->count("serial device gone"), 1);
        CanMsg reply = marked();
        QCOMPARE(sendMessage(*m_can, canMessage(2, 1), &reply, longMs), int(SendWriteFailed));
        QVERIFY(same(reply, CanMsg()));
        m_can->ClosePort();
        m_bridge = std::make_unique<FakeBridge>();
        m_device = m_bridge->path();
        QVERIFY(m_can->OpenPort(16, 115200));
        QCOMPARE(sendMessage(*m_can, canMessage(2, 1), &reply, longMs), int(SendOk));
    }

    void callersOfManyThreads()
    {
        std::atomic<int> bad{0};
        std::vector<std::thread> threads;
        for (int board : {2, 3, 5, 6})
            threads.emplace_back([this, board, &bad] {
                for (int i = 0; i < 100; ++i) {
                    CanMsg message = canMessage(quint32(board), quint8(i));
                    setValue32(message, board * 1000 + i);
                    const bool good = sendMessage(*m_can, message, &message, longMs) == SendOk &&
                                      value32(message) == board * 1000 + i && message.id == quint32(board);
                    bad += good ? 0 : 1;
                    m_can->SetFilter(7, i % 2);
                }
            });
        for (std::thread &thread : threads)
            thread.join();
        QCOMPARE(bad.load(), 0);
        QCOMPARE(m_bridge->count(), 400);
        QCOMPARE(m_bridge->violations(), 0);
    }
};

QTEST_GUILESS_MAIN(TestUsb2Can)
#include "test_usb2can.moc"
