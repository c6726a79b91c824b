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
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QtTest>

namespace
{
struct Reply {
    QJsonObject object;
    ReplyHead head;
};

/// The reply to a request; `seen` is called when it is sent.
Reply ask(
    const QJsonObject &request, const std::function<void()> &seen = [] {})
{
    Reply reply{};
    const QByteArray text = QJsonDocument(request).toJson();
    const RemoteCall call(request, text, [&](const QByteArray &payload, ReplyHead head) {
        seen();
        reply = {QJsonDocument::fromJson(payload).object(), head};
    });
    for (const RemoteCommand &command : remoteCommands())
        if (request["Title"] == QLatin1String(command.title))
            command.run(call);
    return reply;
}

QJsonObject sql(const char *title, const QString &statement)
{
    return {{"Title", title}, {"Action", statement}};
}

QJsonArray list(const QString &statement)
{
    return ask(sql("FileList", statement)).object["Queue"].toArray();
}

QByteArray picture(Qt::GlobalColor colour, const char *format)
{
    QImage image(80, 40, QImage::Format_RGB32);
    image.fill(colour);
    QBuffer buffer;
    image.save(&buffer, format);
    return buffer.data();
}

/// Size and colour of the JPEG in a row's icon; the text itself when it is none.
QString iconOf(const QJsonValue &row)
{
    const QString text = row.toObject()["Icon"].toString();
    const QImage image = QImage::fromData(QByteArray::fromBase64(text.toLatin1()), "JPG");
    if (image.isNull())
        return text;
    const QColor colour = image.pixelColor(image.width() / 2, image.height() / 2);
    return QString("%1x%2 %3")
        .arg(image.width())
        .arg(image.height())
        .arg(colour.red() / 128 * 10 + colour.blue() / 128);
}
} // namespace

class TestQueueCommands : public QObject
{
    Q_OBJECT
    TestInstall m_install;
    int m_refreshes = 0;

    static void run(const QString &statement) { sqliteUtil()->ExecuteSqlQuery(statement); }
    static QString waiting()
    {
        QStringList names;
        for (const QueueRow &row : queueRows(QueueWaiting))
            names << QString(row.modelName).remove(".tzl");
        return names.join(' ');
    }

private slots:
    void initTestCase()
    {
        setQueueRefresh([this] { ++m_refreshes; });
    }

    /// Waiting: a (picture), b (damaged), c (no file); aborted: d.
    void init()
    {
        createSchema(sqliteUtil());
        run("delete from PrintQueue");
        run("delete from PrintHistory");
        writeFile("model/a.tzl", modelBytes(pictureSettings(64, 64, 0, 4), picture(Qt::red, "PNG")));
        writeFile("model/b.tzl", "rubbish");
        writeFile("model/d.tzl", modelBytes("layerCnt=1\n", "no picture"));
        for (const char *name : {"d.tzl", "c.tzl", "b.tzl", "a.tzl"})
            addToQueue(name);
        run("update PrintQueue set status=2,ID=7,StrWax=12.5 where ModelName=\"d.tzl\"");
        m_refreshes = 0;
    }

