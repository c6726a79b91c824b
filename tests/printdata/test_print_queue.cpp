// The queue's rows, their order and their files.

#include "frame/Folders.h"
#include "frame/SqliteUtil.h"
#include "printdata/PrintQueue.h"
#include "printdata/Samples.h"

#include <QDir>
#include <QSqlRecord>
#include <QtTest>

class TestPrintQueue : public QObject
{
    Q_OBJECT
    TestInstall m_install;

    static void add(const QString &name)
    {
        writeFile(modelPath(name),
                  modelBytes("layerCnt=480\nprintTime=3600\nmodelMaterialName=蜡 \\\"A\\\"\n"
                             "modelMaterial=12.5\nsupportMaterial=3.25\nPrintModeName=%2 fine\n"
                             "extentX=1\nextentY=2.5\nextentZ=3\n"));
        addToQueue(name);
    }
    static QStringList names(int status)
    {
        QStringList list;
        for (const QueueRow &row : queueRows(status))
            list << row.modelName;
        return list;
    }
    static QSqlRecord first()
    {
        QSqlQueryModel model;
        sqliteUtil()->ExecuteQueryModel(&model, "select * from PrintQueue order by ID");
        return model.record(0);
    }

private slots:
    void init()
    {
        createSchema(sqliteUtil());
        sqliteUtil()->ExecuteSqlQuery("delete from PrintQueue");
    }

    void adds()
    {
        add("a.tzl");
        QCOMPARE(headId(QueueWaiting), -2);
        add("b.tzl");
        QCOMPARE(names(QueueWaiting), QStringList({"b.tzl", "a.tzl"}));
        add("a.tzl"); // again: replaced, and at the head
        QCOMPARE(names(QueueWaiting), QStringList({"a.tzl", "b.tzl"}));
        QStringList values;
        for (const char *column : {"ModelName", "status", "Volume", "PrintMode", "SupWax", "StrWax",
                                   "modelMaterialName", "printTime", "SumLayer", "ID"})
            values << first().value(column).toString();
        QCOMPARE(values.join('|'), QString("a.tzl|0|1,2.5,3|%2 fine|3.25|12.5|蜡 \"A\"|3600|480|-3"));
        writeFile(modelPath("a.tzl"), "rubbish"); // the side file of the model before does not describe it
        addToQueue("a.tzl");
        QCOMPARE(first().value("ModelName").toString(), QString("a.tzl"));
        QCOMPARE(first().value("SumLayer").toString(), QString());
    }

    void anyName()
    {
        for (const QString &name :
             {QString("x\"; delete from PrintQueue; --.tzl"), QString("%1%2%10%L11 %'.tzl")}) {
            add("other.tzl");
            add(name);
            QVERIFY(moveRow(name, false, QueueWaiting));
            QCOMPARE(names(QueueWaiting), QStringList({"other.tzl", name}));
            moveToTop(name, QueueWaiting);
            QCOMPARE(firstWaitingModel(), name);
            writeFile(modelPath(name) + ".md5", "x");
            QDir().mkpath(sliceFolder(name) + "/sub");
            removeModel(name);
            QCOMPARE(names(QueueWaiting), QStringList({"other.tzl"}));
            for (const QString &gone : {modelPath(name), modelIniPath(name), modelPath(name) + ".md5"})
                QVERIFY(!QFile::exists(gone));
            QVERIFY(!QFile::exists(sliceFolder(name)));
            removeModel("other.tzl");
        }
    }

    void order()
    {
        for (const char *name : {"c.tzl", "b.tzl", "a.tzl"})
            add(name);
        QVERIFY(!moveRow("a.tzl", true, QueueWaiting));
        QVERIFY(!moveRow("c.tzl", false, QueueWaiting) && !moveRow("none.tzl", true, QueueWaiting));
        QVERIFY(moveRow("b.tzl", true, QueueWaiting));
        QCOMPARE(names(QueueWaiting), QStringList({"b.tzl", "a.tzl", "c.tzl"}));
        sqliteUtil()->ExecuteSqlQuery(
            "update PrintQueue set status=2,ID=7,EndTime=\"then\" where ModelName=\"c.tzl\"");
        QCOMPARE(headId(QueueAborted), 6);
        reprintModel("c.tzl");
        QCOMPARE(names(QueueWaiting), QStringList({"c.tzl", "b.tzl", "a.tzl"}));
    }

    /// Names that lead out of the folders neither get in nor take anything along.
    void foreignNames()
    {
        const QString log = m_install.parent() + "/.PeloraTemp/log/pelora.log";
        writeFile(log, "x");
        for (const char *name : {"", ".", "..", "../../install", "a\\b", "log"}) {
            addToQueue(name);
            removeModel(name);
        }
        QCOMPARE(names(QueueWaiting), QStringList());
        QVERIFY(QFile::exists(log) && QFile::exists("pelora.db"));
    }
};

QTEST_GUILESS_MAIN(TestPrintQueue)
#include "test_print_queue.moc"
