// The slicer's process, played by shell scripts.

#include "frame/Folders.h"
#include "printdata/Samples.h"
#include "printdata/SliceToImage.h"

#include <QDir>
#include <QtTest>
#include <sys/stat.h>

class TestSlicerDriver : public QObject
{
    Q_OBJECT
    TestInstall m_install;
    SliceToImage *m_slices = sliceToImage();

    static void tool(const QByteArray &script)
    {
        QDir().mkpath("Lamorel");
        writeFile("Lamorel/lamorel.exe", "#!/bin/sh\n" + script);
        QFile::setPermissions("Lamorel/lamorel.exe", QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    bool load(const QString &name)
    {
        writeFile(modelPath(name), modelBytes(pictureSettings(64, 24, 0, 4)));
        return m_slices->loadModelInfo(modelPath(name)) == 0;
    }
    void hears(const QStringList &outputs, const QString &counts)
    {
        tool("exec cat Lamorel/feed\n");
        QFile::remove("Lamorel/feed");
        QCOMPARE(mkfifo("Lamorel/feed", 0600), 0);
        QVERIFY(m_slices->waitForStarted());
        QVERIFY(m_slices->isRunning());
        QFile feed("Lamorel/feed");
        QVERIFY(feed.open(QIODevice::ReadWrite | QIODevice::Unbuffered));
        float mark = 0;
        bool open = false; // the output before has ended in mid-line
        for (const QString &output : outputs) {
            if (!open) // a line that tells that the output has been read
                feed.write(QString("progress: %1\n").arg(double(mark += 0.0625f)).toUtf8() + output.toUtf8());
            else
                feed.write(output.toUtf8());
            QTRY_COMPARE(m_slices->progress(), mark);
            open = !output.endsWith('\n') && output.size() < 5000;
        }
        QTRY_COMPARE(QString("%1/%2").arg(m_slices->hasSliceLayer(0)).arg(m_slices->sumLayer()), counts);
        feed.write("\nprogress: nan\nprogress: 1,5\nprogress: x\n\nprogress: 1.0\n");
        QTRY_COMPARE(m_slices->progress(), 1.0f);
    }

private slots:
    void init() { QVERIFY(load("ring.tzl")); }
    void cleanup() { m_slices->closeProcess(); }

    void nothingToStart()
    {
        QVERIFY(!SliceToImage().waitForStarted()); // no model
        QFile::remove("Lamorel/lamorel.exe");
        QVERIFY(!m_slices->waitForStarted());
        QVERIFY(!m_slices->isRunning());
        writeFile(sliceFolder("ring.tzl") + "/slice_s4", "x");
        QCOMPARE(m_slices->hasSliceLayer(4), 4); // what an earlier run has left is printed
        QCOMPARE(m_slices->hasSliceLayer(5), -1);
    }

    void outputs()
    {
        const QVector<QPair<QString, QStringList>> rows{
            {"-1/9999", {"hello\n\n%s%n slice\nslice\n"}},
            {"12/480", {"slice: \t 12/ 480\r\n"}},
            {"3/9", {"slice: 3/9\nslice: 4/9\nrubbish\n"}}, // the first of an output counts
            {"3/9", {"slice: 3/9\n", "slice: x/y\n", "slice:\n", "slice:4/9\n", "now slice: 4/9\n"}},
            {"5/9", {"slice: 3/9\n", "slice: 4/\n", "slice: 5\n", "slice: 99999999999/3\n"}},
            {"12/480", {"slice: 12/48", "0\n"}}, // cut in a number, cut in a word
            {"2/480", {"slice: 1/480\nsli", "ce: 2/480\n"}},
            {"3/480", {QString(5000, 'x'), "slice: 2/480\n", "slice: 3/480\n"}}};
        for (const auto &[counts, outputs] : rows) {
            hears(outputs, counts);
            if (QTest::currentTestFailed())
                return;
            m_slices->closeProcess();
        }
    }

    /// A start leaves what is not a slice.
    void clearsTheFolder()
    {
        tool("");
        const QString folder = sliceFolder("ring.tzl");
        QVERIFY(QDir().mkpath(folder + "/sub1"));
        for (const char *file : {"/slice_s1", "/7", "/notes"})
            writeFile(folder + file, "x");
        QVERIFY(m_slices->waitForStarted());
        QCOMPARE(QDir(folder).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
                 QStringList({"notes", "sub1"}));
    }

    void closes()
    {
        tool("touch \"$4\"/slice_s9\necho progress: 0.5\nwhile true; do sleep 0.1; done\n");
        QVERIFY(m_slices->waitForStarted());
        QTRY_COMPARE(m_slices->progress(), 0.5f);
        QCOMPARE(m_slices->hasSliceLayer(9), -1); // while the tool runs its word counts
        QVERIFY(m_slices->usedMemoryText().endsWith('G'));
        m_slices->closeProcess();
        QVERIFY(!m_slices->isRunning());
        QCOMPARE(m_slices->progress(), 0.0f);
        QCOMPARE(m_slices->sumLayer(), -1);
        QCOMPARE(m_slices->usedMemoryText(), QString("UsedMem:"));
        QCOMPARE(m_slices->hasSliceLayer(9), 9);
    }

    /// The job thread asks while the tool talks and while it is started anew.
    void readAcrossThreads()
    {
        tool("for i in 1 2 3 4 5 6 7 8 9; do echo progress: 0.$i; echo slice: $i/9; done\n");
        std::atomic<bool> done{false};
        std::atomic<int> highest{0};
        QScopedPointer<QThread> job(QThread::create([&] {
            while (!done && m_slices->progress() <= 1 && !m_slices->fileName().isEmpty())
                highest = qMax(highest.load(), m_slices->hasSliceLayer(1));
        }));
        job->start();
        for (int i = 0; i < 5; ++i) {
            QVERIFY(m_slices->waitForStarted());
            QTRY_VERIFY(highest > 0);
            highest = 0;
            QVERIFY(load(i % 2 ? "ring.tzl" : "other.tzl"));
        }
        QVERIFY(job->isRunning());
        done = true;
        QVERIFY(job->wait(5000));
    }
};

QTEST_GUILESS_MAIN(TestSlicerDriver)
#include "test_slicer_driver.moc"
