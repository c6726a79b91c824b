// The program as it is run: ports, sockets, the head library on it, its commands, its end and its report.

#include "Bridge.h"
#include "Commands.h"
#include "ManualClock.h"
#include "PartPictures.h"
#include "Report.h"
#include "Site.h"
#include "hibApi.h"

#include <QDir>
#include <QElapsedTimer>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLibrary>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

namespace
{
QJsonObject readJson(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).object() : QJsonObject();
}

/// The installed machine in a folder of its own.
struct Program {
    explicit Program(const QString &deeper = {}) : install(folder.path() + deeper + "/install")
    {
        QDir().mkpath(install + "/config");
        QFile settings(install + "/config/Platform.json");
        settings.open(QIODevice::WriteOnly);
        settings.write("{\"AllowSystem\":false,\"DiskTotalGB\":90}");
    }
    bool start(const QStringList &options = {})
    {
        process.start(MACHINE_PROGRAM, QStringList{"--install", install} + options);
        QByteArray line;
        while (!line.endsWith('\n') && process.waitForReadyRead(30000))
            line += process.readLine();
        ready = QJsonDocument::fromJson(line.mid(6)).object();
        return line.startsWith("ready ") && !ready.isEmpty();
    }
    QPair<int, QByteArray> ctl(const QStringList &words) const
    {
        QProcess tool;
        tool.start(MACHINECTL, QStringList{"--install", install} + words);
        tool.waitForFinished(30000);
        return {tool.exitCode(), tool.readAllStandardOutput() + tool.readAllStandardError()};
    }
    QTemporaryDir folder;
    QString install;
    QProcess process;
    QJsonObject ready;
};
} // namespace

class TestMachineProgram : public QObject
{
    Q_OBJECT
private slots:
    void tellsTheInstallationAndEnds();
    void deepFolderHasItsSocketsElsewhere();
    void everyCommandIsHelpfulAndStrict();
    void faultsReachTheModel_data();
    void faultsReachTheModel();
    void plugsVolumes();
    void libraryDrivesTheHeads();
    void libraryWithoutMachineHasNoBoards();
    void reportsAndPictures();
};

void TestMachineProgram::tellsTheInstallationAndEnds()
{
    Program program;
    const QString report = program.folder.path() + "/out/report.json";
    QVERIFY(program.start({"--scale", "50", "--report", report}));
    const QJsonObject settings = readJson(program.install + "/config/Platform.json");
    QCOMPARE(settings["COM16"], program.ready["bridge"]);
    QCOMPARE(settings["DiskTotalGB"].toInt(), 90); // what was there stays
    QCOMPARE(settings["DiskAvailableGB"].toInt(), 400);
    QVERIFY(settings.contains("AllowSystem"));
    for (const char *key : {"COM5", "HeadsSocket", "MachineControl", "MediaFolder"})
        QVERIFY2(QFileInfo::exists(settings[key].toString()), key);
    QVERIFY(program.ctl({"state"}).second.contains("machineSeconds"));
    QVERIFY(program.ctl({"help"}).second.contains("freeze-sensor"));
    QCOMPARE(program.ctl({"door", "roof", "open"}).first, 1);
    // The parent's pipe closes: the machine ends by itself and leaves its report.
    program.process.closeWriteChannel();
    QVERIFY(program.process.waitForFinished(30000));
    QCOMPARE(program.process.exitCode(), 0);
    QCOMPARE(readJson(report)["scale"].toInt(), 50);
    QVERIFY(!QFileInfo(settings["COM16"].toString()).isSymLink());
    QCOMPARE(program.ctl({"state"}).first, 1);
}

void TestMachineProgram::deepFolderHasItsSocketsElsewhere()
{
    Program program("/" + QString(120, 'd'));
    QVERIFY(program.start());
    QVERIFY(program.ready["note"].toString().contains("too deep"));
    QVERIFY(program.ready["heads"].toString().size() < 100);
    QCOMPARE(program.ctl({"stop"}).first, 0);
    QVERIFY(program.process.waitForFinished(30000));
}

namespace
{
struct Bench {
    TestMachine test;
    Bridge bridge{test.machine};
    Site site;
    double stated = -1;
    CommandContext context{test.machine, bridge,
                           site,         [](const QString &) { return QString(); },
                           [] {},        [this](double milliseconds) { stated = milliseconds; }};
    bool run(const QString &line) { return runCommand(context, line.split(' '))["ok"].toBool(); }
};
using Holds = std::function<bool(Bench &)>;
} // namespace
Q_DECLARE_METATYPE(Holds)

void TestMachineProgram::everyCommandIsHelpfulAndStrict()
{
    Bench bench;
    for (const Command &command : commands()) {
        QVERIFY2(QString(command.help).endsWith('.'), command.name);
        const QString name = command.name;
        if (!*command.arguments)
            QVERIFY2(bench.run(name), command.name);
        else if (*command.arguments != '[')
            QVERIFY2(!bench.run(name) && !bench.run(name + " x y z"), command.name);
    }
    QVERIFY(!bench.run("burn down"));
}

