// The slicer's process, played by shell scripts.

#include "frame/Folders.h"
#include "frame/PrintStatus.h"
#include "printdata/Samples.h"
#include "printdata/SliceToImage.h"

#include <QDir>
#include <QFile>
#include <QtTest>
#include <sys/stat.h>

namespace
{
void tool(const QByteArray &script)
{
    QDir().mkpath("Lamorel");
    writeFile("Lamorel/lamorel.exe", "#!/bin/sh\n" + script);
    QFile::setPermissions("Lamorel/lamorel.exe", QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

bool load(const QString &name)
{
    writeFile(modelPath(name), modelBytes(pictureSettings(64, 24, 0, 4)));
    return sliceToImage()->loadModelInfo(modelPath(name)) == 0;
}
} // namespace

class TestSlicerDriver : public QObject
{
    Q_OBJECT
private slots:
    void init() { QVERIFY(load("ring.tzl")); }
    void cleanup() { sliceToImage()->closeProcess(); }
    void noModel();
    void noTool();
    void outputs_data();
    void outputs();
    void starts_data();
    void starts();
    void ends_data();
    void ends();
    void closes();
    void leftOverTool();
    void readAcrossThreads();

private:
    TestInstall m_install;
};

void TestSlicerDriver::noModel()
{
    LogCapture log;
    QVERIFY(!SliceToImage().waitForStarted());
    QCOMPARE(log.count("m_fileNmae is null"), 1);
}

void TestSlicerDriver::noTool()
{
    QFile::remove("Lamorel/lamorel.exe");
    QVERIFY(!sliceToImage()->waitForStarted());
    QVERIFY(!sliceToImage()->isRunning());
    QCOMPARE(sliceToImage()->usedMemoryText(), QString("UsedMem:"));
    writeFile(sliceFolder("ring.tzl") + "/slice_s4", "x");
    QCOMPARE(sliceToImage()->hasSliceLayer(4), 4); // what an earlier run has left is printed
    QCOMPARE(sliceToImage()->hasSliceLayer(5), -1);
}

void TestSlicerDriver::outputs_data()
{
    QTest::addColumn<QStringList>("outputs");
    QTest::addColumn<int>("layer");
    QTest::addColumn<int>("total");
    const auto row = [](const char *name, const QStringList &outputs, int layer, int total) {
        QTest::newRow(name) << outputs << layer << total;
    };
    row("nothing yet", {"hello\n"}, -1, 9999);
    row("a layer", {"slice: 12/480\n"}, 12, 480);
    row("carriage returns and blanks", {"slice: \t 12/ 480\r\n"}, 12, 480);
    row("first of an output counts", {"slice: 3/9\nslice: 4/9\nrubbish\n"}, 3, 9);
    row("next output counts", {"slice: 3/9\n", "slice: 4/9\n"}, 4, 9);
    row("rubbish", {QString("\n\n%s%n slice\n") + QChar(0) + "\nslice\n"}, -1, 9999);
    row("no numbers", {"slice: 3/9\n", "slice: x/y\n", "slice:\n", "slice:4/9\n"}, 3, 9);
    row("no second number", {"slice: 3/9\n", "slice: 4/\n", "slice: 5\n"}, 5, 9);
    row("numbers too big", {"slice: 3/9\n", "slice: 99999999999/3\n"}, 3, 9);
    row("word before the keyword", {"slice: 3/9\n", "now slice: 4/9\n"}, 3, 9);
    row("number cut", {"slice: 12/48", "0\n"}, 12, 480);
    row("keyword cut", {"slice: 1/480\nsli", "ce: 2/480\n"}, 2, 480);
    row("endless line", {QString(5000, 'x'), "slice: 2/480\n", "slice: 3/480\n"}, 3, 480);
}

void TestSlicerDriver::outputs()
{
    QFETCH(QStringList, outputs);
    QFETCH(int, layer);
    QFETCH(int, total);
    tool("exec cat Lamorel/feed\n");
    QFile::remove("Lamorel/feed");
    QCOMPARE(mkfifo("Lamorel/feed", 0600), 0);
    QVERIFY(sliceToImage()->waitForStarted());
    QVERIFY(sliceToImage()->isRunning());
    QFile feed("Lamorel/feed");
    QVERIFY(feed.open(QIODevice::ReadWrite | QIODevice::Unbuffered));
    float mark = 0;
    bool open = false; // the output before has ended in mid-line
    for (const QString &output : outputs) {
        // The mark is a line before the output: lines behind a first slice line do not count.
        if (!open)
            mark += 0.0625f;
        const QString line = open ? QString() : QString("progress: %1\n").arg(double(mark));
        feed.write((line + output).toUtf8());
        QTRY_COMPARE(sliceToImage()->progress(), mark);
        open = !output.endsWith('\n') && output.size() < 5000;
    }
    QTRY_COMPARE(sliceToImage()->sumLayer(), total);
    QTRY_COMPARE(sliceToImage()->hasSliceLayer(0), layer);
    feed.write("\nprogress: nan\nprogress: 1,5\nprogress: x\n\nprogress: 1.0\n");
    QTRY_COMPARE(sliceToImage()->progress(), 1.0f);
}

void TestSlicerDriver::starts_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("plain") << "a.tzl";
    QTest::newRow("blanks") << "a ring  b.tzl";
    QTest::newRow("double quotes") << "a \"ring\"\" b.tzl";
    QTest::newRow("places") << "%1%2.tzl";
    QTest::newRow("Chinese") << "戒指.tzl";
    QTest::newRow("200 characters") << QString(196, 'x') + ".tzl";
}

void TestSlicerDriver::starts()
{
    QFETCH(QString, name);
    QVERIFY(load(name));
    const QString folder = sliceFolder(name);
    QVERIFY(QDir().mkpath(folder + "/sub1"));
    for (const char *file : {"/slice_s1", "/7", "/notes"})
        writeFile(folder + file, "x");
    tool("printf '%s\\n' \"$@\" > Lamorel/arguments\n");
    LogCapture log;
    QVERIFY(sliceToImage()->waitForStarted());
    QTRY_VERIFY(!sliceToImage()->isRunning());
    QCOMPARE(QString::fromUtf8(readFile("Lamorel/arguments")),
             "-X\nmodel/" + name + "\n-O\n" + folder + "\n");
    QCOMPARE(QDir(folder).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList({"notes", "sub1"}));
    QString command = "Lamorel/lamorel.exe -X \"model/" + name + "\" -O  \"" + folder + "\"";
    QCOMPARE(log.count(command.replace('"', "\\\"")), 1); // as a log line shows its quotes
    QCOMPARE(log.count(QString(folder).replace('"', "\\\"") + "/slice_s1"), 1);
}

void TestSlicerDriver::ends_data()
{
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<QString>("log");
    QTest::newRow("all done") << QByteArray("echo slice: 5/5\n")
                              << "slice success exitCode=0,exitStatus=0 m_hasSliceLayer=5, m_SumSliceLayer=5";
    QTest::newRow("last line open") << QByteArray("printf 'slice: 5/5'\n")
                                    << "m_hasSliceLayer=5, m_SumSliceLayer=5";
    QTest::newRow("error") << QByteArray("echo slice: 5/9 >&2\nexit 3\n")
                           << "slice error exitCode=3,exitStatus=0 m_hasSliceLayer=5, m_SumSliceLayer=9";
    QTest::newRow("dies") << QByteArray("echo slice: 5/9\nkill -9 $$\n")
                          << "slice error exitCode=9,exitStatus=1 m_hasSliceLayer=5, m_SumSliceLayer=9";
}

void TestSlicerDriver::ends()
{
    QFETCH(QByteArray, script);
    QFETCH(QString, log);
    tool("touch \"$4\"/slice_s7\n" + script);
    LogCapture lines;
    QVERIFY(sliceToImage()->waitForStarted());
    QTRY_COMPARE(lines.count(log), 1);
    QCOMPARE(sliceToImage()->hasSliceLayer(6), 5);
    QCOMPARE(sliceToImage()->hasSliceLayer(7), 7);
    QCOMPARE(lines.count("get slice layer by qfileinfo"), 1);
}

void TestSlicerDriver::closes()
{
    tool("touch \"$4\"/slice_s9\necho progress: 0.5\nwhile true; do sleep 0.1; done\n");
    QVERIFY(sliceToImage()->waitForStarted());
    QTRY_COMPARE(sliceToImage()->progress(), 0.5f);
    QTRY_VERIFY(QFile::exists(sliceFolder("ring.tzl") + "/slice_s9"));
    QCOMPARE(sliceToImage()->hasSliceLayer(9), -1); // while the tool runs its word counts
    const QString memory = sliceToImage()->usedMemoryText();
    QVERIFY2(QRegularExpression("^UsedMem:\\d+\\.\\d\\dG$").match(memory).hasMatch(), qPrintable(memory));
    LogCapture log;
    sliceToImage()->closeProcess();
    QCOMPARE(log.count("QProcess runing!="), 1);
    QVERIFY(!sliceToImage()->isRunning());
    QCOMPARE(sliceToImage()->progress(), 0.0f);
    QCOMPARE(sliceToImage()->sumLayer(), -1);
    QCOMPARE(sliceToImage()->usedMemoryText(), QString("UsedMem:"));
    QCOMPARE(sliceToImage()->hasSliceLayer(9), 9);
    sliceToImage()->closeProcess();
    QCOMPARE(log.count("QProcess runing!="), 1);
}

void TestSlicerDriver::leftOverTool()
{
    tool("while true; do sleep 0.1; done\n");
    QProcess earlier;
    earlier.start("Lamorel/lamorel.exe", QStringList());
    QVERIFY(earlier.waitForStarted());
    QTRY_VERIFY(sliceToImage()->usedMemoryText() != "UsedMem:");
    QVERIFY(sliceToImage()->waitForStarted());
    QVERIFY(earlier.waitForFinished());
    QVERIFY(sliceToImage()->isRunning());
}

/// The job thread asks while the tool talks and while it is started anew.
void TestSlicerDriver::readAcrossThreads()
{
    tool("for i in 1 2 3 4 5 6 7 8 9; do echo progress: 0.$i; echo slice: $i/9; done\n");
    std::atomic<bool> done{false};
    std::atomic<int> highest{0};
    QScopedPointer<QThread> job(QThread::create([&] {
        while (!done) {
            highest = qMax(highest.load(), sliceToImage()->hasSliceLayer(1));
            if (sliceToImage()->progress() > 1 || sliceToImage()->sumLayer() > 9999 ||
                sliceToImage()->fileName().isEmpty())
                return;
        }
    }));
    job->start();
    for (int i = 0; i < 5; ++i) {
        QVERIFY(sliceToImage()->waitForStarted());
        QTRY_VERIFY(highest > 0);
        highest = 0;
        QTRY_VERIFY(!sliceToImage()->isRunning());
        QVERIFY(load(i % 2 ? "ring.tzl" : "other.tzl"));
    }
    QVERIFY(job->isRunning());
    done = true;
    QVERIFY(job->wait(5000));
}

QTEST_GUILESS_MAIN(TestSlicerDriver)
#include "test_slicer_driver.moc"
