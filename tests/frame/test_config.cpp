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
private slots:
    void init() { m_install = std::make_unique<TestInstall>(); }
    void readsNumbersByPath_data();
    void readsNumbersByPath();
    void badFileKeepsTheDocument_data();
    void badFileKeepsTheDocument();
    void writesWhenTold();
    void replacesTheDocumentByBytes();
    void replacesTheDocumentByText();
    void oneObjectAFile();
    void manyThreads();

private:
    static QJsonObject onDisk(const QString &path)
    {
        return QJsonDocument::fromJson(readFile(path)).object();
    }

    std::unique_ptr<TestInstall> m_install;
};

void TestConfig::readsNumbersByPath_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<float>("value");
    const struct {
        const char *path;
        float value;
    } rows[] = {{"n", 1.5f},   {"text", 0},  {"yes", 0}, {"none", 0},    {"list", 0},
                {"absent", 0}, {"", 7},      {"g", 0},   {"g,b", 2},     {"g,c", 0},
                {"g,t", 0},    {"n,b", 0},   {"g,h", 0}, {"g,", 3},      {"absent,b", 0},
                {"g,h,i", 0},  {"a,b,c", 0}, {",b", 0},  {"-1", -1e30f}, {"big", 16777216.0f}};
    for (const auto &row : rows)
        QTest::newRow(row.path) << QString(row.path) << row.value;
}

void TestConfig::readsNumbersByPath()
{
    QFETCH(QString, path);
    writeFile("config/x.json", R"({"n":1.5,"text":"12","yes":true,"none":null,"list":[1],"":7,"-1":-1e30,
        "big":16777217,"g":{"b":2,"t":"2","":3,"h":{"i":4}}})");
    const JsonConfig config("config/x.json");
    QTEST(config.getFloat(path), "value");
}

void TestConfig::badFileKeepsTheDocument_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("line");
    QTest::newRow("empty name") << ""
                                << "";
    QTest::newRow("missing") << "config/missing.json"
                             << "";
    QTest::newRow("folder") << "../.PeloraTemp"
                            << R"([func: Init line:\d+\] open ../.PeloraTemp error .+)";
    QTest::newRow("no json") << "config/bad.json"
                             << R"([func: Init line:\d+\]json error \\r\\n)";
    QTest::newRow("empty file") << "config/empty.json"
                                << R"([func: Init line:\d+\]json error \\r\\n)";
}

void TestConfig::badFileKeepsTheDocument()
{
    QFETCH(QString, file);
    QFETCH(QString, line);
    writeFile("config/good.json", R"({"a":1,"name":"wax"})");
    writeFile("config/bad.json", R"({"a":2,)");
    writeFile("config/empty.json", "");
    JsonConfig config("config/good.json");
    LogCapture log;
    QVERIFY(!config.Init(file));
    QCOMPARE(config.getFloat("a"), 1.0f);
    QCOMPARE(config.getString("name"), QString("wax"));
    if (line.isEmpty())
        QCOMPARE(log.text(), QString());
    else
        QVERIFY2(QRegularExpression("^\"\\" + line + "\"$").match(log.text()).hasMatch(),
                 qPrintable(log.text()));
}

void TestConfig::writesWhenTold()
{
    const QString path = "config/x.json";
    JsonConfig config;
    QVERIFY(!config.Init(path)); // not there yet, but now its file
    config.setValue("a", 1);
    QVERIFY(!QFile::exists(path));
    config.setValueSync("b", "二");
    QCOMPARE(readFile(path), QByteArray("{\n    \"a\": 1,\n    \"b\": \"二\"\n}\n"));
    QCOMPARE(config.getValue("a"), QJsonValue(1));
    QVERIFY(config.getValue("c").isUndefined());
    QCOMPARE(JsonConfig(path).object(), config.object());

    writeFile(path, R"({"a":5})");
    QVERIFY(config.Init(path)); // a second time replaces all
    QCOMPARE(config.object(), (QJsonObject{{"a", 5}}));

    QDir("config").removeRecursively(); // a write that fails is silent and memory goes on
    config.setValueSync("a", 6);
    QCOMPARE(config.getFloat("a"), 6.0f);
}

