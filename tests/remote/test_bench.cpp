// What the client's service bench does to the head boards and the machine's boards, and what it answers.

#include "engine/JobRig.h"

#include "printdata/SliceToImage.h"
#include "remote/RemoteCall.h"
#include "remote/RemoteCommands.h"
#include "support/LogCapture.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QtTest>

#include <atomic>

namespace
{
struct Reply {
    QByteArray payload;
    ReplyHead head;

    QJsonObject object() const { return QJsonDocument::fromJson(payload).object(); }
};

QJsonObject object(const QByteArray &inner)
{
    return QJsonDocument::fromJson('{' + inner + '}').object();
}
} // namespace

class TestBench : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void commands_data();
    void commands();
    void waveform();
    void support();
    void moveWhileHoming();
    void normValues();
    void numbersAtTheirLimits();

private:
    QVector<Reply> send(const QJsonObject &request, void (*command)(const RemoteCall &) = deviceCommand);
    /// What the boards were told since the last look, polls and positions left out.
    QString boardCalls();
    /// "<masks set> of <chains>: <the first rows that stay on, of chain 2>" since the last look.
    QString jets();
    QString hibCalls(const char *name = "") { return m_rig.hibCalls(name).join(' ').remove(m_maskCount); }

    const QRegularExpression m_maskCount{" ?masks=.*"};
    JobRig m_rig;
    decltype(&fakeHibTakeMasks) m_takeMasks = nullptr;
};

void TestBench::initTestCase()
{
    QVERIFY(m_rig.loadModel() && m_rig.slice(7, 9));
    QLibrary library(QDir::current().filePath("hibApiDll64"));
    m_takeMasks = decltype(m_takeMasks)(library.resolve("fakeHibTakeMasks"));
}

void TestBench::init()
{
    m_rig.reset();
    m_rig.hibSet(3, 70, 100);
    m_rig.bridge.setBytes(2, 0x70, {}); // at rest
    m_rig.bridge.setBytes(3, 0x50, {}); // not feeding
    m_rig.bridge.clearRecord();
    m_takeMasks();
}

QVector<Reply> TestBench::send(const QJsonObject &request, void (*command)(const RemoteCall &))
{
    const QByteArray text = QJsonDocument(request).toJson(QJsonDocument::Compact) + ' ';
    QVector<Reply> replies;
    command({request, text, [&replies](const QByteArray &payload, ReplyHead head) {
                 replies.append({payload, head});
             }});
    return replies;
}

QString TestBench::boardCalls()
{
    QStringList calls;
    for (const BoardRequest &request : m_rig.bridge.requests()) {
        if (!QByteArray("\x50\x70\x82\x81\x84\x90").contains(char(request.command())))
            calls << QString("%1:%2").arg(request.board).arg(QString(request.data.toHex()));
    }
    m_rig.bridge.clearRecord();
    return calls.join(' ');
}

QString TestBench::jets()
{
    int count = 0;
    QMap<QString, QMap<int, bool>> chains;
    for (const QString &mask : QString(m_takeMasks()).split(' ', Qt::SkipEmptyParts)) {
        ++count;
        chains[mask.section(':', 0, 0)][mask.section(':', 1).section('=', 0, 0).toInt()] = mask.endsWith('1');
    }
    QStringList rows;
    for (const int row : chains.value("2").keys(true).mid(0, 9))
        rows << QString::number(row);
    return QString("%1 of %2: %3").arg(count).arg(chains.keys().join("")).arg(rows.join(' '));
}

