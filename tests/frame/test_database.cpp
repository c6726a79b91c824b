// The database behind its lock.

#include "frame/SqliteUtil.h"
#include "support/LogCapture.h"
#include "support/TestInstall.h"

#include <QDir>
#include <QSqlRecord>
#include <QTest>

#include <atomic>
#include <thread>

class TestDatabase : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void schemaTwice();
    void oldDatabaseGainsColumns();
    void allRowsWhateverTheBatch();
    void modelOutlivesItsRows();
    void anyNameWorks_data();
    void anyNameWorks();
    void badStatementsAreSilent();
    void unusableFile_data();
    void unusableFile();
    void manyThreads();

private:
    QStringList columns(const QString &table);
    void add(const QString &name, int id);

    std::unique_ptr<TestInstall> m_install;
    std::unique_ptr<SqliteUtil> m_database;
};

void TestDatabase::init()
{
    m_install = std::make_unique<TestInstall>();
    m_database = std::make_unique<SqliteUtil>("pelora.db");
    createSchema(m_database.get());
}

void TestDatabase::cleanup()
{
    m_database.reset();
    for (const QString &name : QSqlDatabase::connectionNames())
        QSqlDatabase::removeDatabase(name);
    m_install.reset();
}

QStringList TestDatabase::columns(const QString &table)
{
    QSqlQueryModel model;
    m_database->ExecuteQueryModel(&model, QString("pragma table_info('%1')").arg(table));
    QStringList names;
    for (int row = 0; row < model.rowCount(); ++row)
        names << model.record(row).value("name").toString();
    return names;
}

void TestDatabase::add(const QString &name, int id)
{
    m_database->ExecuteSqlQuery(
        QString(
            R"(insert into PrintQueue(ModelName,createtime,status,ID) values("%1","2024-01-01 10:00",0,"%2"))")
            .arg(sqlText(name))
            .arg(id));
}

void TestDatabase::schemaTwice()
{
    const QStringList queue{"ModelName", "createtime",        "status",    "PrintLayer", "SumLayer",
                            "StartTime", "EndTime",           "Volume",    "PrintMode",  "SupWax",
                            "StrWax",    "modelMaterialName", "printTime", "ID"};
    const QStringList history{"id",     "StartTime",  "EndTime",  "ModelName",         "SupWax",
                              "StrWax", "PrintLayer", "SumLayer", "StrWaxSn",          "SupWaxSn",
                              "Upload", "PrintMode",  "Volume",   "modelMaterialName", "Icon"};
    LogCapture log;
    createSchema(m_database.get());
    QCOMPARE(log.text(), QString());
    QCOMPARE(columns("PrintQueue"), queue);
    QCOMPARE(columns("PrintHistory"), history);
}

void TestDatabase::oldDatabaseGainsColumns()
{
    m_database->ExecuteSqlQuery("drop table PrintQueue");
    m_database->ExecuteSqlQuery(
        "create table PrintQueue(ModelName vchar(128) primary key ,createtime datetime, "
        "status integer not null)");
    m_database->ExecuteSqlQuery("insert into PrintQueue values('old.tzl','2020-01-01 00:00',1)");
    createSchema(m_database.get());
    QSqlQueryModel model;
    m_database->ExecuteQueryModel(&model, "select * from PrintQueue");
    QCOMPARE(model.rowCount(), 1);
    QCOMPARE(model.record(0).count(), 14);
    QCOMPARE(model.record(0).value("ModelName").toString(), QString("old.tzl"));
    QVERIFY(model.record(0).value("ID").isNull());
}

void TestDatabase::allRowsWhateverTheBatch()
{
    m_database->ExecuteSqlQuery("with recursive n(i) as (select 1 union all select i+1 from n where i<700) "
                                "insert into PrintQueue(ModelName,status,ID) select 'm'||i,0,-i from n");
    QSqlQueryModel model;
    m_database->ExecuteQueryModel(&model, "select * from PrintQueue where status=0 ORDER  by ID");
    QCOMPARE(model.rowCount(), 700);
    QVERIFY(!model.canFetchMore());
    QCOMPARE(model.record(0).value("ModelName").toString(), QString("m700"));
    QCOMPARE(model.data(model.index(699, 0)).toString(), QString("m1"));
    QCOMPARE(model.headerData(0, Qt::Horizontal).toString(), QString("ModelName"));
    m_database->ExecuteQueryModel(&model, "select * from PrintQueue where status=2");
    QCOMPARE(model.rowCount(), 0);
}

