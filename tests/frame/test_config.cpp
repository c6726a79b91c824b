// The configuration files in memory and on disk.

#include "frame/JsonConfig.h"
#include "support/LogCapture.h"
#include "support/TestInstall.h"

#include <QJsonDocument>
#include <QTest>

#include <atomic>
#include <thread>

class TestConfig : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestInstall> m_install;

private slots:
    void init()
    {
        m_install = std::make_unique<TestInstall>();
        writeFile("config/x.json", R"({"old":1})");
    }

    void readsNumbersByPath()
    {
        writeFile("config/x.json",
                  R"({"n":1.5,"text":"12","list":[1],"":7,"g":{"b":2,"t":"2","":3,"h":{"i":4}}})");
        const JsonConfig config("config/x.json");
        const QList<std::pair<const char *, float>> rows{{"n", 1.5f}, {"text", 0}, {"list", 0}, {"absent", 0},
                                                         {"", 7},     {"g", 0},    {"g,b", 2},  {"g,t", 0},
                                                         {"n,b", 0},  {"g,", 3},   {",b", 0},   {"g,h,i", 0}};
        for (const auto &[path, value] : rows)
            QVERIFY2(config.getFloat(path) == value, path);
    }

    void badFileKeepsTheDocument()
    {
        writeFile("config/bad.json", R"({"a":2,)");
        const QList<std::pair<QString, QString>> rows{
            {"", "^$"},
            {"config/missing.json", "^$"},
            {"config", R"(^"\[func: Init line:\d+\] open config error .+"$)"},
            {"config/bad.json", R"(^"\[func: Init line:\d+\]json error \\r\\n"$)"}};
        JsonConfig config("config/x.json");
        for (const auto &[file, line] : rows) {
            LogCapture log;
            QVERIFY(!config.Init(file));
            QCOMPARE(config.getFloat("old"), 1.0f);
            QVERIFY2(log.text().contains(QRegularExpression(line)), qPrintable(file + ": " + log.text()));
        }
    }

    void writesWhenTold()
    {
        const QString path = "config/new.json";
        JsonConfig config;
        QVERIFY(!config.Init(path)); // not there yet, but now its file
        config.setValue("a", 1);
        QVERIFY(!QFile::exists(path));
        config.setValueSync("b", "二");
        QCOMPARE(readFile(path), QByteArray("{\n    \"a\": 1,\n    \"b\": \"二\"\n}\n"));
        QCOMPARE(config.getString("b"), QString("二"));
        writeFile(path, R"({"a":5})");
        QVERIFY(config.Init(path)); // a second time replaces all
        QCOMPARE(config.object(), (QJsonObject{{"a", 5}}));
        QVERIFY(QDir("config").removeRecursively()); // a write that fails is silent and memory goes on
        config.setValueSync("a", 6);
        QCOMPARE(config.getFloat("a"), 6.0f);
    }

    void replacesTheDocument()
    {
        JsonConfig config("config/x.json");
        LogCapture log;
        for (const QByteArray &bad :
             {QByteArray(), QByteArray("{\"a\":"), QByteArray("\0{}", 3), QByteArray("{} x")})
            QVERIFY(!config.syncFile(bad.constData(), bad.size(), "config/x.json"));
        QVERIFY(!config.syncFile("{}", -1, "config/x.json"));
        QCOMPARE(log.count("json error \\r\\n"), 5);
        QCOMPARE(config.getFloat("old"), 1.0f);
        QCOMPARE(readFile("config/x.json"), QByteArray(R"({"old":1})"));

        // Formatting and key order are the sender's; what follows a zero byte is written but not read.
        const QByteArray sent("{ \"z\":1,\"a\" :2}\0{rest", 21);
        QVERIFY(config.syncFile(sent.constData(), sent.size(), "config/other.json"));
        QCOMPARE(config.object(), (QJsonObject{{"z", 1}, {"a", 2}}));
        QCOMPARE(readFile("config/other.json"), sent);
        config.syncFile(QString("{\"名\" : 2}")); // the store's own file stays the one it was read from
        QCOMPARE(config.getFloat("名"), 2.0f);
        QCOMPARE(readFile("config/x.json"), QByteArray("{\"名\" : 2}"));
    }

    void readersSeeWholeDocuments()
    {
        std::atomic<bool> stop{false};
        std::atomic<int> wrong{0};
        std::thread reader([&] {
            while (!stop) {
                const QJsonObject object = sysConfig()->object();
                wrong += object.value("a") != object.value("b") || sysConfig()->getFloat("a") < 0;
            }
        });
        for (int i = 0; i < 200; ++i)
            sysConfig()->syncFile(QString(R"({"a":%1,"b":%1})").arg(i));
        stop = true;
        reader.join();
        QCOMPARE(wrong.load(), 0);
    }
};

QTEST_GUILESS_MAIN(TestConfig)
#include "test_config.moc"
