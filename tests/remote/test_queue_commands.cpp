// The remote commands that change the queue and read the database. No picture may need the page's thread:
// this program has none.

#include "frame/Folders.h"
#include "frame/SqliteUtil.h"
#include "printdata/PrintQueue.h"
#include "printdata/QueueNotice.h"
#include "printdata/SliceToImage.h"
#include "remote/RemoteCall.h"
#include "remote/RemoteCommands.h"
#include "tests/printdata/Samples.h"

#include <QBuffer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QtTest>

namespace
{
using Seen = std::function<void(ReplyHead)>;

/// The reply to a request; `seen` is called when it is sent.
QJsonObject ask(
    const QJsonObject &request, const Seen &seen = [](ReplyHead) {})
{
    QJsonObject reply;
    const QByteArray text = QJsonDocument(request).toJson();
    const RemoteCall call(request, text, [&](const QByteArray &payload, ReplyHead head) {
        seen(head);
        reply = QJsonDocument::fromJson(payload).object();
    });
    for (const RemoteCommand &command : remoteCommands())
        if (request["Title"] == QLatin1String(command.title))
            command.run(call);
    return reply;
}

QJsonObject sql(const char *title, const QString &statement)
{
    return ask({{"Title", title}, {"Action", statement}});
}

QJsonArray list(const QString &statement)
{
    return sql("FileList", statement)["Queue"].toArray();
}

QByteArray picture(int width, const char *format)
{
    QBuffer buffer;
    QImage(width, 40, QImage::Format_RGB32).save(&buffer, format);
    return buffer.data();
}

/// A column and the width of the JPEG beside it, of each row.
QString icons(const QJsonArray &rows, const char *column)
{
    QStringList texts;
    for (const QJsonValue &row : rows) {
        const QByteArray jpeg = QByteArray::fromBase64(row["Icon"].toString().toLatin1());
        texts << row[column].toString() + ' ' + QString::number(QImage::fromData(jpeg, "JPG").width());
    }
    return texts.join('|');
}

void run(const QString &statement)
{
    sqliteUtil()->ExecuteSqlQuery(statement);
}

QString waiting()
{
    QStringList names;
    for (const QueueRow &row : queueRows(QueueWaiting))
        names << row.modelName.section('.', 0, 0);
    return names.join(' ');
}
} // namespace

class TestQueueCommands : public QObject
{
    Q_OBJECT
    TestInstall m_install;
    int m_refreshes = 0;

private slots:
    /// Waiting: a (picture), b (damaged), c (no file); aborted: d.
    void init()
    {
        createSchema(sqliteUtil());
        run("delete from PrintQueue");
        writeFile("model/a.tzl", modelBytes(pictureSettings(64, 64, 0, 4), picture(80, "PNG")));
        writeFile("model/b.tzl", "rubbish");
        writeFile("model/d.tzl", modelBytes("layerCnt=1\n", "no picture"));
        for (const char *name : {"d.tzl", "c.tzl", "b.tzl", "a.tzl"})
            addToQueue(name);
        run("update PrintQueue set status=2,ID=7,StrWax=12.5 where ModelName=\"d.tzl\"");
        setQueueRefresh([this] { ++m_refreshes; });
    }

    void changes_data()
    {
        QTest::addColumn<QByteArray>("keys");
        QTest::addColumn<QString>("order");
        const QVector<QPair<const char *, QString>> rows = {
            {"'FileListSort','IsTop':true,'FileName':'c.tzl','Status':0", "c a b"},
            {"'FileListSort','IsTop':false,'Direction':true,'FileName':'c.tzl','Status':0", "a c b"},
            {"'FileListSort','IsTop':false,'Direction':true,'FileName':'a.tzl','Status':0", "a b c"},
            {"'FileListSort','IsTop':false,'Direction':false,'FileName':'a.tzl','Status':0", "b a c"},
            {"'FileListSort','IsTop':false,'FileName':'a.tzl','Status':2", "a b c"},
            {"'FileListSort','IsTop':'yes','FileName':['c.tzl'],'Status':{}", "a b c"},
            {"'FileListReprint','FileName':'d.tzl'", "d a b c"},
            {"'FileDelete','File':'b.tzl'", "a c"},
            {"'FileDelete','File':'a\\\" or \\\"1\\\"=\\\"1'", "a b c"}};
        for (const auto &[keys, order] : rows)
            QTest::newRow(keys) << QByteArray(keys).replace('\'', '"') << order;
    }
    void changes()
    {
        QFETCH(QByteArray, keys);
        QJsonObject request = QJsonDocument::fromJson("{\"Title\":" + keys + '}').object();
        refreshQueue(true); // a change of the machine's own is forgotten
        m_refreshes = 0;
        const QJsonObject reply = ask(request, [&](ReplyHead head) {
            QTEST(waiting(), "order");
            QCOMPARE(m_refreshes, 0);
            QCOMPARE(head == ReplyHead::Echo, keys.contains("Delete"));
        });
        QVERIFY(m_refreshes == 1 && !takeQueueChanged());
        request["Result"] = "Success";
        QCOMPARE(reply, request);
        QCOMPARE(QFile::exists("model/b.tzl"), waiting().contains('b'));
    }

