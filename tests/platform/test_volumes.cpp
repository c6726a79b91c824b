// Volumes as folders that come and go.

#include "platform/Volumes.h"
#include "support/TestInstall.h"

#include <QDir>
#include <QSignalSpy>
#include <QTest>

class TestVolumes : public QObject
{
    Q_OBJECT
private slots:
    void lettersFollowTheFolders();
    void mediaFolderMayComeLater();

private:
    static QString letters(const QSignalSpy &spy)
    {
        QString text;
        for (const QList<QVariant> &arguments : spy)
            text += QChar(arguments.first().value<quint8>());
        return text;
    }
};

void TestVolumes::lettersFollowTheFolders()
{
    TestInstall install;
    const QString media = install.parent() + "/media/";
    QDir().mkpath(media + "stick");
    install.setPlatform({{"MediaFolder", install.parent() + "/media"}});
    VolumeWatcher watcher;
    QSignalSpy arrived(&watcher, &VolumeWatcher::arrived);
    QSignalSpy removed(&watcher, &VolumeWatcher::removed);
    QSignalSpy other(&watcher, &VolumeWatcher::otherChange);
    watcher.start();
    QVERIFY(arrived.isEmpty()); // whoever starts it can still connect
    QTRY_COMPARE(letters(arrived), QString("E"));

    QDir().mkdir(media + "a second");
    QTRY_COMPARE(letters(arrived), QString("EF"));
    QCOMPARE(volumePath("E:\\sub\\x.tzl"), media + "stick/sub/x.tzl");
    QCOMPARE(volumePath("e:/x"), media + "stick/x");
    QCOMPARE(volumePath("F:"), media + "a second/");
    QCOMPARE(volumePath("G:\\x"), QString("G:/x"));
    QCOMPARE(volumePath("model\\x"), QString("model/x"));
    QCOMPARE(volumePath(""), QString(""));

    writeFile(media + "note.txt", "no volume");
    QTRY_VERIFY(!other.isEmpty());
    QCOMPARE(letters(arrived), QString("EF"));

    // The letter that is free is given again, the other stays with its folder.
    QVERIFY(QDir(media + "stick").removeRecursively());
    QTRY_COMPARE(removed.size(), 1);
    QCOMPARE(volumePath("E:\\x"), QString("E:/x"));
    QCOMPARE(volumePath("F:\\x"), media + "a second/x");
    QDir().mkdir(media + "third");
    QTRY_COMPARE(letters(arrived), QString("EFE"));
    QCOMPARE(volumePath("E:\\x"), media + "third/x");

    // More volumes than letters: the last ones have none.
    for (int i = 0; i < 30; ++i)
        QDir().mkdir(media + QString("v%1").arg(i, 2, 10, QChar('0')));
    QTRY_VERIFY(letters(arrived).contains('Z'));
    QCOMPARE(volumePath("[:\\x"), QString("[:/x"));
}

void TestVolumes::mediaFolderMayComeLater()
{
    TestInstall install;
    const QString media = install.parent() + "/later";
    install.setPlatform({{"MediaFolder", media}});
    VolumeWatcher watcher;
    QSignalSpy arrived(&watcher, &VolumeWatcher::arrived);
    watcher.start();
    QDir().mkpath(media + "/stick");
    QTRY_COMPARE(letters(arrived), QString("E"));
    QVERIFY(QDir(media).removeRecursively());
    QSignalSpy removed(&watcher, &VolumeWatcher::removed);
    QTRY_COMPARE(removed.size(), 1);
    QDir().mkpath(media + "/stick");
    QTRY_COMPARE(letters(arrived), QString("EE"));
}

QTEST_GUILESS_MAIN(TestVolumes)
#include "test_volumes.moc"