    void changes_data()
    {
        QTest::addColumn<QJsonObject>("request");
        QTest::addColumn<QString>("order");
        QTest::addColumn<bool>("own");
        const auto sort = [](QJsonObject keys, const char *name) {
            keys["Title"] = "FileListSort";
            keys["FileName"] = name;
            return keys;
        };
        const QJsonObject up{{"IsTop", false}, {"Direction", true}, {"Status", 0}};
        const QJsonObject down{{"IsTop", false}, {"Direction", false}, {"Status", 0}};
        const QJsonObject top{{"IsTop", true}, {"Status", 0}};
        QTest::newRow("top") << sort(top, "c.tzl") << "c a b" << true;
        QTest::newRow("up") << sort(up, "c.tzl") << "a c b" << true;
        QTest::newRow("up first") << sort(up, "a.tzl") << "a b c" << true;
        QTest::newRow("down") << sort(down, "a.tzl") << "b a c" << true;
        QTest::newRow("down last") << sort(down, "c.tzl") << "a b c" << true;
        QTest::newRow("in another list")
            << sort({{"IsTop", false}, {"Status", 2}}, "a.tzl") << "a b c" << true;
        QTest::newRow("reprint") << QJsonObject{{"Title", "FileListReprint"}, {"FileName", "d.tzl"}}
                                 << "d a b c" << true;
        QTest::newRow("delete") << QJsonObject{{"Title", "FileDelete"}, {"File", "b.tzl"}} << "a c" << false;
        QTest::newRow("delete a quote")
            << QJsonObject{{"Title", "FileDelete"}, {"File", "a\" or \"1\"=\"1"}} << "a b c" << false;
        QTest::newRow("other types") << QJsonObject{{"Title", "FileListSort"},
                                                    {"IsTop", "yes"},
                                                    {"FileName", QJsonArray{"c.tzl"}},
                                                    {"Status", QJsonObject{}}}
                                     << "a b c" << true;
    }
    void changes()
    {
        QFETCH(QJsonObject, request);
        refreshQueue(true); // a change of the machine's own is forgotten, as the client reads the queue next
        m_refreshes = 0;
        const Reply reply = ask(request, [this] {
            QTEST(waiting(), "order");
            QCOMPARE(m_refreshes, 0);
        });
        QCOMPARE(m_refreshes, 1);
        QVERIFY(!takeQueueChanged());
        request["Result"] = "Success";
        QCOMPARE(reply.object, request);
        QTEST(reply.head == ReplyHead::Own, "own");
        QCOMPARE(QFile::exists("model/b.tzl"), waiting().contains('b'));
    }

    void printQueue()
    {
        refreshQueue(true);
        m_refreshes = 0;
        Reply reply = ask({{"Title", "PrintQueue"}, {"Action", "Empty"}, {"FileName", "a.tzl"}});
        QCOMPARE(reply.object, QJsonObject({{"Title", "PrintQueue"}}));
        QCOMPARE(waiting(), QString("a b c"));
        reply = ask({{"Title", "PrintQueue"}, {"Action", "Delete"}, {"FileName", "a.tzl"}});
        QCOMPARE(reply.object, QJsonObject({{"Title", "PrintQueue"}, {"Status", 1}, {"Error", 1}}));
        QVERIFY(reply.head == ReplyHead::Own && !QFile::exists("model/a.tzl") &&
                !QFile::exists("model/a.tzl.ini"));
        QCOMPARE(waiting(), QString("b c"));
        QVERIFY(m_refreshes == 0 && takeQueueChanged());
    }

    void listOfTheQueue()
    {
        run("insert into PrintQueue(ModelName,status,ID) values(\"../config/x\",0,1)");
        writeFile("config/x", modelBytes("a=1\n"));
        const Reply reply = ask(sql("FileList", "select * from PrintQueue ORDER by status,ID"));
        QVERIFY(reply.head == ReplyHead::Echo);
        QCOMPARE(reply.object.keys(), QStringList({"Queue", "Title"}));
        const QJsonArray rows = reply.object["Queue"].toArray();
        QStringList icons;
        for (const QJsonValue &row : rows)
            icons << row["ModelName"].toString() + ' ' + iconOf(row);
        QCOMPARE(icons.join('|'), QString("a.tzl 256x128 10|b.tzl |c.tzl |../config/x |d.tzl "));
        QVERIFY(!QFile::exists("config/x.ini")); // a name is no way out of the folder
        const QJsonObject last = rows.last().toObject();
        QCOMPARE(last.keys().join(' '),
                 QString("EndTime ID Icon ModelName PrintLayer PrintMode StartTime StrWax "
                         "SumLayer SupWax Volume createtime modelMaterialName printTime "
                         "status"));
        for (const char *key : {"ID:7", "StrWax:12.5", "status:2", "StartTime:"})
            QCOMPARE(last[QString(key).section(':', 0, 0)], QJsonValue(QString(key).section(':', 1)));
    }

