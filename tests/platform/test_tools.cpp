// External tools by image name, with real processes. A tool is meant only in its own installation folder.

#include "platform/ToolProcesses.h"
#include "support/TestInstall.h"

#include <QDir>
#include <QProcess>
#include <QRegularExpression>
#include <QTest>

class TestTools : public QObject
{
    Q_OBJECT
private slots:
    void init() { m_install = std::make_unique<TestInstall>(); }
    void cleanup() { m_install.reset(); }
    void killsOnlyItsOwn_data();
    void killsOnlyItsOwn();
    void tellsMemory();

private:
    /// Makes lamorel.exe as a program or as a script with that first line.
    static void makeTool(const QString &path, const QByteArray &firstLine);

    std::unique_ptr<TestInstall> m_install;
};

void TestTools::makeTool(const QString &path, const QByteArray &firstLine)
{
    QDir().mkpath(QFileInfo(path).path());
    if (firstLine.isEmpty())
        QVERIFY(QFile::copy("/bin/sleep", path));
    else
        writeFile(path, firstLine + "\necho up\nread line\n");
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

void TestTools::killsOnlyItsOwn_data()
{
    QTest::addColumn<QByteArray>("firstLine");
    QTest::newRow("program") << QByteArray();
    QTest::newRow("script") << QByteArray("#!/bin/sh");
    QTest::newRow("script with an option") << QByteArray("#!/bin/sh -e");
    QTest::newRow("script through env") << QByteArray("#!/usr/bin/env sh");
}

void TestTools::killsOnlyItsOwn()
{
    QFETCH(QByteArray, firstLine);
    const QString tool = QStringLiteral("Lamorel/lamorel.exe");
    const QString other = m_install->parent() + "/other";
    makeTool(tool, firstLine);
    makeTool(other + '/' + tool, firstLine);

    QProcess first, second, stranger, viewer;
    stranger.setWorkingDirectory(other);
    first.start(m_install->folder() + '/' + tool, {"600"});
    second.start(tool, {"600"});
    stranger.start(other + '/' + tool, {"600"}); // another installation's
    viewer.start("tail", {"-f", tool});          // has only the name among its arguments
    for (QProcess *process : {&first, &second, &stranger, &viewer})
        QVERIFY(process->waitForStarted());
    if (!firstLine.isEmpty()) { // "up" tells that the interpreter has taken over
        for (QProcess *process : {&first, &second, &stranger})
            QVERIFY(process->waitForReadyRead());
    }

    QCOMPARE(killImage("postrel.exe"), 0);
    QCOMPARE(killImage("lamorel.exe"), 2);
    for (QProcess *process : {&first, &second}) {
        QVERIFY(process->waitForFinished());
        QCOMPARE(process->exitStatus(), QProcess::CrashExit);
    }
    QCOMPARE(killImage("lamorel.exe"), 0);
    QCOMPARE(stranger.state(), QProcess::Running);
    QCOMPARE(viewer.state(), QProcess::Running);
    for (QProcess *process : {&stranger, &viewer}) {
        process->kill();
        QVERIFY(process->waitForFinished());
    }
}

void TestTools::tellsMemory()
{
    QCOMPARE(imageMemoryText("lamorel.exe"), QString());
    makeTool("lamorel.exe", {});
    QProcess process;
    process.start("./lamorel.exe", {"600"});
    QVERIFY(process.waitForStarted());
    const QString text = imageMemoryText("lamorel.exe");
    static const QRegularExpression form("^lamorel\\.exe (\\d+) Console 1 ([0-9,]+) K$");
    const QRegularExpressionMatch match = form.match(text);
    QVERIFY2(match.hasMatch(), qPrintable(text));
    QCOMPARE(match.captured(1).toLongLong(), process.processId());
    QVERIFY(match.captured(2).remove(',').toInt() > 0);
    process.kill();
    QVERIFY(process.waitForFinished());
}

QTEST_GUILESS_MAIN(TestTools)
#include "test_tools.moc"
