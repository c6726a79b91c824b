// The parameter files as the client reads and writes them: file, memory, boards and answer.

#include "frame/JsonConfig.h"
#include "links/Usb2Can.h"
#include "remote/RemoteCall.h"
#include "remote/RemoteCommands.h"
#include "scripted/FakeBridge.h"
#include "support/LogCapture.h"
#include "support/TestInstall.h"

#include <QJsonDocument>
#include <QtTest>

class TestParameterFiles : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void files_data();
    void files();
    void documents_data();
    void documents();
    void textThatIsNoJson();

private:
    struct Answer {
        QJsonObject object;
        bool own = false;
        int count = 0;
    };
    Answer send(const QByteArray &text, const QJsonObject &request);
    Answer send(const QJsonObject &request) { return send(QJsonDocument(request).toJson(), request); }

    TestInstall m_install;
    FakeBridge m_bridge;
};

void TestParameterFiles::initTestCase()
{
    m_install.setPlatform({{"COM16", m_bridge.path()}});
    usb2Can()->OpenPort(16, 115200);
}

TestParameterFiles::Answer TestParameterFiles::send(const QByteArray &text, const QJsonObject &request)
{
    Answer answer;
    parameterFileCommand({request, text, [&answer](const QByteArray &payload, ReplyHead head) {
                              answer.object = QJsonDocument::fromJson(payload).object();
                              answer.own = head == ReplyHead::Own;
                              ++answer.count;
                          }});
    return answer;
}

void TestParameterFiles::files_data()
{
    QTest::addColumn<QString>("rest"); // of the request
    QTest::addColumn<bool>("written");
    QTest::addColumn<int>("messages"); // to the boards
    for (const char *name : {"Ink", "Air"}) {
        const int messages = name[0] == 'I' ? 4 : 6;
        QTest::addRow("%s saved", name) << R"("Action":"Write","IsSave":true)" << true << messages;
        QTest::addRow("%s tried out", name) << R"("Action":"Write","IsSave":false)" << false << messages;
        QTest::addRow("%s not said", name) << R"("Action":"Write")" << false << messages;
        QTest::addRow("%s read", name) << R"("Action":"Read","IsSave":true)" << false << 0;
    }
    for (const char *name : {"Sys", "Fan"}) {
        QTest::addRow("%s written", name) << R"("Action":"Write","IsSave":false)" << true << 0;
        QTest::addRow("%s read", name) << R"("Action":3)" << false << 0;
    }
    QTest::newRow("UseInfo never written") << R"("Action":"Write","IsSave":true)" << false << 0;
}

void TestParameterFiles::files()
{
    QFETCH(QString, rest);
    QFETCH(bool, written);
    const QString name = QString(QTest::currentDataTag()).section(' ', 0, 0);
    const QString path = "config/" + name + ".json";
    m_install.writeConfig(name, {{"Old", 1}});
    const QByteArray before = readFile(path);
    m_bridge.clearRecord();
    const QByteArray text = QString(R"({"Title":"%1.json","PressTime":3,%2}  )").arg(name, rest).toUtf8();
    const QJsonObject request = QJsonDocument::fromJson(text).object();

    LogCapture log;
    const Answer answer = send(text, request);
    QCOMPARE(readFile(path), written ? text : before);
    QCOMPARE(log.count("[func: RecvPeloraPro line:"), name == "Sys" ? 1 : 0);
    QTEST(m_bridge.count(), "messages");
    const bool hasStatus = name != "Ink" && name != "UseInfo";
    QVERIFY(answer.count == 1 && answer.own == hasStatus);
    QJsonObject expected = written ? request : QJsonObject{{"Old", 1}};
    expected.insert(hasStatus ? "Status" : "Title", hasStatus ? QString("Success") : name + ".json");
    if (name == "Ink") {
        QJsonObject levels;
        for (const char *tank : {"1_1", "1_3", "2_1", "2_3", "3_1", "3_3"})
            levels[QString("Nozzle") + tank] = 0;
        expected["NozzleCurrentValue"] = levels;
    }
    QCOMPARE(answer.object, expected);
    // Memory follows the file, and keeps the result.
    const QMap<QString, JsonConfig *> stores{{"Ink", inkConfig()},
                                             {"Air", airConfig()},
                                             {"Sys", sysConfig()},
                                             {"Fan", fanConfig()},
                                             {"UseInfo", useInfoConfig()}};
    QCOMPARE(stores[name]->getFloat("Old"), written ? 0.0f : 1.0f);
    QCOMPARE(stores[name]->getString("Status"), QString(hasStatus ? "Success" : ""));
}

void TestParameterFiles::documents_data()
{
    QTest::addColumn<QString>("verb");
    for (const auto &[title, verb] : {std::pair("MachineName", "Set"), std::pair("Materials", "Set"),
                                      std::pair("Settings", "Save"), std::pair("Styles", "Save")})
        QTest::newRow(title) << verb;
}

void TestParameterFiles::documents()
{
    QFETCH(QString, verb);
    const QString title = QTest::currentDataTag();
    const QString path = "config/" + title + ".json";
    m_install.writeConfig(title, {{"Old", 1}});
    const QByteArray before = readFile(path);
    const QJsonObject justTitle{{"Title", title}};
    QJsonObject request{{"Title", title}, {"New", QString::fromUtf8("机器")}};
    for (const QString &other : {QString(verb == "Set" ? "Save" : "Set"), QString("Write"), QString()}) {
        request["Action"] = other;
        QCOMPARE(send(request).object, justTitle);
        QCOMPARE(readFile(path), before);
    }
    QCOMPARE(send({{"Title", title}, {"Action", "Get"}}).object, (QJsonObject{{"Title", title}, {"Old", 1}}));
    request["Action"] = verb;
    const Answer answer = send(QJsonDocument(request).toJson(QJsonDocument::Compact), request);
    QVERIFY(answer.object == justTitle && answer.own && answer.count == 1);
    QCOMPARE(readFile(path), QJsonDocument(request).toJson()); // indented, whatever came
    QCOMPARE(send({{"Title", title}, {"Action", "Get"}}).object, request);
}

/// The dispatcher may have read the text otherwise than the file does.
void TestParameterFiles::textThatIsNoJson()
{
    m_install.writeConfig("Fan", {{"Old", 1}});
    const QByteArray before = readFile("config/Fan.json");
    const Answer answer = send(QByteArray("{\"a\"\0:1}", 8), {{"Title", "Fan.json"}, {"Action", "Write"}});
    const QString status = answer.object["Status"].toString();
    QVERIFY2(status.startsWith("Write file Error ") && status.endsWith(' '), qPrintable(status));
    QCOMPARE(answer.object["Old"].toInt(), 1);
    QCOMPARE(readFile("config/Fan.json"), before);
}

QTEST_MAIN(TestParameterFiles)
#include "test_parameter_files.moc"
