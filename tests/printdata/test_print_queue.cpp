// The queue's rows, their order and their files.

#include "frame/Folders.h"
#include "frame/SqliteUtil.h"
#include "printdata/PrintQueue.h"
#include "printdata/Samples.h"

#include <QDir>
#include <QFile>
#include <QSqlRecord>
#include <QtTest>

namespace
{
const QByteArray settings =
    "layerCnt=480\nprintTime=3600\nmodelMaterialName=蜡 \\\"A\\\"\nmodelMaterial=12.5\n"
    "supportMaterial=3.25\nPrintModeName=%2 fine\nextentX=1\nextentY=2.5\nextentZ=3\n";

void add(const QString &name)
{
    writeFile(modelPath(name), modelBytes(settings));
    addToQueue(name);
}

QStringList names(int status)
{
    QStringList list;
    for (const QueueRow &row : queueRows(status))
        list << row.modelName;
    return list;
}

QSqlRecord row(const QString &name)
{
    QSqlQueryModel model;
    sqliteUtil()->ExecuteQueryModel(&model, "select * from PrintQueue");
    for (int i = 0; i < model.rowCount(); ++i) {
        if (model.record(i).value("ModelName").toString() == name)
            return model.record(i);
    }
    return QSqlRecord();
}
} // namespace

class TestPrintQueue : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { createSchema(sqliteUtil()); }
    void init() { sqliteUtil()->ExecuteSqlQuery("delete from PrintQueue"); }
    void adds();
    void anyName_data();
    void anyName();
    void withoutDescription();
    void order();
    void reprint();
    void removes();
    void foreignNames();

private:
    TestInstall m_install;
};

void TestPrintQueue::adds()
{
    QCOMPARE(firstWaitingModel(), QString());
    QCOMPARE(headId(QueueWaiting), -1);
    add("a.tzl");
    add("b.tzl");
    QCOMPARE(row("a.tzl").value("ID").toInt(), -1);
    QCOMPARE(row("b.tzl").value("ID").toInt(), -2);
    QCOMPARE(names(QueueWaiting), QStringList({"b.tzl", "a.tzl"}));
    add("a.tzl"); // again: replaced, and at the head
    QCOMPARE(names(QueueWaiting), QStringList({"a.tzl", "b.tzl"}));
    QCOMPARE(firstWaitingModel(), QString("a.tzl"));

    const QSqlRecord added = row("a.tzl");
    const QHash<QString, QVariant> expected{
        {"status", 0},       {"Volume", "1,2.5,3"},    {"SupWax", 3.25},
        {"StrWax", 12.5},    {"PrintMode", "%2 fine"}, {"modelMaterialName", "蜡 \"A\""},
        {"printTime", 3600}, {"SumLayer", 480},        {"ID", -3}};
    for (auto it = expected.begin(); it != expected.end(); ++it)
        QCOMPARE(added.value(it.key()).toString(), it.value().toString());
    const QDateTime created = QDateTime::fromString(added.value("createtime").toString(), "yyyy-MM-dd hh:mm");
    QVERIFY(qAbs(created.secsTo(QDateTime::currentDateTime())) < 120);
    QCOMPARE(queueRows(QueueWaiting)[0].createTime, added.value("createtime").toString());
}

void TestPrintQueue::anyName_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("blanks") << "a ring .tzl";
    QTest::newRow("double quote") << "a\"ring.tzl";
    QTest::newRow("statement") << "x\"; delete from PrintQueue; --.tzl";
    QTest::newRow("single quote") << "a'ring.tzl";
    QTest::newRow("places") << "%1%2%10%L11 %.tzl";
    QTest::newRow("Chinese") << "戒指.tzl";
    QTest::newRow("200 characters") << QString(196, 'x') + ".tzl";
}