/// What a request makes of heads, boards, jets and pictures; it is answered with itself.
void TestBench::commands_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("calls");
    QTest::addColumn<QString>("more"); // what the jets are left as, or the picture's first bytes
    const auto row = [](const QByteArray &json, const QString &calls, const QString &more = "0 of : ") {
        QTest::newRow(json) << json << calls << more;
    };
    row(R"("nHibChainNum":2,"Hz":1000,"Jets":"0x01")", "hibAutofireStart(2,1000,0,1,0)", "4 of 2: 17 49");
    row(R"("nHibChainNum":3,"Hz":0.5)", "hibAutofireStart(3,0.5,0,1,0)");
    row(R"("nHibChainNum":2,"Jets":"1")", "hibAutofireStop(2)", "880 of 1: ");
    row(R"("nHibChainNum":2,"Hz":-1,"Jets":"1")", "");
    row(R"("nHibChainNum":9,"Row":1e300,"Hz":1e300,"Jets":"11")", "hibAutofireStart(9,3.40282e+38,0,1,0)");

    row(R"("Device":"Valve","Color":"Struct","Num":1)", "3:4101000000000000");
    row(R"("Device":"Valve","Color":"Support","Num":2)", "3:4000010000000000");
    row(R"("Device":"Valve","Color":"Support","Num":257)", "");
    row(R"("Device":"Valve","Color":"Blue","Num":1)", "");
    row(R"("Device":"Nozzle","Color":"Struct","Num":3)", "3:4300000100000000");
    row(R"("Device":"Nozzle","Color":"Support","Num":1)", "3:4201000000000000");
    row(R"("Device":"Nozzle","Color":"Support","Num":-1e300)", "");

    for (const auto &[graph, picture] :
         {std::pair(R"("Dot","Color":"Sup","DotSpace":4)", "17,0"),
          std::pair(R"("Dot","DotSpace":2)", "0,85"), std::pair(R"("Dot","DotSpace":-1e300)", "0,1"),
          std::pair(R"("Line","Color":"Sup")", "255,0"), std::pair(R"("Line","Color":"Str")", "0,255"),
          std::pair(R"("Image","Layer":7)", "17,34"), std::pair(R"("None")", "17,34")})
        row(R"("Device":"Print","Waveform1":70,"Waveform2":71.5,"Waveform3":70,"StartPos":7,"YOffset1":1,"Graph":)" +
                QByteArray(graph),
            "hibAdjustWaveformVoltage(2,1,1.5) hibConfigPage(1,7,1,64,0) hibConfigPage(2,7,0,64,0) "
            "hibConfigPage(3,7,0,64,0) 2:8300000000000000",
            picture);

    const QString start = "hibAutofireStart(%1,2000,0,1,5)";
    const QString all = start.arg(1) + ' ' + start.arg(2) + ' ' + start.arg(3);
    const auto dropMass = [&row](const QByteArray &json, const QString &calls,
                                 const QString &left = "0 of : ") {
        row(R"("Device":"DropMass","Hz":2000,"Cnt":5,"Nozzle":)" + json, calls, left);
    };
    dropMass(R"("Stop")", "hibAutofireStop(1) hibAutofireStop(2) hibAutofireStop(3)");
    dropMass(R"("Waveform","Waveform1":70,"Waveform2":70,"Waveform3":1e300)",
             "hibAdjustWaveformVoltage(3,1,3.40282e+38)");
    dropMass(R"("All")", all, "2640 of 123: 1 2 3 4 5 6 7 8 9");
    dropMass(R"("All","Row":3)", all, "2805 of 123: 4 20 36 52 68 84 100 116 132");
    dropMass(R"("All","Row":1e300)", all, "2640 of 123: ");
    dropMass(R"("Support","Head":0)", all, "3960 of 123: 1 2 5 6 9 10 13 14 17");
    dropMass(R"("Struct","Head":2)", start.arg(2), "3960 of 123: 3 4 7 8 11 12 15 16 19");
    dropMass(R"("Struct","Head":4)", "", "3960 of 123: 3 4 7 8 11 12 15 16 19");
    dropMass(R"("Nobody")", "");
}

