// The serial line on a real pseudo terminal.

#include "platform/SerialPort.h"
#include "support/TestInstall.h"

#include <QTest>

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <thread>
#include <unistd.h>
#include <utility>

class TestSerial : public QObject
{
    Q_OBJECT
    std::unique_ptr<TestInstall> m_install;
    int m_master = -1;

    static int write(SerialPort &port, const QByteArray &bytes, int ms)
    {
        return port.write(reinterpret_cast<const quint8 *>(bytes.constData()), bytes.size(), ms);
    }

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

    void carriesEveryByteBothWays()
    {
        QByteArray all; // control characters, XON, XOFF, CR and 0xFF must pass as they are
        for (int byte = 0; byte < 256; ++byte)
            all.append(char(byte));
        SerialPort port;
        QVERIFY(port.open(16, 115200));
        char block[256];
        QCOMPARE(write(port, all, 1000), all.size());
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

    void fullOrDeadLineEndsTheCall()
    {
        SerialPort port;
        QVERIFY(port.open(16, 115200));
        QElapsedTimer timer;
        timer.start();
        const int count = write(port, QByteArray(1 << 20, 'x'), 50); // far more than a terminal buffers
        QVERIFY(count > 0 && count < 1 << 20);
        QVERIFY(timer.elapsed() >= 50 && timer.elapsed() < 3000);
        ::close(std::exchange(m_master, -1));
        quint8 byte = 7;
        for (int i = 0; i < 3; ++i) {
            QCOMPARE(port.read(&byte, 1), -1);
            QCOMPARE(write(port, "x", 20), 0);
            QVERIFY(i == 2 || port.lastError() != 0);
            if (i == 1)
                port.close();
        }
    }

    void refusesWhatIsNoLine()
    {
        const std::tuple<const char *, int, int> rows[] = {{"/nowhere/bridge", 115200, ENOENT},
                                                           {"config/Sys.json", 115200, ENOTTY},
                                                           {"config", 115200, EISDIR},
                                                           {"bridge", 12345, EINVAL}};
        for (const auto &[device, baud, error] : rows) {
            m_install->setPlatform({{"COM16", device}});
            SerialPort port;
            QVERIFY2(!port.open(16, baud) && !port.isOpen(), device);
            QCOMPARE(port.lastError(), error);
        }
    }

    void closesUnderItsReader()
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
};

QTEST_GUILESS_MAIN(TestSerial)
#include "test_serial.moc"
