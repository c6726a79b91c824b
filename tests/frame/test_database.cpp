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

    std::unique_ptr<TestInstall> m_install;
    std::unique_ptr<SqliteUtil> m_database;

    void open(const QString &file)
    {
        m_database.reset();
        for (const QString &name : QSqlDatabase::connectionNames())
            QSqlDatabase::removeDatabase(name);
        m_database = std::make_unique<SqliteUtil>(file);
        createSchema(m_database.get());
    }
    void add(const QString &name)
    {
        m_database->ExecuteSqlQuery(
            QString(R"(insert into PrintQueue(ModelName,status,ID) values("%1",0,"-1"))").arg(sqlText(name)));
    }
    /// The first column of what a query gives, by row.
    QStringList query(const QString &statement)
    {
        QSqlQueryModel model;
        m_database->ExecuteQueryModel(&model, statement);
        QStringList texts;
        for (int row = 0; row < model.rowCount(); ++row)
            texts << model.data(model.index(row, 0)).toString();
        return texts;
    }

private slots:
    void init()
    {
        m_install = std::make_unique<TestInstall>();
        open("pelora.db");
    }

    void schemaMayRunAgain()
    {
        const QString names = "select name from pragma_table_info('%1')";
        m_database->ExecuteSqlQuery("drop table PrintQueue"); // one of an earlier version, with a row
        m_database->ExecuteSqlQuery(
            "create table PrintQueue(ModelName vchar(128) primary key ,createtime datetime, "
            "status integer not null)");
        m_database->ExecuteSqlQuery("insert into PrintQueue values('old.tzl','2020-01-01 00:00',1)");
        LogCapture log;
        for (int i = 0; i < 2; ++i) {
            createSchema(m_database.get());
            QCOMPARE(
                query(names.arg("PrintQueue")).join(','),
                QString("ModelName,createtime,status,PrintLayer,SumLayer,StartTime,EndTime,Volume,PrintMode,"
                        "SupWax,StrWax,modelMaterialName,printTime,ID"));
        }
        QCOMPARE(log.count("func:"), 0);
        QCOMPARE(query("select ModelName from PrintQueue where status=1 and ID is null"),
                 QStringList{"old.tzl"});
    }

    void allRowsWhateverTheBatch()
    {
        m_database->ExecuteSqlQuery(
            "with recursive n(i) as (select 1 union all select i+1 from n where i<700) "
            "insert into PrintQueue(ModelName,status,ID) select 'm'||i,0,-i from n");
        QSqlQueryModel model;
        m_database->ExecuteQueryModel(&model, "select * from PrintQueue where status=0 ORDER  by ID");
        m_database->ExecuteSqlQuery("drop table PrintQueue"); // a statement still open would lock it
        QCOMPARE(query("select * from PrintQueue"), QStringList());
        QCOMPARE(model.rowCount(), 700);
        QCOMPARE(model.record(0).value("ModelName").toString(), QString("m700"));
    }

    void errorsAreSilent()
    {
        QSqlQueryModel model;
        for (const char *statement : {"", "rubbish", "select * from nowhere", "update PrintQueue set x=1"}) {
            m_database->ExecuteSqlQuery(statement);
            m_database->ExecuteQueryModel(&model, statement);
            QCOMPARE(model.rowCount(), 0);
        }
        writeFile("config/Sys.json", QByteArray(5000, 'x'));
        for (const char *unusable : {"config", "config/Sys.json", "nowhere/pelora.db"}) {
            open(unusable);
            QCOMPARE(query("select * from PrintQueue"), QStringList());
        }
        QVERIFY(QDir().mkdir("nowhere")); // the next statement, of whatever thread, finds it
        std::thread([this] { createSchema(m_database.get()); }).join();
        add("a");
        QCOMPARE(query("select * from PrintQueue"), QStringList{"a"});
    }

    void threadsShareTheConnection()
    {
        LogCapture log;
        std::atomic<int> wrong{0};
        std::vector<std::thread> threads;
        for (int thread = 0; thread < 4; ++thread) {
            threads.emplace_back([&, thread] {
                for (int i = 0; i < 20; ++i) {
                    add(QString("t%1-%2").arg(thread).arg(i));
                    wrong +=
                        query(QString("select * from PrintQueue where ModelName like 't%1-%'").arg(thread))
                            .size() != i + 1;
                }
            });
        }
        for (std::thread &thread : threads)
            thread.join();
        QCOMPARE(wrong.load(), 0);
        QCOMPARE(log.count("thread"), 0); // Qt would warn so
    }
};

QTEST_GUILESS_MAIN(TestDatabase)
#include "test_database.moc"