    void listOfTheHistory()
    {
        writeFile(historyIconPath("{1}.jpg"), picture(Qt::blue, "JPG"));
        writeFile("secret.jpg", picture(Qt::red, "JPG"));
        for (const char *icon : {"{1}", "{gone}", "../../install/secret", ""})
            run(QString("insert into PrintHistory(ModelName,SupWax,StrWax,PrintLayer,SumLayer,Icon) "
                        "values(\"a.tzl\",1,2.5,3,4,\"%1\")")
                    .arg(icon));
        QStringList icons;
        for (const QJsonValue &row : list("select * from PrintHistory order by id"))
            icons << row["SumLayer"].toString() + ' ' + iconOf(row);
        QCOMPARE(icons.join('|'), QString("4 80x40 1|4 |4 |4 "));
    }

    void loadedModel()
    {
        const QJsonObject request{{"Title", "PrintFileInfo"}};
        QCOMPARE(ask(request).object, request);
        QCOMPARE(sliceToImage()->loadModelInfo("model/a.tzl"), 0);
        Reply reply = ask(request);
        QVERIFY(reply.head == ReplyHead::Echo);
        QCOMPARE(iconOf(reply.object), QString("256x128 10"));
        QCOMPARE(reply.object["StrWax"], QJsonValue("12.5"));
        QCOMPARE(reply.object.size(), 16);
        ask({{"Title", "FileDelete"}, {"File", "a.tzl"}}); // as the machine does, loaded or not
        QCOMPARE(ask(request).object, QJsonObject({{"Title", "PrintFileInfo"}, {"Icon", ""}}));
    }

    void anyStatement()
    {
        const QJsonObject done{{"valid", true}, {"active", true}};
        const QJsonObject count = ask(sql("FileListCnt", "select * from PrintQueue")).object;
        QCOMPARE(
            count,
            QJsonObject({{"Title", "FileListCnt"}, {"Action", "select * from PrintQueue"}, {"Count", 4}}));
        for (const char *bad : {"", "rubbish", "select * from nothing", "select 1; select 2", "commit",
                                "update PrintQueue set none=1"}) {
            QCOMPARE(ask(sql("SQL", bad)).object, done);
            QCOMPARE(list(bad), QJsonArray());
            QCOMPARE(ask(sql("FileListCnt", bad)).object["Count"], QJsonValue(0));
        }
        QCOMPARE(ask({{"Title", "FileList"}, {"Action", 5}}).object,
                 QJsonObject({{"Title", "FileList"}, {"Queue", QJsonArray()}}));
        QCOMPARE(ask(sql("SQL", "delete from PrintQueue where ModelName=\"b.tzl\"")).object, done);
        QCOMPARE(waiting(), QString("a c"));
        ask(sql("SQL", "drop table PrintQueue"));
        QCOMPARE(list("select * from PrintQueue"), QJsonArray());
        addToQueue("a.tzl");
        ask({{"Title", "FileListReprint"}, {"FileName", "a.tzl"}});
        QCOMPARE(waiting(), QString());
        createSchema(sqliteUtil()); // as at the next start
        addToQueue("a.tzl");
        QCOMPARE(waiting(), QString("a"));
    }

    void manyRows()
    {
        run("with recursive n(i) as (select 1 union all select i+1 from n where i<100000) "
            "insert into PrintQueue(ModelName,status,ID) select \"m\"||i||\".tzl\",0,i from n");
        LogCapture log;
        QCOMPARE(ask(sql("FileListCnt", "select * from PrintQueue")).object["Count"], QJsonValue(100004));
        const QJsonArray rows = list("select * from PrintQueue where ID>0 and status=0 order by ID");
        QCOMPARE(rows.size(), 100000);
        QCOMPARE(rows.last()["ModelName"], QJsonValue("m100000.tzl"));
        QCOMPARE(log.count("open file"), 0);
        ask({{"Title", "FileListSort"}, {"IsTop", true}, {"FileName", "m100000.tzl"}, {"Status", 0}});
        QCOMPARE(firstWaitingModel(), QString("m100000.tzl"));
    }
};

QTEST_GUILESS_MAIN(TestQueueCommands)
#include "test_queue_commands.moc"
