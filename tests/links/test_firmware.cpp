// New firmware for the boards, against the scripted bridge.

#include "events/OperatorMessage.h"
#include "links/FirmwareUpdate.h"
#include "links/Usb2Can.h"
#include "scripted/FakeBridge.h"
#include "support/LogCapture.h"
#include "support/TestInstall.h"

#include <QDir>
#include <QtTest>

#include <atomic>
#include <memory>

namespace
{

const QString preparing = "准备升级，请稍后|1|0";
const QString finished = "所有电路升级完成,请断电重启|1|2097152";
const QString enterFailed = "模式切换错误，升级失败(2!=99)|3|2097152";
const QString secondFailed = "升级模式切换错误，升级失败,请断电重启(3 != 99)|3|2097152";
const QString finishFailed = "模式切换错误，升级失败(5!=99)|3|2097152";
const QString blockLost = "数据发送错误，升级失败重启后将重新升级|3|2097152";

const QByteArray wrong(8, 99); ///< no step of a loader

QByteArray pattern(int size)
{
    QByteArray bytes(size, '\0');
    for (int i = 0; i < size; ++i)
        bytes[i] = char(i * 7 + (i >> 8));
    return bytes;
}

QStringList progress(int board, int size, int blocks)
{
    QStringList texts;
    for (int i = 1; i <= blocks; ++i)
        texts << QString("%1#电路板升级中 %2/%3|2|0").arg(board).arg(qMin(6 * i, size)).arg(size);
    return texts;
}

} // namespace

class TestFirmware : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<TestInstall> m_install;
    std::unique_ptr<FakeBridge> m_bridge;
    std::unique_ptr<LogCapture> m_log;
    QStringList m_shown;
    int m_wrongAnswers = 0;

    static QString image(int board) { return QString("firmware/%1.bin").arg(board); }

    /// A board that does not take a step the first `times` times: wrong answers, so that no wait runs out.
    void refuse(int board, int code, int times)
    {
        auto left = std::make_shared<std::atomic<int>>(times);
        m_bridge->setHandler(board, code, [left](const BoardRequest &request) {
            return (*left)-- > 0 ? wrong : request.data;
        });
        // The first wrong answer is logged before the second is waited for.
        m_log->onText = [this](const QString &text) {
            if (text.contains(QString::fromLatin1(wrong.toHex('-'))) && ++m_wrongAnswers % 2 == 1)
                m_bridge->sendAnswer(9, wrong);
        };
    }

    bool update(int filterBoard = 0)
    {
        return updateStm32([&](const QString &text, int icon, int btn) {
            m_shown << QString("%1|%2|%3").arg(text).arg(icon).arg(btn);
            if (filterBoard && icon == MessageIcon::warning)
                usb2Can()->SetFilter(quint8(filterBoard), true);
        });
    }

    void checkWire(int board, int steps, const QByteArray &bytes)
    {
        QByteArray sent;
        int others = 0;
        for (const BoardRequest &request : m_bridge->requests(board)) {
            const bool block = request.command() == 4;
            others += !block;
            if (block)
                sent += request.data.mid(1, 6);
            QCOMPARE(request.data.mid(block ? 7 : 1), QByteArray(block ? 1 : 7, char(0xFF)));
        }
        QCOMPARE(others, steps);
        QCOMPARE(sent, bytes.leftJustified((bytes.size() + 5) / 6 * 6, char(0xFF)));
    }

private slots:
    void init()
    {
        m_install = std::make_unique<TestInstall>();
        m_bridge = std::make_unique<FakeBridge>();
        m_log = std::make_unique<LogCapture>();
        m_install->setPlatform({{"COM16", m_bridge->path()}});
        QVERIFY(QDir().mkpath("firmware"));
        QVERIFY(usb2Can()->OpenPort(16, 115200));
    }
    void cleanup()
    {
        usb2Can()->ClosePort();
        for (int board = 2; board <= 8; ++board)
            usb2Can()->SetFilter(quint8(board), false);
        m_log.reset();
        QCOMPARE(m_bridge->violations(), 0);
        m_shown.clear();
        m_wrongAnswers = 0;
    }

    void sendsEveryLength_data()
    {
        QTest::addColumn<int>("board");
        QTest::addColumn<int>("size");
        for (int size : {0, 1, 5, 6, 7, 12, 256 * 1024})
            QTest::addRow("%d bytes", size) << 3 + size % 6 << size;
    }
    void sendsEveryLength()
    {
        QFETCH(int, board);
        QFETCH(int, size);
        writeFile(image(board), pattern(size));
        QVERIFY(update());
        QCOMPARE(m_shown,
                 QStringList(preparing) + progress(board, size, (size + 5) / 6) + QStringList(finished));
        checkWire(board, 3, pattern(size));
        QVERIFY(!QFile::exists(image(board)));
    }

    void endsABoardThatRefuses_data()
    {
        QTest::addColumn<int>("code");
        QTest::addColumn<int>("times");
        QTest::addColumn<QString>("alarm");
        QTest::addColumn<int>("steps");  // messages other than blocks
        QTest::addColumn<int>("blocks"); // of the image's three
        QTest::addColumn<bool>("kept");
        QTest::addRow("enter, once") << 2 << 1 << "" << 4 << 3 << false;
        QTest::addRow("enter") << 2 << 2 << enterFailed << 2 << 0 << true;
        QTest::addRow("second step, once") << 3 << 1 << "" << 4 << 3 << false;
        QTest::addRow("second step") << 3 << 2 << secondFailed << 3 << 0 << true;
        QTest::addRow("a wrong answer to a block is one") << 4 << 1 << "" << 3 << 3 << false;
        QTest::addRow("lost block") << 0 << 0 << blockLost << 2 << 1 << true;
        QTest::addRow("finish") << 5 << 1 << finishFailed << 3 << 3 << false;
    }
    void endsABoardThatRefuses()
    {
        QFETCH(int, code);
        QFETCH(int, times);
        QFETCH(QString, alarm);
        QFETCH(int, steps);
        QFETCH(int, blocks);
        QFETCH(bool, kept);
        const QByteArray bytes = pattern(15);
        for (int board : {2, 4})
            writeFile(image(board), bytes);
        QVERIFY(QDir().mkpath(image(5))); // there, but cannot be read
        if (code)
            refuse(4, code, times);
        QVERIFY(update(code ? 0 : 4));

        QStringList expected = QStringList(preparing) + progress(4, 15, blocks);
        if (!alarm.isEmpty())
            expected << alarm;
        expected << preparing;
        QCOMPARE(m_shown,
                 expected + progress(2, 15, 3) + QStringList(finished)); // the next board is not concerned
        checkWire(4, steps, bytes.left(6 * blocks));
        checkWire(2, 3, bytes);
        QCOMPARE(QFile::exists(image(4)), kept);
        QVERIFY(!QFile::exists(image(2)));
        QCOMPARE(m_log->count("open file error: "), 5);
    }

    void leavesTheBoardsAloneWithoutImages()
    {
        QVERIFY(!update());
        QCOMPARE(m_shown, QStringList());
        QCOMPARE(m_bridge->count(), 0);
        QCOMPARE(m_log->count("open file error: "), 7);
    }
};

QTEST_GUILESS_MAIN(TestFirmware)
#include "test_firmware.moc"
