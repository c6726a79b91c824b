// The folders at start and the run-time counter.

#include "frame/Folders.h"
#include "frame/JsonConfig.h"
#include "frame/Startup.h"
#include "support/TestInstall.h"

#include <QDir>
#include <QTest>

class TestStartup : public QObject
{
    Q_OBJECT
private slots:

    void removesFolders()
    {
        TestInstall install;
        QVERIFY(!removeFolder("") && !removeFolder("nowhere") && !removeFolder("config/Sys.json"));
        QDir().mkpath("a/b/.hidden/c");
        writeFile("a/b/.hidden/file", "x");
        writeFile("a/图 1", "x");
        QVERIFY(QFile::link("../config", "a/link") && QFile::link("nowhere", "a/broken"));
        QVERIFY(removeFolder("a"));
        QVERIFY(!QFile::exists("a"));
        QVERIFY(QFile::exists("config/Sys.json")); // what a link points to stays
    }

    void clearsAndCreatesFolders()
    {
        TestInstall install;
        for (const char *folder : {"ring.tzl/sub", "ring_tzl", "RING.TZL", "log/sub", "model/x.tzl", "sub"})
            QDir().mkpath(folder);
        writeFile("file.tzl", "x");
        writeFile("log/sub/old", "x");
        writeFile("../.PeloraTemp/log/pelora.log", "earlier run");
        prepareFolders();
        for (const char *gone : {"ring.tzl", "ring_tzl", "log"})
            QVERIFY2(!QFile::exists(gone), gone);
        for (const char *there : {"RING.TZL", "file.tzl", "model/x.tzl", "config/Sys.json", "sub"})
            QVERIFY2(QFile::exists(there), there);
        QCOMPARE(install.log("pelora.log"), QByteArray("earlier run"));
        QDir("../.PeloraTemp").removeRecursively();
        prepareFolders(); // parents before children
        QVERIFY(QFile::exists("../.PeloraTemp/log") && QFile::exists("../.PeloraTemp/HistoryIcon"));

        // The whole path counts: an installation in such a folder loses all it has.
        QVERIFY(QDir(install.parent()).rename("install", "in_tzl"));
        QDir::setCurrent(install.parent() + "/in_tzl");
        prepareFolders();
        QVERIFY(!QFile::exists("sub") && !QFile::exists("config/Sys.json") && QFile::exists("config"));
        QDir::setCurrent("/");
    }

    void countsRunTime()
    {
        TestInstall install;
        const QString path = "config/UseInfo.json";
        writeFile(path, R"({"SystemSingleRunTime":9,"SystemTotalRunTime":16777216,"PrintTotalTime":5})");
        startRunTimeCounter();
        for (const double hours : {0.16666666666666666, double(float(1 / 6.0)) + 0.16666666666666666}) {
            countRunTime(); // each round passes through a 32-bit float
            const JsonConfig disk(path);
            QCOMPARE(disk.getValue("SystemSingleRunTime").toDouble(), hours);
            QCOMPARE(disk.getValue("SystemTotalRunTime").toDouble(), 16777216 + 0.006944444444444444);
            QCOMPARE(disk.getFloat("PrintTotalTime"), 5.0f);
        }
    }
};

QTEST_GUILESS_MAIN(TestStartup)
#include "test_startup.moc"
