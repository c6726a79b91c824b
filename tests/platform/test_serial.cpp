// The serial line on a real pseudo terminal.

#include "platform/SerialPort.h"
#include "support/TestInstall.h"

#include <QTest>

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <termios.h>
#include <thread>
#include <unistd.h>
#include <utility>

class TestSerial : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestInstall> m_install;
    int m_master = -1;

private slots:
    void init()
    {
        m_install = std::make_unique<TestInstall>();
        m_master = posix_openpt(O_RDWR | O_NOCTTY);
        QVERIFY(m_master >= 0 && grantpt(m_master) == 0 && unlockpt(m_master) == 0);
        QVERIFY(::symlink(ptsname(m_master), "bridge") == 0);
        m_install->setPlatform({{"COM16", m_install->folder() + "/bridge"}});
    }
    void cleanup() { ::close(m_master); }
    void carriesEveryByteBothWays();
    void fullLineEndsTheWriteInTime();
    void farSideGone();
    void refusesWhatIsNoLine();
    void closesUnderItsReader();
};

void TestSerial::carriesEveryByteBothWays()
{
    QByteArray all; // control characters, XON, XOFF, CR and 0xFF must pass as they are
    for (int byte = 0; byte < 256; ++byte)
        all.append(char(byte));
    for (const auto &[baud, speed] : {std::pair(115200, B115200), std::pair(9600, B9600)}) {
        SerialPort port;
        QVERIFY(port.open(16, baud));
        termios line{};
        QCOMPARE(tcgetattr(m_master, &line), 0);
        QCOMPARE(cfgetospeed(&line), speed_t(speed));

        char block[256];
        QCOMPARE(port.write(reinterpret_cast<const quint8 *>(all.constData()), all.size(), 1000), all.size());
        QCOMPARE(int(::read(m_master, block, sizeof(block))), all.size());
        QCOMPARE(QByteArray(block, sizeof(block)), all);

        quint8 buffer[64];
        QCOMPARE(port.read(buffer, sizeof(buffer)), 0);
        QCOMPARE(int(::write(m_master, all.constData(), size_t(all.size()))), all.size());
        QByteArray got;
        QVERIFY(waitUntil([&] {
            got.append(reinterpret_cast<char *>(buffer), qMax(port.read(buffer, sizeof(buffer)), 0));
            return got.size() >= all.size();
        }));
        QCOMPARE(got, all);
    }
}

void TestSerial::fullLineEndsTheWriteInTime()
{
    SerialPort port;
    QVERIFY(port.open(16, 115200));
    const QByteArray much(1 << 20, 'x'); // far more than a terminal buffers
    QElapsedTimer timer;
    timer.start();
    const int count = port.write(reinterpret_cast<const quint8 *>(much.constData()), much.size(), 50);
    QVERIFY(count > 0 && count < much.size());
    QVERIFY(timer.elapsed() >= 50 && timer.elapsed() < 3000);
}

void TestSerial::farSideGone()
{
    SerialPort port;
    QVERIFY(port.open(16, 115200));
    ::close(std::exchange(m_master, -1));
    quint8 byte = 7;
    for (int i = 0; i < 3; ++i)
        QCOMPARE(port.read(&byte, 1), -1);
    QVERIFY(port.lastError() != 0);
    QCOMPARE(port.write(&byte, 1, 20), 0);
    port.close();
    QCOMPARE(port.read(&byte, 1), -1);
    QCOMPARE(port.write(&byte, 1, 20), 0);
}

void TestSerial::refusesWhatIsNoLine()
{
    const struct {
        const char *device;
        int baud;
        int error;
    } rows[] = {{"/nowhere/bridge", 115200, ENOENT},
                {"config/Sys.json", 115200, ENOTTY},
                {"config", 115200, EISDIR},
                {"bridge", 12345, EINVAL}};
    for (const auto &row : rows) {
        m_install->setPlatform({{"COM16", row.device}});
        SerialPort port;
        QVERIFY2(!port.open(16, row.baud) && !port.isOpen(), row.device);
        QCOMPARE(port.lastError(), row.error);
    }
}

void TestSerial::closesUnderItsReader()
{
    SerialPort port;
    std::atomic<bool> stop{false};
    std::atomic<int> gone{0}, idle{0};
    std::thread reader([&] {
        quint8 buffer[16];
        while (!stop)
            ++(port.read(buffer, sizeof(buffer)) < 0 ? gone : idle);
    });
    bool seen = true;
    for (int i = 0; seen && i < 5; ++i) {
        const int before = idle;
        seen = port.open(16, 115200) && waitUntil([&] { return idle > before; });
        port.close();
        const int lost = gone;
        seen = seen && waitUntil([&] { return gone > lost; });
    }
    stop = true;
    reader.join();
    QVERIFY(seen);
}

QTEST_GUILESS_MAIN(TestSerial)
#include "test_serial.moc"