void TestDatabase::modelOutlivesItsRows()
{
    add("a", 1);
    QSqlQueryModel model;
    m_database->ExecuteQueryModel(&model, "select * from PrintQueue");
    m_database->ExecuteSqlQuery("drop table PrintQueue"); // a statement still open would lock it
    QVERIFY(!columns("PrintQueue").contains("ModelName"));
    QCOMPARE(model.record(0).value("ModelName").toString(), QString("a"));
}

void TestDatabase::anyNameWorks_data()
{
    QTest::addColumn<QString>("name");
    for (const QString &name :
         {QString("a b.tzl"), QString("\"quoted\".tzl"), QString("x\"); drop table PrintQueue; --.tzl"),
          QString("it's.tzl"), QString("戒指.tzl"), QString("\""), QString(200, 'n')})
        QTest::newRow(qPrintable(name.left(20))) << name;
}

void TestDatabase::anyNameWorks()
{
    QFETCH(QString, name);
    add(name, -1);
    QSqlQueryModel model;
    m_database->ExecuteQueryModel(
        &model, QString(R"(select * from PrintQueue where ModelName="%1")").arg(sqlText(name)));
    QCOMPARE(model.rowCount(), 1);
    QCOMPARE(model.record(0).value("ModelName").toString(), name);
    QCOMPARE(model.record(0).value("ID").toInt(), -1);
}

void TestDatabase::badStatementsAreSilent()
{
    add("a", 1);
    LogCapture log;
    QSqlQueryModel model;
    m_database->ExecuteQueryModel(&model, "select * from PrintQueue");
    for (const char *statement : {"", "rubbish", "select * from nowhere", "update PrintQueue set x=1"}) {
        m_database->ExecuteSqlQuery(statement);
        m_database->ExecuteQueryModel(&model, statement);
        QCOMPARE(model.rowCount(), 0);
    }
    QVERIFY(!log.text().contains("func:"));
    m_database->ExecuteQueryModel(&model, "select * from PrintQueue");
    QCOMPARE(model.rowCount(), 1);
}

void TestDatabase::unusableFile_data()
{
    QTest::addColumn<QString>("file");
    QTest::newRow("folder") << "config";
    QTest::newRow("missing folder") << "nowhere/pelora.db";
    QTest::newRow("no database") << "config/Sys.json";
    QTest::newRow("empty name of a missing disk") << "/proc/none/pelora.db";
}

void TestDatabase::unusableFile()
{
    QFETCH(QString, file);
    cleanup();
    m_install = std::make_unique<TestInstall>();
    writeFile("config/Sys.json", QByteArray(5000, 'x'));
    m_database = std::make_unique<SqliteUtil>(file);
    createSchema(m_database.get());
    add("a", 1);
    QSqlQueryModel model;
    m_database->ExecuteQueryModel(&model, "select * from PrintQueue");
    QCOMPARE(model.rowCount(), 0);
    if (file.startsWith("nowhere")) { // found again by whatever comes next, in any thread
        QVERIFY(QDir().mkdir("nowhere"));
        std::thread([this] { createSchema(m_database.get()); }).join();
        add("a", 1);
        m_database->ExecuteQueryModel(&model, "select * from PrintQueue");
        QCOMPARE(model.rowCount(), 1);
    }
}

void TestDatabase::manyThreads()
{
    LogCapture log;
    std::atomic<int> wrong{0};
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&, thread] {
            for (int i = 0; i < 20; ++i) {
                add(QString("t%1-%2").arg(thread).arg(i), i);
                QSqlQueryModel model;
                m_database->ExecuteQueryModel(
                    &model, QString("select * from PrintQueue where ModelName like 't%1-%'").arg(thread));
                wrong += model.rowCount() != i + 1;
            }
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    QCOMPARE(wrong.load(), 0);
    QVERIFY2(!log.text().contains("thread"), qPrintable(log.text()));
}

QTEST_GUILESS_MAIN(TestDatabase)
#include "test_database.moc"