void TestMachineProgram::faultsReachTheModel_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("back");
    QTest::addColumn<Holds>("holds");
    const auto row = [](const char *command, const char *back, Holds holds) {
        QTest::newRow(command) << QString(command) << QString(back) << holds;
    };
    row("door inkbox open", "door inkbox close", [](Bench &b) { return !b.test.machine.inkDoorClosed; });
    row("door front open", "door front close", [](Bench &b) { return !b.test.machine.frontDoorClosed; });
    row("platform take", "platform put", [](Bench &b) { return !b.test.machine.platformSeated; });
    row("silence 3 on", "silence 3 off", [](Bench &b) { return b.bridge.faults.silent.contains(3); });
    row("board 6 die", "board 6 revive", [](Bench &b) { return b.bridge.faults.dead.contains(6); });
    row("frames late 0.5 1500", "frames late 0",
        [](Bench &b) { return b.bridge.faults.late == 0.5 && b.bridge.faults.lateMs == 1500; });
    row("stick y on", "stick y off", [](Bench &b) { return b.test.machine.axis('y')->stuck(); });
    row("hold-transfer on", "hold-transfer off", [](Bench &b) { return b.test.machine.holdTransfer; });
    row("leveller slow", "leveller normal", [](Bench &b) {
        b.test.machine.setLevellerSpeed(500);
        b.test.pass(10);
        return b.test.machine.levellerSpeed() < 100;
    });
    row("freeze-sensor head.1.1 on", "freeze-sensor head.1.1 off", [](Bench &b) {
        b.test.machine.climate().heater(1, 1).setTarget(b.test.clock.seconds + 90, b.test.clock.seconds);
        b.test.pass(600);
        return b.test.machine.climate().heater(1, 1).reading(b.test.clock.seconds) < 30;
    });
    row("drift zone.3.31.2 20", "drift zone.3.31.2 0",
        [](Bench &b) { return b.test.machine.climate().zone(3, 0x31, 2, b.test.clock.seconds) == 45; });
    row("level 2 support 400", "level 2 support 61000",
        [](Bench &b) { return b.test.machine.headArray().head(2).levels[0] == 400; });
}

void TestMachineProgram::faultsReachTheModel()
{
    QFETCH(QString, command);
    QFETCH(QString, back);
    QFETCH(Holds, holds);
    Bench bench;
    QVERIFY(!holds(bench));
    Bench faulty;
    QVERIFY(faulty.run(command));
    QVERIFY(holds(faulty));
    QVERIFY(faulty.run(back));
    QVERIFY(!holds(faulty));
}

void TestMachineProgram::plugsVolumes()
{
    QTemporaryDir folder;
    QDir(folder.path()).mkpath("media");
    QDir(folder.path()).mkpath("disk/models");
    Bench bench;
    bench.site.media = folder.path() + "/media";
    const QString disk = folder.path() + "/disk";
    QVERIFY(bench.run("usb plug " + disk));
    QVERIFY(QFileInfo::exists(bench.site.media + "/disk/models"));
    QVERIFY(!bench.run("usb plug " + disk));
    QVERIFY(bench.run("usb plug " + disk + " second"));
    QVERIFY(bench.run("usb unplug second") && !bench.run("usb unplug second"));
    QVERIFY(bench.run("usb unplug"));
    QVERIFY(QDir(bench.site.media).isEmpty() && QFileInfo::exists(disk + "/models"));
    QVERIFY(!bench.run("usb plug " + disk + "/none"));
}

namespace
{
#define HIB(name) const auto name = reinterpret_cast<decltype(&::name)>(library.resolve(#name))

/// Gives one picture, then no more.
void givePicture(int32_t, HibPackedImage *record, void *context)
{
    auto *left = static_cast<HibPackedImage *>(context);
    if (left->imageCount)
        *record = *left;
    left->imageCount = 0;
}
} // namespace

