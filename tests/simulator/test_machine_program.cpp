// The program as it is run: ports, sockets, the head library on it, its commands, its end and its report.

#include "ManualClock.h"
#include "PartPictures.h"
#include "Report.h"
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
    void libraryDrivesTheHeads();
    void reportsAndPictures();
};

void TestMachineProgram::tellsTheInstallationAndEnds()
{
    Program program;
    const QString report = program.folder.path() + "/out/report.json";
    QVERIFY(program.start({"--scale", "50", "--report", report}));
    const QJsonObject settings = readJson(program.install + "/config/Platform.json");
    QCOMPARE(settings["COM16"], program.ready["bridge"]);
    QVERIFY(settings["DiskTotalGB"] == 90 && settings.contains("AllowSystem")); // what was there stays
    for (const char *key : {"COM5", "HeadsSocket", "MachineControl", "MediaFolder"})
        QVERIFY2(QFileInfo::exists(settings[key].toString()), key);
    QVERIFY(program.ctl({"state"}).second.contains("machineSeconds"));
    for (const QStringList &wrong : {QStringList{"door", "roof", "open"}, {"door"}, {"burn", "down"}})
        QCOMPARE(program.ctl(wrong).first, 1);
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
    QVERIFY(program.start() && program.ready["heads"].toString().size() < 100);
    QVERIFY(program.ctl({"stop"}).first == 0 && program.process.waitForFinished(30000));
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
    HIB(hibGetEncoderPos);
    HIB(hibSetupPackedImageTransfer);
    HIB(hibEnablePrintingWDelay);
    HIB(hibWaitForImageTransferCompleteWto);
    HIB(hibGetWaveform);
    HIB(hibSetWaveform);
    HIB(hibGetHeadMisc);
    HIB(hibGetNormVals);
    HIB(hibLoadNormVals);
    QVERIFY(hibInitAllBoards && hibWaitForImageTransferCompleteWto);
    int32_t count = 0;
    QVERIFY(hibInitAllBoards(&count, 1) == 0 && count == 3);
    // What a head keeps, each for itself; a pulse that runs backwards in time is refused and changes nothing.
    HibWaveformKnot knots[8] = {};
    QCOMPARE(hibGetWaveform(2, 1, knots), 0);
    knots[7].voltage = 12.5F;
    knots[7].normRegion = -3;
    QCOMPARE(hibSetWaveform(2, 1, knots), 0);
    knots[7].time = 0;
    QVERIFY(hibSetWaveform(2, 1, knots) != 0 && hibSetWaveform(4, 1, knots) != 0);
    QVERIFY(hibGetWaveform(2, 1, knots) == 0 && knots[7].voltage == 12.5F && knots[7].normRegion == -3);
    QVERIFY(hibGetWaveform(1, 1, knots) == 0 && knots[7].voltage == 0);
    HibHeadMisc misc = {};
    QVERIFY(hibGetHeadMisc(3, 1, &misc) == 0 && misc.colorCount == 2);
    std::vector<int8_t> norm(size_t(misc.nozzlesPerColor), -128), other(norm);
    QCOMPARE(hibLoadNormVals(3, 2, norm.data(), misc.nozzlesPerColor), 0);
    QVERIFY(hibGetNormVals(3, 2, other.data(), misc.nozzlesPerColor) == 0 && other == norm);
    QVERIFY(hibGetNormVals(3, 1, other.data(), misc.nozzlesPerColor) == 0 && other[0] == 0);
    QVERIFY(hibLoadNormVals(3, 3, norm.data(), misc.nozzlesPerColor) != 0);
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
    QVERIFY(hibGetEncoderPos(1, &position) == 0 && position != -1);
    QVERIFY(hibEnablePrintingWDelay(0, 0) != 0); // the source has no more

    program.process.kill();
    QVERIFY(program.process.waitForFinished(30000));
    QVERIFY(hibGetEncoderPos(1, &position) != 0 && hibInitAllBoards(&count, 1) != 0);
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
        test.print(number & 1, 256, {{10, 50}, {11, 51}, {460, 60}});
        test.pass(5);
        machine.recorder().noteComplete(test.clock.seconds);
        machine.moveY(12000 + number);
        test.pass(1.1);
    }
    QTemporaryDir folder;
    const ReportOptions options{folder.path() + "/report.json", folder.path() + "/parts", {1, 2, 99}, 100};
    QCOMPARE(writeReport(machine, options), QString());
    const QJsonObject report = readJson(options.file);
    QVERIFY(report["layers"] == 2 && report["passes"] == 8);
    for (int head : {0, 1})
        QCOMPARE(report["dots"].toArray()[head].toObject()["structure"].toInt(), head ? 8 : 16);
    const QJsonObject gap = report["programGapMs"].toObject();
    QCOMPARE(gap["count"].toInt(), 7);
    // 1100 ms from one page to the next, less the 100 ms that are stated and the move of 1 um in Y, which the
    // program waits out in one look of 30 ms.
    const double motion = 2 * std::sqrt(1 / geometry::yAcceleration) * 1000;
    QVERIFY(qAbs(gap["motionMs"].toObject()["median"].toDouble() - motion) < 0.01);
    QVERIFY2(qAbs(gap["median"].toDouble() - 970) < 0.01, QJsonDocument(gap).toJson());
    std::vector<PassRecord> passes;
    QString error;
    QVERIFY(readPasses(options.partsFolder + "/passes.bin", &passes, &error));
    QVERIFY(passes.size() == 8 &&
            passes[3].heads[2].firstX == machine.recorder().passes()[3].heads[2].firstX);
    for (const char *picture : {"/layer2.png", "/part.png"})
        QVERIFY(!QImage(options.partsFolder + picture).isNull());
    QVERIFY(!QFileInfo::exists(options.partsFolder + "/layer99.png"));
    QVERIFY(!writeReport(machine, {"/proc/none/report.json", {}, {}, 0}).isEmpty());
}

QTEST_MAIN(TestMachineProgram)
#include "test_machine_program.moc"