void TestBench::commands()
{
    QFETCH(QByteArray, json);
    const QJsonObject request = object(json);
    const QString device = request["Device"].toString();
    const QVector<Reply> replies = send(request, device.isEmpty() ? injectCommand : deviceCommand);
    QVERIFY(replies.size() == 1 && replies[0].head == ReplyHead::Echo);
    QStringList calls;
    for (const QString &call : m_rig.hibCalls()) {
        if (call.contains(QRegularExpression("Autofire|Adjust|Page\\(")))
            calls << call;
    }
    calls << boardCalls();
    calls.removeAll("");
    QTEST(calls.join(' '), "calls");
    QTEST(device == "Print" ? QString(m_rig.hibPicture()).section(',', 6, 7) : jets(), "more");
    // Answered with the text as it came, or with what came of it.
    QJsonObject expected = request;
    if (device == "Valve" && request["Color"] != QJsonValue("Blue"))
        expected["Result"] = calls.isEmpty();
    QCOMPARE(replies[0].object(), expected);
    QCOMPARE(replies[0].payload.endsWith("} "), device == "Nozzle");
}

void TestBench::waveform()
{
    const auto reply = [this](const QJsonObject &request) {
        const QVector<Reply> replies = send(request, waveFormCommand);
        return replies.size() == 1 && replies[0].head == ReplyHead::Echo ? replies[0].object()
                                                                         : QJsonObject();
    };
    const QJsonObject got = reply({{"nHibChainNum", 2}, {"Action", "Get"}});
    QVERIFY(got["WaveKnotCount"] == 3 && got["WaveKnots"].toArray().size() == 3);
    QCOMPARE(got["WaveKnots"].toArray()[1].toObject(),
             object(R"("timeUs":1,"voltageV":70,"drive":11,"connect":21,"scalable":true,"reference":false,
                    "normRegion":31)"));
    // A shorter array leaves the knots behind it, and drive and connect are the library's.
    QCOMPARE(reply(object(R"("Action":"Set","nHibChainNum":2,"WaveKnots":[{"timeUs":2.5,"voltageV":1e300,
                          "drive":99,"reference":true,"normRegion":-7},"no knot"])")),
             (QJsonObject{{"WaveKnotCount", 3}, {"SetWaveform", 0}}));
    QCOMPARE(hibCalls("hibSetWaveform"), QString("hibSetWaveform(2,1, 2.5,3.40282e+38,10,20,0,1,-7"
                                                 " 0,0,11,21,0,0,0 2,-5,12,22,1,0,32)"));
    // Results of the library, and a waveform that could not be read.
    for (const char *function : {"hibSetWaveform", "hibGetWaveform"}) {
        m_rig.hibFail(function, 6);
        QCOMPARE(reply({{"Action", "Set"}})["SetWaveform"].toInt(), 6);
        QCOMPARE(hibCalls("hibSetWaveform").isEmpty(), qstrcmp(function, "hibGetWaveform") == 0);
        m_rig.hibFail(function, 0);
    }
    QVERIFY(send({{"Action", "Look"}}, waveFormCommand).isEmpty());
    for (const int count : {2, 0, -1, 1000000000}) {
        m_rig.hibSet(count, 0, 0);
        QCOMPARE(reply({{"Action", "Get"}}), (QJsonObject{{"WaveKnotCount", count}}));
    }
}