void TestConfig::replacesTheDocumentByBytes()
{
    writeFile("config/x.json", R"({"old":1})");
    writeFile("config/other.json", "");
    JsonConfig config("config/x.json");
    LogCapture log;
    for (const QByteArray &bad :
         {QByteArray(), QByteArray("{\"a\":"), QByteArray("\0{}", 3), QByteArray("{} x")})
        QVERIFY(!config.syncFile(bad.constData(), bad.size(), "config/x.json"));
    QVERIFY(!config.syncFile(nullptr, 0, "config/x.json"));
    QVERIFY(!config.syncFile("{}", -1, "config/x.json"));
    QCOMPARE(log.count("json error \\r\\n"), 6);
    QCOMPARE(config.getFloat("old"), 1.0f);
    QCOMPARE(readFile("config/x.json"), QByteArray(R"({"old":1})"));

    // Formatting and key order are the sender's, and what follows a zero byte is written but not read.
    const QByteArray sent("{ \"z\":1,\"a\" :2}\0{rest", 21);
    QVERIFY(config.syncFile(sent.constData(), sent.size(), "config/other.json"));
    QCOMPARE(config.object(), (QJsonObject{{"z", 1}, {"a", 2}}));
    QCOMPARE(readFile("config/other.json"), sent);
    config.setValueSync("b", 3); // the store's own file stays the one it was read from
    QCOMPARE(onDisk("config/x.json"), (QJsonObject{{"z", 1}, {"a", 2}, {"b", 3}}));

    // Bytes without a zero at their end are not read past their length.
    const QByteArray whole("{\"a\":1}x");
    QVERIFY(config.syncFile(whole.constData(), 7, "config/x.json"));
    QCOMPARE(readFile("config/x.json"), whole.left(7));
}

void TestConfig::replacesTheDocumentByText()
{
    writeFile("config/x.json", R"({"old":1})");
    JsonConfig config("config/x.json");
    LogCapture log;
    QJsonParseError error;
    QJsonDocument::fromJson("{\"a\"", &error);
    config.syncFile(QString("{\"a\""));
    QCOMPARE(log.count("json error \\r\\n" + error.errorString()), 1);
    QCOMPARE(readFile("config/x.json"), QByteArray(R"({"old":1})"));
    config.syncFile(QString("{\"名\" : 2}"));
    QCOMPARE(config.getFloat("名"), 2.0f);
    QCOMPARE(readFile("config/x.json"), QByteArray("{\"名\" : 2}"));
}

void TestConfig::oneObjectAFile()
{
    m_install->writeConfig("Sys", {{"StartLayer", 3}});
    m_install->writeConfig("Ink", {{"PressTime", 4}});
    m_install->writeConfig("Platform", {{"COM5", "x"}});
    QCOMPARE(sysConfig()->getFloat("StartLayer"), 3.0f);
    QCOMPARE(inkConfig()->getFloat("PressTime"), 4.0f);
    QCOMPARE(inkConfig()->getFloat("StartLayer"), 0.0f);
    QCOMPARE(platformConfig()->getString("COM5"), QString("x"));
    QCOMPARE(sysConfig(), sysConfig());
}

void TestConfig::manyThreads()
{
    JsonConfig config("config/Sys.json");
    std::atomic<bool> stop{false};
    std::atomic<int> wrong{0};
    std::vector<std::thread> readers;
    for (int i = 0; i < 3; ++i) {
        readers.emplace_back([&] {
            while (!stop) {
                const QJsonObject object = config.object();
                wrong += object.value("a") != object.value("b");
                wrong += config.getFloat("a") < 0;
            }
        });
    }
    for (int i = 0; i < 200; ++i) {
        const QByteArray text = QString(R"({"a":%1,"b":%1})").arg(i).toUtf8();
        config.syncFile(text.constData(), text.size(), "config/Sys.json");
    }
    stop = true;
    for (std::thread &reader : readers)
        reader.join();
    QCOMPARE(wrong.load(), 0);
}

QTEST_GUILESS_MAIN(TestConfig)
#include "test_config.moc"
