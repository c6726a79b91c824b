// The serial line on a real pseudo terminal.

#include "platform/SerialPort.h"
#include "support/TestInstall.h"

#include <QTest>

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <thread>
#include <unistd.h>

class TestSerial : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void carriesEveryByteBothWays_data();
    void carriesEveryByteBothWays();
    void idleReadReturnsAtOnce();
    void fullLineEndsTheWriteInTime();
    void farSideGone();
    void refusesWhatIsNoLine_data();
    void refusesWhatIsNoLine();
    void closesUnderItsReader();

private:
    QByteArray readMaster(int length) const;

    std::unique_ptr<TestInstall> m_install;
    int m_master = -1;
};

void TestSerial::init()
{
    m_install = std::make_unique<TestInstall>();
    m_master = posix_openpt(O_RDWR | O_NOCTTY);
    QVERIFY(m_master >= 0 && grantpt(m_master) == 0 && unlockpt(m_master) == 0);
    QVERIFY(::symlink(ptsname(m_master), "bridge") == 0);
    m_install->setPlatform({{"COM16", m_install->folder() + "/bridge"}});
}

void TestSerial::cleanup()
{
    if (m_master >= 0)
        ::close(m_master);
    m_master = -1;
    m_install.reset();
}

QByteArray TestSerial::readMaster(int length) const
{
    QByteArray bytes;
    char block[512];
    pollfd entry{m_master, POLLIN, 0};
    while (bytes.size() < length && ::poll(&entry, 1, 3000) > 0) {
        const ssize_t count = ::read(m_master, block, sizeof(block));
        if (count <= 0)
            break;
        bytes.append(block, int(count));
    }
    return bytes;
}

void TestSerial::carriesEveryByteBothWays_data()
{
    QTest::addColumn<int>("baud");
    QTest::addColumn<uint>("speed");
    QTest::newRow("bridge") << 115200 << uint(B115200);
    QTest::newRow("cards") << 9600 << uint(B9600);
}

void TestSerial::carriesEveryByteBothWays()
{
    QFETCH(int, baud);
    QByteArray all; // control characters, XON, XOFF, CR and 0xFF must pass as they are
    for (int byte = 0; byte < 256; ++byte)
        all.append(char(byte));
    SerialPort port;
    QVERIFY(port.open(16, baud));
    QVERIFY(port.isOpen());
    termios line{};
    QCOMPARE(tcgetattr(m_master, &line), 0);
    QTEST(uint(cfgetospeed(&line)), "speed");

    QCOMPARE(port.write(reinterpret_cast<const quint8 *>(all.constData()), all.size(), 1000), all.size());
    QCOMPARE(readMaster(all.size()), all);

    QCOMPARE(::write(m_master, all.constData(), size_t(all.size())), ssize_t(all.size()));
    QByteArray got;
    QVERIFY(waitUntil([&] {
        quint8 buffer[64];
        const int count = port.read(buffer, sizeof(buffer));
        got.append(reinterpret_cast<char *>(buffer), qMax(count, 0));
        return got.size() >= all.size();
    }));
    QCOMPARE(got, all);
}

void TestSerial::idleReadReturnsAtOnce()
{
    SerialPort port;
    QVERIFY(port.open(16, 115200));
    quint8 byte = 0;
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < 10; ++i)
        QCOMPARE(port.read(&byte, 1), 0);
    QVERIFY2(timer.elapsed() < 1000, qPrintable(QString::number(timer.elapsed())));
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
    QCOMPARE(readMaster(count).size(), count);
}

void TestSerial::farSideGone()
{
    SerialPort port;
    QVERIFY(port.open(16, 115200));
    ::close(m_master);
    m_master = -1;
    quint8 byte = 7;
    for (int i = 0; i < 3; ++i)
        QCOMPARE(port.read(&byte, 1), -1);
    QVERIFY(port.lastError() != 0);
    QCOMPARE(port.write(&byte, 1, 20), 0);
    port.close();
    QCOMPARE(port.read(&byte, 1), -1);
    QCOMPARE(port.write(&byte, 1, 20), 0);
    QVERIFY(!port.open(16, 115200));
}

void TestSerial::refusesWhatIsNoLine_data()
{
    QTest::addColumn<QString>("device");
    QTest::addColumn<int>("baud");
    QTest::addColumn<int>("error");
    QTest::newRow("missing") << "/nowhere/bridge" << 115200 << ENOENT;
    QTest::newRow("ordinary file") << "config/Sys.json" << 115200 << ENOTTY;
    QTest::newRow("folder") << "config" << 115200 << EISDIR;
    QTest::newRow("impossible speed") << "bridge" << 12345 << EINVAL;
}

void TestSerial::refusesWhatIsNoLine()
{
    QFETCH(QString, device);
    QFETCH(int, baud);
    m_install->setPlatform({{"COM16", device}});
    SerialPort port;
    QVERIFY(!port.open(16, baud));
    QVERIFY(!port.isOpen());
    QTEST(port.lastError(), "error");
}

void TestSerial::closesUnderItsReader()
{
    SerialPort port;
    std::atomic<bool> stop{false};
    std::atomic<int> gone{0};
    std::atomic<int> idle{0};
    std::thread reader([&] {
        quint8 buffer[16];
        while (!stop)
            ++(port.read(buffer, sizeof(buffer)) < 0 ? gone : idle);
    });
    for (int i = 0; i < 5; ++i) {
        const int before = idle;
        const bool open = port.open(16, 115200);
        const bool read = open && waitUntil([&] { return idle > before; });
        port.close();
        const int lost = gone;
        if (!read || !waitUntil([&] { return gone > lost; })) {
            stop = true;
            reader.join();
            QFAIL("the reader hangs");
        }
    }
    stop = true;
    reader.join();
}

QTEST_GUILESS_MAIN(TestSerial)
#include "test_serial.moc"
