// A computer with parts missing: the program starts, says what it must, and stays usable.

#include "TestPrinter.h"

#include <QDir>
#include <QJsonArray>
#include <QtTest>
#include <functional>

namespace {
using Break = std::function<void(TestPrinter &)>;

void removeFolder(const QString &path)
{
    QDir(path).removeRecursively();
}
} // namespace
Q_DECLARE_METATYPE(Break)

class TestBare : public QObject
{
    Q_OBJECT
private slots:
    void staysUsable_data();
    void staysUsable();
    void startsAndCloses();
    void newFirmwareEndsTheStart();
};

void TestBare::staysUsable_data()
{
    QTest::addColumn<bool>("machine");
    QTest::addColumn<Break>("damage");
    QTest::addColumn<QString>("record"); // what a log or the event list tells; later alarms may cover the message
    QTest::addColumn<QString>("message"); // what stays on the screen
    QTest::newRow("no bridge and no boards") << false << Break([](TestPrinter &) {}) << "COM16串口打开失败" << "";
    QTest::newRow("no head library") << true << Break([](TestPrinter &printer) {
        QFile::remove(printer.install() + "/hibApiDll64.so");
    }) << "检测到喷头异常" << "";
    QTest::newRow("no slicer") << true << Break([](TestPrinter &printer) {
        removeFolder(printer.install() + "/Lamorel");
    }) << "" << "请确保切片软件版本大于";
    QTest::newRow("database not writable") << true << Break([](TestPrinter &printer) {
        QDir().mkpath(printer.install() + "/pelora.db");
    }) << "" << "";
    QTest::newRow("no configuration") << false << Break([](TestPrinter &printer) {
        removeFolder(printer.install() + "/config");
    }) << "COM16串口打开失败" << "";
    QTest::newRow("configuration is no JSON") << true << Break([](TestPrinter &printer) {
        QFile file(printer.install() + "/config/Ink.json");
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write("{ not json");
    }) << "json error" << "";
}

void TestBare::staysUsable()
{
    QFETCH(bool, machine);
    QFETCH(Break, damage);
    QFETCH(QString, message);
    QFETCH(QString, record);
    TestPrinter printer;
    damage(printer);
    QVERIFY2(printer.start({}, machine), qPrintable(printer.error()));
    PrinterRig &rig = printer.rig();
    if (!message.isEmpty())
        QVERIFY2(!rig.waitMessage(message, 60000).isEmpty(), qPrintable(rig.error()));
    QVERIFY2(rig.waitFor([&] { return printer.log().contains(record); }, 60000), qPrintable(printer.log()));
    const auto leadsTo = [&](const char *button, const char *shown) { // alarms may come up at any time
        return rig.waitFor(
            [&] {
                if (!rig.message().isEmpty())
                    rig.answer("close");
                return rig.state(shown)["visible"].toBool() || (rig.click(button), false);
            },
            60000);
    };
    QVERIFY2(leadsTo("pushButton_home", "pushButton_warning"), qPrintable(rig.error()));
    QVERIFY2(leadsTo("pushButton_fileList", "pushButtonWaitPrint"), qPrintable(rig.error()));
    QVERIFY(rig.productRuns());
}

void TestBare::startsAndCloses()
{
    TestPrinter printer;
    QVERIFY2(printer.start(), qPrintable(printer.error()));
    QVERIFY(printer.rig().stopProduct());
    QVERIFY(printer.log().contains("ver = 4.4.1.4-III"));
}

/// Both boards run the new image, nothing else was asked of them, and the next start is an ordinary one.
void TestBare::newFirmwareEndsTheStart()
{
    TestPrinter printer;
    QDir().mkpath(printer.install() + "/firmware");
    for (const char *board : {"2", "5"}) {
        QFile image(printer.install() + "/firmware/" + board + ".bin");
        QVERIFY(image.open(QIODevice::WriteOnly) && image.write(QByteArray(1003, '\x55')) == 1003);
    }
    QVERIFY2(printer.start(), qPrintable(printer.error()));
    PrinterRig &rig = printer.rig();
    QVERIFY2(!rig.waitMessage("所有电路升级完成,请断电重启", 60000).isEmpty(), qPrintable(rig.error()));
    const QJsonObject state = rig.machine({"state"})["state"].toObject();
    for (const QJsonValue &board : state["boards"].toArray()) {
        const bool updated = board["board"].toInt() == 2 || board["board"].toInt() == 5;
        QCOMPARE(board["updates"].toInt(), int(updated));
        QCOMPARE(board["bytes"].toInt(), updated ? 1008 : 0); // whole blocks of six
        QCOMPARE(board["mode"].toString(), QString("running"));
    }
    QCOMPARE(state["requests"].toInt(), 2 * (3 + 168));
    QVERIFY(QDir(printer.install() + "/firmware").isEmpty());
    QVERIFY(rig.stopProduct() && rig.startProduct());
    QVERIFY(rig.waitFor([&] { return printer.log().contains("readCard"); }, 60000));
    QCOMPARE(TestPrinter::violations(printer.stop()), QString());
}

QTEST_GUILESS_MAIN(TestBare)
#include "test_bare.moc"