void TestBench::support()
{
    m_rig.bridge.setValue(2, 0x81, 12000);
    m_rig.bridge.setValue(2, 0x84, 80000);
    m_rig.bridge.setValue(2, 0x82, 345);
    const QVector<Reply> replies = send({{"Device", "Support"}, {"Axis", "none"}});
    QVERIFY(replies.size() == 1 && replies[0].head == ReplyHead::Own);
    QCOMPARE(replies[0].object(), object(R"("Title":"Device","Device":"Support","Y":12000,"X":345,"Z":80000,
                                         "Hib":100,"LevelSpeed":500)"));
    QVERIFY2(m_rig.install.log("ydata.csv").contains("12000,"), m_rig.install.log("ydata.csv"));
    m_rig.hibFail("hibGetEncoderPos", 2);
    QCOMPARE(send({{"Device", "Support"}})[0].object()["Hib"].toInt(), -1);
    m_rig.hibFail("hibGetEncoderPos", 0);

    const QMap<QByteArray, QString> moves{{R"("X","Pos":5000)", "2:8600000088130000"},
                                          {R"("X","Pos":1e300)", "2:86000000ffffff7f"},
                                          {R"("Y","Pos":12000.4)", "2:60000000e02e0000"},
                                          {R"("Y","Pos":-1e300)", "2:6000000000000080"},
                                          {R"("Z","Pos":80000)", "2:6500000080380100"},
                                          {R"("Z")", "2:6300000000000000"},
                                          {R"("W")", ""}};
    for (auto move = moves.begin(); move != moves.end(); ++move) {
        boardCalls();
        send(object(R"("Device":"Support","Axis":)" + move.key()));
        QCOMPARE(boardCalls(), *move);
    }
    // Homing of X and Y goes on behind the answer; the head boards are set up anew once X is home.
    send({{"Device", "Support"}, {"Axis", "Y"}});
    QVERIFY(waitUntil([this] { return m_rig.bridge.count(2, 0x80) == 1; }));
    m_rig.hibCalls();
    send({{"Device", "Support"}, {"Axis", "X"}, {"Pos", 0}});
    QStringList calls;
    QVERIFY(waitUntil([&] { return (calls += m_rig.hibCalls()).contains("hibSetEncoderPos(1,1)"); }));
    QCOMPARE(calls.filter("hibSetupAllDotclocks(3,0,").size(), 1);
    QVERIFY(
        boardCalls().contains("2:6200000000000000 2:8000000000000000 2:8e00000090010000 2:8500000000000000"));
}

/// A move that comes on the way home is made once the boards count from there, the last one if several.
void TestBench::moveWhileHoming()
{
    constexpr int setSpeed = 0x8e, move = 0x86;
    const auto homeThenMove = [this] {
        m_rig.bridge.setBytes(2, 0x70, {{3, 1}}); // X moves
        send({{"Device", "Support"}, {"Axis", "X"}, {"Pos", 0}});
        for (const int position : {7000, 9000})
            send({{"Device", "Support"}, {"Axis", "X"}, {"Pos", position}});
        return waitUntil([this] { return m_rig.bridge.count(2, setSpeed) == 1; });
    };
    send({{"Device", "Support"}, {"Axis", "X"}, {"Pos", 100}});
    QVERIFY(waitUntil([this] { return m_rig.bridge.count(2, move) == 1; })); // no homing is left from before
    m_rig.hibCalls();
    m_rig.bridge.clearRecord();
    std::atomic<bool> areBoardsSet{false};
    m_rig.bridge.setHandler(2, move, [&](const BoardRequest &request) {
        areBoardsSet = m_rig.hibCalls().contains("hibSetEncoderPos(1,1)");
        return request.data;
    });
    QVERIFY(homeThenMove());
    QCOMPARE(m_rig.bridge.count(2, move), 0);
    m_rig.bridge.setBytes(2, 0x70, {});
    QVERIFY(waitUntil([this] { return m_rig.bridge.count(2, move) == 1; }));
    QVERIFY(boardCalls().endsWith("2:8600000028230000"));
    QVERIFY(waitUntil([&] { return areBoardsSet.load(); }));

    LogCapture log;
    QVERIFY(homeThenMove());
    const auto gaveUp = [&log] { return log.count("x is not home, not moved to 9000") == 1; };
    QVERIFY(waitUntil(gaveUp, 60000)); // six thousand looks at the axis
    QCOMPARE(m_rig.bridge.count(2, move), 0);
    m_rig.bridge.setBytes(2, 0x70, {});
}

void TestBench::normValues()
{
    const auto status = [this](const QByteArray &json) {
        const QVector<Reply> replies = send(object(R"("Device":"DropVelocity","HibChainNum":2,)" + json));
        return replies.value(0).head == ReplyHead::Own ? replies[0].object()["Status"].toInt(-99) : -99;
    };
    const QByteArray factory = R"("SupOffset":5,"normFactory":true)";
    QCOMPARE(status(R"("SupOffset":10,"StrOffset":-1e300)"), 0);
    QCOMPARE(hibCalls(), QString("hibGetHeadMisc(2,1) hibShowHeadHcd(2,1,wave1) hibGetNormVals(2,1) "
                                 "hibGetHeadMisc(2,1) hibShowHeadHcd(2,1,wave1) hibGetNormVals(2,1) "
                                 "hibLoadNormVals(2,1,-110,11,127) hibShowHeadHcd(2,1,wave1) "
                                 "hibGetHeadMisc(2,1) hibShowHeadHcd(2,1,wave2) hibGetNormVals(2,2) "
                                 "hibGetHeadMisc(2,1) hibShowHeadHcd(2,1,wave2) hibGetNormVals(2,2) "
                                 "hibLoadNormVals(2,2,-128,-128,-128) hibShowHeadHcd(2,1,wave2)"));
    QCOMPARE(readFile("___A_1_wave1_original.norm"), QByteArray("-120\n1\n120\n"));
    QCOMPARE(readFile("___A_1_wave1_edited.norm"), QByteArray("-110\n11\n127\n"));
    // However often they were edited, the values found at first come back.
    QCOMPARE(status(R"("SupOffset":5)"), 0);
    m_rig.hibCalls();
    QCOMPARE(status(factory), 0);
    QCOMPARE(hibCalls("hibLoad"), QString("hibLoadNormVals(2,1,-120,1,120) hibLoadNormVals(2,2,-120,2,120)"));

    LogCapture log;
    for (const QByteArray &damaged :
         {QByteArray("1\n2\n"), QByteArray("1\n2\n128\n"), QByteArray(100, '1')}) {
        writeFile("___A_1_wave1_original.norm", damaged);
        QCOMPARE(status(factory), -1);
    }
    QCOMPARE(log.count("does not hold 3 norm values"), 3);
    for (const char *function : {"hibGetHeadMisc", "hibGetNormVals", "hibLoadNormVals"}) {
        m_rig.hibFail(function, 4);
        QCOMPARE(status(R"("SupOffset":0)"), 4);
        QCOMPARE(log.count(QString("[func: testMethodforAlteringNormValues ")), log.text().count('\n') + 1);
        QVERIFY(log.count(QString("%1() failed").arg(function)) == 1);
        m_rig.hibFail(function, 0);
    }
}

/// Whatever the numbers are, the library and the boards judge them, and the bench answers.
void TestBench::numbersAtTheirLimits()
{
    for (const char *value :
         {"1e300", "-1e300", "2147483647", "-2147483648", "0.25", "\"7\"", "[1]", "null"}) {
        QByteArray json = R"("Nozzle":"All","Graph":"Dot","Action":"Set")";
        for (const char *key : {"nHibChainNum", "Row", "Hz", "Cnt", "Head", "Num", "StartPos", "YOffset1",
                                "DotSpace", "Layer", "HibChainNum", "SupOffset", "Waveform1", "Jets", "Axis"})
            json += QByteArray(",\"") + key + "\":" + value;
        QJsonObject request = object(json);
        QCOMPARE(send(request, injectCommand).size(), 1);
        QCOMPARE(send(request, waveFormCommand).size(), 1);
        for (const char *device : {"Print", "DropMass", "Valve", "Support", "DropVelocity"}) {
            request["Device"] = device;
            QCOMPARE(send(request).size(), 1);
        }
    }
    QVERIFY(send({{"Device", "Lamp"}}).isEmpty() && send({{"Device", "Nozzle"}, {"Color", 1}}).isEmpty());
}

QTEST_MAIN(TestBench)
#include "test_bench.moc"