void TestMachineProgram::libraryDrivesTheHeads()
{
    Program program;
    QVERIFY(program.start({"--scale", "100"}));
    QVERIFY(QDir::setCurrent(program.install));
    QLibrary library(HEAD_LIBRARY);
    HIB(hibInitAllBoards);
    HIB(hibGetMfgCode);
    HIB(hibGetHeadInkLevels);
    HIB(hibGetEncoderPos);
    HIB(hibGetWaveform);
    HIB(hibAdjustWaveformVoltage);
    HIB(hibSetAutofireMask);
    HIB(hibSetupPackedImageTransfer);
    HIB(hibEnablePrintingWDelay);
    HIB(hibWaitForImageTransferCompleteWto);
    QVERIFY(hibInitAllBoards && hibWaitForImageTransferCompleteWto);
    int32_t count = 0, support = 0, structure = 0, other = 0;
    float code = 0;
    QCOMPARE(hibInitAllBoards(&count, 1), 0);
    QCOMPARE(count, 3);
    QCOMPARE(hibGetMfgCode(2, &code), 0);
    QCOMPARE(code, 88.51F);
    QCOMPARE(hibGetHeadInkLevels(3, &support, &other, &structure, &other), 0);
    QCOMPARE(support + structure, 122000);
    QVERIFY(hibGetHeadInkLevels(4, &support, &other, &structure, &other) != 0);
    QCOMPARE(support, 0);
    HibWaveformKnot knots[8];
    QCOMPARE(hibAdjustWaveformVoltage(1, 1, 2.5F), 0);
    QCOMPARE(hibGetWaveform(1, 1, knots), 0);
    QCOMPARE(knots[1].voltageV, 22.5F);
    QCOMPARE(hibSetAutofireMask(1, 880, 0), 0);

    // A picture that is armed and never swept: the wait ends by itself, and the call after it gets its own
    // answer.
    std::vector<uint8_t> plane(1320 * 32, 0x81);
    HibPackedImage image = {plane.data(), plane.data(), {}, 256, 1320, 1, 150, 600, 1, {}};
    QCOMPARE(hibSetupPackedImageTransfer(1, givePicture, &image), 0);
    QCOMPARE(hibEnablePrintingWDelay(0, 0), 0);
    QElapsedTimer clock;
    clock.start();
    QVERIFY(hibWaitForImageTransferCompleteWto(1, 50) != 0);
    QVERIFY(clock.elapsed() >= 49 && clock.elapsed() < 5000);
    int32_t position = -1;
    QCOMPARE(hibGetEncoderPos(1, &position), 0);
    QVERIFY(position != -1);
    QVERIFY(hibEnablePrintingWDelay(0, 0) != 0); // the source has no more

    program.process.kill();
    QVERIFY(program.process.waitForFinished(30000));
    QVERIFY(hibGetEncoderPos(1, &position) != 0);
    QVERIFY(hibInitAllBoards(&count, 1) != 0);
    QDir::setCurrent("/");
}

void TestMachineProgram::libraryWithoutMachineHasNoBoards()
{
    Program program;
    QVERIFY(QDir::setCurrent(program.install));
    QLibrary library(HEAD_LIBRARY);
    HIB(hibInitAllBoards);
    HIB(hibGetHeaterTemp);
    HIB(hibSetAutofireMask);
    HIB(hibEnablePrintingWDelay);
    int32_t count = 7;
    float degrees = 7;
    QVERIFY(hibInitAllBoards(&count, 1) != 0);
    QCOMPARE(count, 0);
    QVERIFY(hibGetHeaterTemp(1, 1, &degrees) != 0 && degrees == 0);
    QVERIFY(hibSetAutofireMask(1, 1, 0) != 0 && hibEnablePrintingWDelay(0, 0) != 0);
    QDir::setCurrent("/");
}

void TestMachineProgram::reportsAndPictures()
{
    TestMachine test;
    test.makeReady();
    Machine &machine = test.machine;
    machine.sweepX();
    test.pass(5);
    for (int number = 0; number < 8; ++number) {
        const bool forward = number & 1;
        test.placePage(forward, 256);
        machine.arm(TestMachine::picture(forward, 256, {{10, 50}, {11, 51}, {460, 60}}));
        machine.sweepX();
        test.pass(5);
        machine.recorder().noteComplete(test.clock.seconds);
        machine.moveY(12000 + number);
        test.pass(1.1);
    }
    QTemporaryDir folder;
    const ReportOptions options{folder.path() + "/report.json", folder.path() + "/parts", {1, 2, 99}, 100};
    QCOMPARE(writeReport(machine, options), QString());
    const QJsonObject report = readJson(options.file);
    QCOMPARE(report["layers"].toInt(), 2);
    QCOMPARE(report["passes"].toInt(), 8);
    QCOMPARE(report["dots"].toArray()[0].toObject()["structure"].toInt(), 16);
    QCOMPARE(report["dots"].toArray()[1].toObject()["structure"].toInt(), 8);
    const QJsonObject gap = report["programGapMs"].toObject();
    QCOMPARE(gap["count"].toInt(), 7);
    // 1100 ms from one page to the next, less the move of 1 um in Y and the 100 ms that are stated.
    const double motion = 2 * std::sqrt(1 / geometry::yAcceleration) * 1000;
    QVERIFY2(qAbs(gap["median"].toDouble() - (1000 - motion)) < 0.01, QJsonDocument(gap).toJson());
    std::vector<PassRecord> passes;
    QString error;
    QVERIFY(readPasses(options.partsFolder + "/passes.bin", &passes, &error));
    QCOMPARE(passes.size(), size_t(8));
    QCOMPARE(passes[3].structure.bytes, machine.recorder().passes()[3].structure.bytes);
    QCOMPARE(passes[3].heads[2].firstX, machine.recorder().passes()[3].heads[2].firstX);
    QVERIFY(!QImage(options.partsFolder + "/layer2.png").isNull());
    QVERIFY(!QFileInfo::exists(options.partsFolder + "/layer99.png"));
    QVERIFY(!QImage(options.partsFolder + "/part.png").isNull());
    QVERIFY(!writeReport(machine, {"/proc/none/report.json", {}, {}, 0}).isEmpty());
}

QTEST_MAIN(TestMachineProgram)
#include "test_machine_program.moc"
