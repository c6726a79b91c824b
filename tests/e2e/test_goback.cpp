// A job that goes back after a cleaning, run by the engine alone: which layers are printed in which order, and that
// each lands on its place.

#include "TestPrinter.h"

#include "engine/XdmControl.h"
#include "events/EventHandler.h"
#include "frame/Folders.h"
#include "frame/JsonConfig.h"
#include "frame/RotatingLog.h"
#include "frame/SqliteUtil.h"
#include "material/BackgroundService.h"
#include "platform/Clock.h"
#include "platform/PlatformSettings.h"
#include "printdata/PrintQueue.h"
#include "printdata/SliceToImage.h"

#include <QApplication>
#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QtTest>
#include <cstdio>
#include <cstdlib>

namespace {
constexpr int waitLimitMs = 300000;

class GoBackJob : public XdmControl
{
public:
    void goBack() { m_reprintCounter = 20; }
};

/// The layers in the order that the process prescribes when the cleaning comes at layer `at`.
QString prescribed(int at, int total)
{
    QStringList layers;
    for (int layer = 1; layer <= at; ++layer)
        layers << QString::number(layer);
    for (int layer = at - 1; layer >= at - 18; --layer)
        layers << QString::number(layer);
    for (int layer = at - 20; layer <= total; ++layer)
        layers << QString::number(layer);
    return layers.join(',');
}
} // namespace

class TestGoBack : public QObject
{
    Q_OBJECT
private slots:
    void printsBackAndForth();
};

void TestGoBack::printsBackAndForth()
{
    const QString name = "bar.tzl";
    TestPrinter printer;
    QVERIFY2(printer.makeModel(name, {"--layer-height", "0.02"}, 1.8), qPrintable(printer.error()));
    QVERIFY(printer.configure("Sys.json", {{"TopDropMass", 0}}));
    RigOptions options;
    options.install = printer.install();
    options.scale = timeScale();
    options.machineArguments = QStringList{"--report", printer.out() + "/report.json", "--parts",
                                           printer.out() + "/parts"};
    PrinterRig rig(options);
    QVERIFY2(rig.startMachine(), qPrintable(rig.error()));
    QVERIFY(QDir::setCurrent(printer.install()));
    prepareFolders();
    qInstallMessageHandler(logMessageHandler);
    EventHandler::instance();
    xdmControl(); // the services' job object, before they start
    setPlatformSettings([](const QString &key) { return platformConfig()->getValue(key); });
    createSchema(sqliteUtil());
    QVERIFY(QFile::copy(printer.usb() + "/" + name, modelPath(name)));
    addToQueue(name);
    GoBackJob job;
    backgroundService()->start();
    // The door watch starts last: the boards are set up when it has seen the door.
    QVERIFY(rig.waitFor([] { return backgroundService()->isInkDoorKnownClosed(); }, waitLimitMs));
    QCOMPARE(sliceToImage()->loadModelInfo(modelPath(name)), 0);
    QVERIFY(sliceToImage()->waitForStarted());
    job.setPrintStatus(PrintStatusPrinting);
    job.start();

    const auto layer = [&] { return job.printState()["Tips"].toString().section('-', 0, 0).toInt(); };
    QTRY_VERIFY_WITH_TIMEOUT(layer() >= 75, waitLimitMs);
    job.setPrintStatus(PrintStatusPaused);
    // Held: the machine fires no further pass from one look to the next.
    int passes = -1;
    const auto held = [&] {
        const int before = passes;
        passes = rig.machine({"state"})["state"].toObject()["passes"].toInt();
        QTest::qWait(300);
        return before == passes;
    };
    QVERIFY(rig.waitFor(held, waitLimitMs));
    const int at = layer();
    job.goBack();
    job.setPrintStatus(PrintStatusPrinting);
    QTRY_VERIFY_WITH_TIMEOUT(job.isFinished(), waitLimitMs);
    const int total = job.printState()["SumLayer"].toInt();
    QCOMPARE(job.printState()["PrintLayer"].toInt(), total);
    sliceToImage()->closeProcess();

    QVERIFY(rig.stopMachine());
    QFile report(printer.out() + "/report.json");
    QVERIFY(report.open(QIODevice::ReadOnly));
    QCOMPARE(TestPrinter::violations(QJsonDocument::fromJson(report.readAll()).object()), QString());
    QCOMPARE(printer.differingDots(name, prescribed(at, total)), 0);
}

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    TestGoBack test;
    const int result = QTest::qExec(&test, argc, argv);
    // The services never end: the process does, as on the machine.
    std::fflush(stdout);
    std::_Exit(result);
}
#include "test_goback.moc"