void TestPrintQueue::anyName()
{
    QFETCH(QString, name);
    add("other.tzl");
    add(name);
    QCOMPARE(names(QueueWaiting), QStringList({name, "other.tzl"}));
    QVERIFY(moveRow(name, false, QueueWaiting));
    QCOMPARE(names(QueueWaiting), QStringList({"other.tzl", name}));
    moveToTop(name, QueueWaiting);
    reprintModel(name);
    QCOMPARE(firstWaitingModel(), name);
    removeModel(name);
    QCOMPARE(names(QueueWaiting), QStringList({"other.tzl"}));
    QVERIFY(!QFile::exists(modelPath(name)));
}

void TestPrintQueue::withoutDescription()
{
    add("gone.tzl");
    writeFile(modelPath("gone.tzl"), "rubbish"); // the side file of the earlier one still lies there
    addToQueue("gone.tzl");
    addToQueue("never.tzl");
    QCOMPARE(names(QueueWaiting), QStringList({"never.tzl", "gone.tzl"}));
    for (const char *column : {"PrintMode", "SumLayer", "modelMaterialName"})
        QCOMPARE(row("gone.tzl").value(column).toString(), QString());
}

void TestPrintQueue::order()
{
    for (const char *name : {"c.tzl", "b.tzl", "a.tzl"})
        add(name);
    QVERIFY(!moveRow("a.tzl", true, QueueWaiting));
    QVERIFY(!moveRow("c.tzl", false, QueueWaiting));
    QVERIFY(!moveRow("none.tzl", true, QueueWaiting));
    QVERIFY(!moveRow("b.tzl", true, QueuePrinted));
    QVERIFY(moveRow("b.tzl", true, QueueWaiting));
    QCOMPARE(names(QueueWaiting), QStringList({"b.tzl", "a.tzl", "c.tzl"}));
    QVERIFY(moveRow("b.tzl", false, QueueWaiting));
    moveToTop("c.tzl", QueueWaiting);
    QCOMPARE(names(QueueWaiting), QStringList({"c.tzl", "a.tzl", "b.tzl"}));
    QCOMPARE(row("c.tzl").value("ID").toInt(), -4);
}

void TestPrintQueue::reprint()
{
    add("a.tzl");
    add("b.tzl");
    sqliteUtil()->ExecuteSqlQuery(
        "update PrintQueue set status=2,ID=7,EndTime=\"then\" where ModelName=\"a.tzl\"");
    QCOMPARE(queueRows(QueueAborted)[0].endTime, QString("then"));
    QCOMPARE(headId(QueueAborted), 6);
    reprintModel("a.tzl");
    QCOMPARE(names(QueueAborted), QStringList());
    QCOMPARE(names(QueueWaiting), QStringList({"a.tzl", "b.tzl"}));
}

void TestPrintQueue::removes()
{
    add("a.tzl");
    QVERIFY(QDir().mkpath(sliceFolder("a.tzl") + "/sub"));
    writeFile(sliceFolder("a.tzl") + "/sub/slice_s1", "x");
    writeFile(modelPath("a.tzl.md5"), "x");
    removeModel("a.tzl");
    QCOMPARE(names(QueueWaiting), QStringList());
    QCOMPARE(QDir("model").entryList(QDir::Files).filter(QRegularExpression("^a\\.tzl")), QStringList());
    QVERIFY(!QFile::exists(sliceFolder("a.tzl")));
}

/// Names that lead out of the folders neither get in nor take anything along.
void TestPrintQueue::foreignNames()
{
    writeFile(m_install.parent() + "/.PeloraTemp/log/pelora.log", "x");
    for (const char *name : {"", ".", "..", "../../install", "log"}) {
        addToQueue(name);
        removeModel(name);
    }
    QCOMPARE(names(QueueWaiting), QStringList());
    QVERIFY(!m_install.log("pelora.log").isEmpty());
    QVERIFY(QFile::exists("pelora.db"));
}

QTEST_GUILESS_MAIN(TestPrintQueue)
#include "test_print_queue.moc"
