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
    QTest::addColumn<QString>("action");
    QTest::addColumn<QJsonValue>("isSave");
    QTest::addColumn<bool>("written");
    QTest::addColumn<int>("messages"); // to the boards
    for (const char *name : {"Ink", "Air"}) {
        const int messages = name[0] == 'I' ? 4 : 6;
        QTest::addRow("%s saved", name) << "Write" << QJsonValue(true) << true << messages;
        QTest::addRow("%s tried out", name) << "Write" << QJsonValue(false) << false << messages;
        QTest::addRow("%s not said", name) << "Write" << QJsonValue() << false << messages;
        QTest::addRow("%s read", name) << "Read" << QJsonValue(true) << false << 0;
        QTest::addRow("%s no action", name) << "" << QJsonValue() << false << 0;
    }
    for (const char *name : {"Sys", "Fan"}) {
        QTest::addRow("%s written", name) << "Write" << QJsonValue(false) << true << 0;
        QTest::addRow("%s read", name) << "Get" << QJsonValue() << false << 0;
    }
    QTest::newRow("UseInfo never written") << "Write" << QJsonValue(true) << false << 0;
}

void TestParameterFiles::files()
{
    QFETCH(QString, action);
    QFETCH(QJsonValue, isSave);
    QFETCH(bool, written);
    const QString name = QString(QTest::currentDataTag()).section(' ', 0, 0);
    const QString path = "config/" + name + ".json", title = name + ".json";
    m_install.writeConfig(name, {{"Old", 1}});
    const QByteArray before = readFile(path);
    m_bridge.clearRecord();
    QJsonObject request{{"Title", title}, {"Action", action}, {"PressTime", 3}};
    if (!isSave.isNull())
        request["IsSave"] = isSave;
    const QByteArray text = QJsonDocument(request).toJson(QJsonDocument::Compact) + "\n ";

    LogCapture log;
    const Answer answer = send(text, request);
    QCOMPARE(answer.count, 1);
    QCOMPARE(readFile(path), written ? text : before);
    QCOMPARE(log.count("[func: RecvPeloraPro line:"), name == "Sys" ? 1 : 0);
    QTEST(m_bridge.count(), "messages");
    const bool hasStatus = name != "Ink" && name != "UseInfo";
    QCOMPARE(answer.own, hasStatus);
    QJsonObject expected = written ? request : QJsonObject{{"Old", 1}};
    if (hasStatus) {
        expected["Status"] = "Success";
    } else {
        expected["Title"] = title;
        if (name == "Ink")
            expected["NozzleCurrentValue"] =
                QJsonObject{{"Nozzle1_1", 0}, {"Nozzle1_3", 0}, {"Nozzle2_1", 0},
                            {"Nozzle2_3", 0}, {"Nozzle3_1", 0}, {"Nozzle3_3", 0}};
    }
    QCOMPARE(answer.object, expected);
    const QMap<QString, JsonConfig *> stores{{"Ink", inkConfig()},
                                             {"Air", airConfig()},
                                             {"Sys", sysConfig()},
                                             {"Fan", fanConfig()},
                                             {"UseInfo", useInfoConfig()}};
    const float old = stores[name]->getFloat("Old");
    QCOMPARE(old, written ? 0.0f : 1.0f); // memory follows the file
    QCOMPARE(stores[name]->getString("Status"), QString(hasStatus ? "Success" : ""));
}

void TestParameterFiles::documents_data()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("verb");
    QTest::addColumn<QString>("otherVerb");
    QTest::newRow("name") << "MachineName"
                          << "Set"
                          << "Save";
    QTest::newRow("materials") << "Materials"
                               << "Set"
                               << "Save";
    QTest::newRow("settings") << "Settings"
                              << "Save"
                              << "Set";
    QTest::newRow("styles") << "Styles"
                            << "Save"
                            << "Set";
}

void TestParameterFiles::documents()
{
    QFETCH(QString, title);
    QFETCH(QString, verb);
    QFETCH(QString, otherVerb);
    const QString path = "config/" + title + ".json";
    m_install.writeConfig(title, {{"Old", 1}});
    const QByteArray before = readFile(path);
    const QJsonObject justTitle{{"Title", title}};
    QJsonObject request{{"Title", title}, {"Action", otherVerb}, {"New", QString::fromUtf8("机器")}};
    for (const QString &other : {otherVerb, QString("Write"), QString()}) {
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