    void deletesWithoutRefresh()
    {
        QJsonObject request{{"Title", "PrintQueue"}, {"Action", "Empty"}, {"FileName", "a.tzl"}};
        QCOMPARE(ask(request), QJsonObject({{"Title", "PrintQueue"}}));
        QCOMPARE(waiting(), QString("a b c"));
        refreshQueue(true);
        m_refreshes = 0;
        request["Action"] = "Delete";
        QCOMPARE(ask(request), QJsonObject({{"Title", "PrintQueue"}, {"Status", 1}, {"Error", 1}}));
        QCOMPARE(waiting(), QString("b c"));
        QVERIFY(m_refreshes == 0 && takeQueueChanged() && !QFile::exists("model/a.tzl"));
    }

    void listsWithPictures()
    {
        writeFile("config/x", modelBytes("a=1\n", picture(9, "PNG"))); // names are no way out of the folders
        writeFile("x.jpg", picture(9, "JPG"));
        run("insert into PrintQueue(ModelName,status,ID) values(\"../config/x\",0,1)");
        const QJsonArray rows = list("select * from PrintQueue order by status,ID");
        QCOMPARE(icons(rows, "ModelName"), QString("a.tzl 256|b.tzl 0|c.tzl 0|../config/x 0|d.tzl 0"));
        QVERIFY(!QFile::exists("config/x.ini"));
        const QJsonObject last = rows.last().toObject();
        QCOMPARE(last.size(), 15);
        QCOMPARE(QJsonArray({last["ID"], last["StrWax"], last["StartTime"]}), QJsonArray({"7", "12.5", ""}));

        writeFile(historyIconPath("{1}.jpg"), picture(80, "JPG"));
        for (const char *icon : {"{1}", "{gone}", "../../install/x", ""})
            run(QString("insert into PrintHistory(SupWax,StrWax,PrintLayer,SumLayer,Icon) "
                        "values(1,2.5,3,4,\"%1\")")
                    .arg(icon));
        QCOMPARE(icons(list("select * from PrintHistory order by id"), "id"), QString("1 80|2 0|3 0|4 0"));
    }

    void loadedModel()
    {
        const QJsonObject request{{"Title", "PrintFileInfo"}};
        QCOMPARE(ask(request), request);
        QCOMPARE(sliceToImage()->loadModelInfo("model/a.tzl"), 0);
        QCOMPARE(icons({ask(request)}, "StrWax"), QString("12.5 256"));
        ask({{"Title", "FileDelete"}, {"File", "a.tzl"}}); // also while it is loaded
        QCOMPARE(ask(request), QJsonObject({{"Title", "PrintFileInfo"}, {"Icon", ""}}));
    }

    void anyStatement()
    {
        const QJsonObject done{{"valid", true}, {"active", true}};
        QCOMPARE(sql("FileListCnt", "select 1"),
                 QJsonObject({{"Title", "FileListCnt"}, {"Action", "select 1"}, {"Count", 1}}));
        for (const char *bad : {"", "rubbish", "select * from nothing", "select 1; select 2", "commit"}) {
            QCOMPARE(sql("SQL", bad), done);
            QCOMPARE(sql("FileList", bad), QJsonObject({{"Title", "FileList"}, {"Queue", QJsonArray()}}));
            QCOMPARE(sql("FileListCnt", bad)["Count"], QJsonValue(0));
        }
        QCOMPARE(sql("SQL", "drop table PrintQueue"), done);
        addToQueue("a.tzl");
        ask({{"Title", "FileListReprint"}, {"FileName", "a.tzl"}});
        QCOMPARE(list("select * from PrintQueue"), QJsonArray());
        createSchema(sqliteUtil()); // as at the next start
        addToQueue("a.tzl");
        QCOMPARE(waiting(), QString("a"));
    }

    void manyRows()
    {
        sql("SQL", "with recursive n(i) as (select 1 union all select i+1 from n where i<100000) "
                   "insert into PrintQueue(ModelName,status,ID) select \"m\"||i||\".tzl\",0,i from n");
        LogCapture log;
        QCOMPARE(sql("FileListCnt", "select * from PrintQueue")["Count"], QJsonValue(100004));
        const QJsonArray rows = list("select * from PrintQueue where ID>7 order by ID");
        QCOMPARE(rows.last()["ModelName"], QJsonValue("m100000.tzl"));
        QCOMPARE(log.count("open file"), 0);
    }
};

QTEST_GUILESS_MAIN(TestQueueCommands)
#include "test_queue_commands.moc"
