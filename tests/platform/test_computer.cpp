// What the program asks of its computer: files, disk, power, tools, volumes.

#include "platform/DiskSpace.h"
#include "platform/SystemControl.h"
#include "platform/ToolProcesses.h"
#include "platform/Volumes.h"
#include "platform/WriteThroughFile.h"
#include "support/LogCapture.h"
#include "support/TestInstall.h"

#include <QDir>
#include <QProcess>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

class TestComputer : public QObject
{
    Q_OBJECT
    std::unique_ptr<TestInstall> m_install;

    static QString letters(const QSignalSpy &arrived)
    {
        QString text;
        for (const QList<QVariant> &arguments : arrived)
            text += QChar(arguments.first().value<quint8>());
        return text;
    }

private slots:
    void init() { m_install = std::make_unique<TestInstall>(); }

    void filesAndDisk()
    {
        const QString path = QStringLiteral("config/图 \"1\".bin");
        writeFile(path, "longer than what comes");
        QVERIFY(writeThrough(path, "a\0b\r\n", 5));
        QCOMPARE(readFile(path), QByteArray("a\0b\r\n", 5));
        for (const char *bad : {"nowhere/x", "config", "/dev/full"})
            QVERIFY2(!writeThrough(bad, "a", 1), bad);
        QVERIFY(diskSpace(".").totalGB > 0);
        QCOMPARE(diskSpace("nowhere/x").totalGB, 0.0);
    }

    void neverRestartsADesk()
    {
        for (const QJsonValue &notAllowed :
             {QJsonValue(), QJsonValue(false), QJsonValue("true"), QJsonValue(1)}) {
            m_install->setPlatform({{"AllowSystem", notAllowed}});
            LogCapture log;
            QVERIFY(restartSystem() && powerOffSystem());
            QCOMPARE(log.count("taken as done: "), 2);
        }
    }

    void killsOnlyItsOwnTools()
    {
        for (const QByteArray firstLine : {"", "#!/bin/sh -e", "#!/usr/bin/env sh"}) { // a program, scripts
            m_install = std::make_unique<TestInstall>();
            const QString other = m_install->parent() + "/other";
            for (const QString &folder : {QString("Lamorel"), other}) {
                const QString tool = folder + "/lamorel.exe";
                QVERIFY(QDir().mkpath(folder));
                if (firstLine.isEmpty())
                    QVERIFY(QFile::copy("/bin/cat", tool));
                else
                    writeFile(tool, firstLine + "\nwhile read -r line; do echo $line; done\n");
                QVERIFY(QFile::setPermissions(tool, QFile::ReadOwner | QFile::ExeOwner));
            }
            QProcess own, stranger, viewer;
            stranger.setWorkingDirectory(other); // another installation's
            own.start("Lamorel/lamorel.exe", QStringList());
            stranger.start(other + "/lamorel.exe", QStringList());
            viewer.start("cat", {"-", "Lamorel/lamorel.exe"}); // has only the name among its arguments
            for (QProcess *process : {&own, &stranger, &viewer}) {
                process->write("up\n"); // comes back when the tool itself runs
                QVERIFY(process->waitForReadyRead());
            }
            static const QRegularExpression form("^lamorel\\.exe (\\d+) Console 1 [0-9,]+ K$");
            QCOMPARE(form.match(imageMemoryText("lamorel.exe")).captured(1).toLongLong(), own.processId());
            QCOMPARE(killImage("postrel.exe"), 0);
            QCOMPARE(killImage("lamorel.exe"), 1);
            QVERIFY(own.waitForFinished());
            QCOMPARE(imageMemoryText("lamorel.exe"), QString());
            for (QProcess *process : {&stranger, &viewer}) {
                QCOMPARE(process->state(), QProcess::Running);
                process->kill();
                QVERIFY(process->waitForFinished());
            }
        }
    }

    void lettersFollowTheVolumes()
    {
        const QString media = m_install->parent() + "/media/"; // comes after the start
        m_install->setPlatform({{"MediaFolder", m_install->parent() + "/media"}});
        VolumeWatcher watcher;
        QSignalSpy arrived(&watcher, &VolumeWatcher::arrived);
        QSignalSpy removed(&watcher, &VolumeWatcher::removed);
        watcher.start();
        QDir().mkpath(media + "stick");
        QTRY_COMPARE(letters(arrived), QString("E"));
        QDir().mkdir(media + "a second");
        QTRY_COMPARE(letters(arrived), QString("EF"));
        QCOMPARE(volumePath("E:\\sub\\x.tzl"), media + "stick/sub/x.tzl");
        QCOMPARE(volumePath("f:"), media + "a second/");
        // The letter that is free is given again, the other stays with its folder.
        QVERIFY(QDir(media + "stick").removeRecursively());
        QTRY_COMPARE(removed.size(), 1);
        QCOMPARE(volumePath("E:\\x"), QString("E:/x"));
        for (int i = 0; i < 30; ++i) // more than there are letters: the last ones have none
            QDir().mkpath(media + QString("v%1").arg(i, 2, 10, QChar('0')));
        QTRY_COMPARE(letters(arrived).right(1), QString("Z"));
        QCOMPARE(volumePath("F:\\x"), media + "a second/x");
        QCOMPARE(volumePath("[:\\x"), QString("[:/x"));
    }
};

QTEST_GUILESS_MAIN(TestComputer)
#include "test_computer.moc"
