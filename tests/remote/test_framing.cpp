// Frames and uploads over a real loopback socket: good ones, cut ones, lying ones; and the service's thread.

#include "frame/SqliteUtil.h"
#include "printdata/PrintQueue.h"
#include "printdata/QueueNotice.h"
#include "printdata/Samples.h"
#include "remote/CTcpServer.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QTcpServer>
#include <QTcpSocket>
#include <QtTest>

#include <csignal>
#include <sys/resource.h>
#include <unistd.h>
#include <zlib.h>

namespace
{
const QByteArray beat = R"({"Title":"HeartBeat","Action":"Reply"})";

QByteArray frame(const QByteArray &payload, int command = 0xFF, int sub = 0xFF, qint64 length = -1)
{
    const QByteArray head =
        with32(QByteArray("\x12\x34....", 6), 2, quint32(length < 0 ? payload.size() : length));
    return head + char(command) + char(sub) + payload;
}
QByteArray block(const QByteArray &payload, bool goodSum = true, qint64 length = -1)
{
    const quint32 sum =
        quint32(crc32(0, reinterpret_cast<const Bytef *>(payload.constData()), uint(payload.size())));
    QByteArray head = with32(QByteArray("\xA5\x5A....NUMB....", 14), 10, goodSum ? sum : ~sum);
    return with32(head, 2, quint32(length < 0 ? payload.size() : length)) + payload;
}
QByteArray announce(const QByteArray &name, quint64 size)
{
    return frame(with64(QByteArray(8, 0), 0, size) + name, 2, 0);
}
const QByteArray finish = frame({}, 2, 1);
const QByteArray written = QByteArray::fromHex("5AA506000000") + "NUMB" + QByteArray(2, 0);
const QByteArray refused = QByteArray::fromHex("5AA506000000") + "NUMB" + QByteArray("\1\0", 2);
QByteArray opened(bool good)
{
    return QByteArray::fromHex("5AA504000000020000") + char(!good);
}
const QByteArray finished = QByteArray::fromHex("5AA5020000000201");
const QByteArray beatReply = "\n    \"ProVer\": \"1.0.0\",";

/// The protocol on one thread with both ends of a connection.
struct Wire : NetWorkProtocol {
    Wire()
    {
        listener.listen(QHostAddress::LocalHost);
        client.connectToHost(QHostAddress::LocalHost, listener.serverPort());
        waitUntil([&] { return listener.hasPendingConnections(); });
        m_client->socket = listener.nextPendingConnection();
    }
    /// Each part as a segment of its own; what came back.
    QByteArray send(const QByteArrayList &parts)
    {
        for (const QByteArray &part : parts)
            takeBytes(m_client, part);
        m_client->socket->write("|");
        QByteArray all;
        waitUntil([&] { return (all += client.readAll()).endsWith('|'); });
        return all.chopped(1);
    }
    QByteArray &buffer() { return m_client->buffer; }
    QTcpServer listener;
    QTcpSocket client;
};

/// Files end at diskBytes, as on a full disk.
constexpr int diskBytes = 1 << 20;
struct FileLimit {
    FileLimit()
    {
        signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &old);
        const rlimit limit{diskBytes, old.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileLimit() { setrlimit(RLIMIT_FSIZE, &old); }
    rlimit old;
};

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr int growthLimitKiB = 1 << 20; // these keep what was freed
#else
constexpr int growthLimitKiB = 2048;
#endif
qint64 residentKiB()
{
    return readFile("/proc/self/statm").split(' ').at(1).toLongLong() * sysconf(_SC_PAGESIZE) / 1024;
}
} // namespace

class TestFraming : public QObject
{
    Q_OBJECT
    std::unique_ptr<TestInstall> m_install;

private slots:
    void initTestCase()
    {
        m_install = std::make_unique<TestInstall>();
        m_install->setPlatform({{"RemotePort", 0}});
        createSchema(sqliteUtil());
    }

    void cutAnywhere()
    {
        const struct {
            QByteArray frame;
            QByteArray reply;
            bool lostAtCommand; // a frame that ends before its two command bytes counts as one with command 0
        } rows[] = {{frame(beat), beatReply, true},
                    {announce("cut.tzl", 0), opened(true).chopped(1), true},
                    {block("0123456789"), written, false},
                    {block("0123456789", false), refused, false}};
        for (const auto &row : rows) {
            for (int at = 0; at <= row.frame.size(); ++at) {
                Wire wire;
                const bool lost = row.lostAtCommand && (at == 6 || at == 7);
                const QByteArray reply = wire.send({row.frame.left(at), row.frame.mid(at)});
                QVERIFY2(lost ? reply.isEmpty() : reply.contains(row.reply), qPrintable(QString::number(at)));
                wire.buffer().clear();
                QVERIFY(wire.send({frame(beat)}).contains(beatReply)); // and it goes on
            }
        }
        Wire wire;
        QByteArrayList bytes;
        for (char byte : block("0123456789"))
            bytes << QByteArray(1, byte);
        QCOMPARE(wire.send(bytes), written);
    }

    void replies_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QByteArray>("head");
        QTest::addColumn<QByteArray>("text"); // of the reply as compact JSON; empty: none
        const QByteArray own = "\x5A\xA5", echo = "\x12\x34";
        const QByteArray reply = R"({"ProVer":"1.0.0","Title":"HeartBeat"})";
        const QByteArray wrong = R"({"Error":"parse error","Title":"PrintQueue"})";
        const QByteArray deep = QByteArray(10000, '[') + QByteArray(10000, ']');
        const QByteArray odd = R"({"Action":[1],"Title":{"a":null}})";
        QTest::newRow("good") << frame(beat) << echo << reply;
        QTest::newRow("two in a segment") << frame(beat) + frame("{}") << echo << reply;
        QTest::newRow("zero byte in the length") << frame(beat + '\0' + "rest") << echo << reply;
        QTest::newRow("length 0") << frame(beat, 255, 255, 0) << echo << reply;
        QTest::newRow("length 1") << frame(beat, 255, 255, 1) << echo << reply;
        QTest::newRow("length 2^31") << frame(beat, 255, 255, 1LL << 31) << echo << QByteArray();
        QTest::newRow("length 2^32-1") << frame(beat, 255, 255, 0xFFFFFFFF) << echo << QByteArray();
        QTest::newRow("block of 2^32-1") << block("abc", true, 0xFFFFFFFF) << own << QByteArray();
        QTest::newRow("no JSON") << frame("{\"Title\"") << own << wrong;
        QTest::newRow("number") << frame("5") << own << wrong;
        QTest::newRow("10,000 deep") << frame(deep) << own << wrong;
        QTest::newRow("array") << frame("[1]") << echo << QByteArray("{}");
        QTest::newRow("wrong types") << frame(odd) << echo << odd;
        QTest::newRow("no such title")
            << frame(R"({"Title":"Nobody"})") << echo << QByteArray(R"({"Title":"Nobody"})");
        QTest::newRow("other action") << frame(R"({"Title":"HeartBeat"})") << echo << QByteArray();
        QTest::newRow("machine without action") << frame(R"({"Title":"Machine"})") << echo << QByteArray();
        QTest::newRow("command 0") << frame("x", 0, 0) << echo << QByteArray();
        QTest::newRow("other sub-command") << frame("x", 2, 9) << echo << QByteArray();
    }

    void replies()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QByteArray, head);
        QFETCH(QByteArray, text);
        Wire wire;
        const QByteArray reply = wire.send({bytes});
        QCOMPARE(QJsonDocument::fromJson(reply.mid(8)).toJson(QJsonDocument::Compact), text);
        if (!text.isEmpty())
            QCOMPARE(reply.left(8), with32(head + "....\xFF\xFF", 2, quint32(reply.size() - 8)));
    }

    void tooMuchIsDropped()
    {
        LogCapture log;
        Wire wire;
        const QByteArray part = block(QByteArray(64 << 20, 'x'), true, 0xFFFFFFFF);
        for (int i = 0; i < 4; ++i)
            wire.send({part});
        QCOMPARE(log.count("dropped"), 1);
        QVERIFY(wire.send({frame(beat)}).contains(beatReply));
    }

    void uploadNames()
    {
        QVector<QPair<QByteArray, QString>> rows{
            {QByteArray("a \"b\".tzl\0zz", 12), "model/a \"b\".tzl"},
            {"蜡.tzl", "model/蜡.tzl"}, // no end mark
            {"\xFF\xFE.tzl", QString::fromUtf8("model/\uFFFD\uFFFD.tzl")},
            {"inner", "model/target"},
            {QByteArray(4000, 'n'), ""}}; // refused, as all that follow
        for (const char *name :
             {"", ".", "..", "../out", "sub/../../out", "/out", "link", "linked/out", "loose", "sub"})
            rows.append(qMakePair(QByteArray(name), QString()));
        for (const auto &[name, file] : rows) {
            QDir("model").removeRecursively();
            QDir().mkpath("model/sub");
            writeFile("out", "untouched");
            writeFile("model/target", "old");
            const char *links[][2] = {
                {"../out", "link"}, {"..", "linked"}, {"../nowhere", "loose"}, {"target", "inner"}};
            for (const auto &link : links)
                QFile::link(link[0], QString("model/") + link[1]);
            Wire wire;
            QVERIFY2(wire.send({announce(name, 3)}) == opened(!file.isEmpty()), name);
            QCOMPARE(wire.send({block("new"), finish}), written + finished);
            QCOMPARE(readFile("out"), QByteArray("untouched"));
            QVERIFY(!QFile::exists("nowhere") && QFile::exists("model/sub"));
            QVERIFY2(file.isEmpty() || readFile(file) == "new", name);
        }
    }

    void uploadSteps()
    {
        const QByteArray two = announce("u.tzl", 2), a = block("a"), b = block("b"), bad = block("b", false);
        const QByteArray full = block(QByteArray(2 * diskBytes, 'f'));
        const struct {
            const char *what;
            QByteArrayList steps;
            QByteArray content;  // of the file
            bool queued = false; // else there is no file
        } rows[] = {{"good", {two, a, b, finish}, "ab", true},
                    {"empty", {announce("u.tzl", 0), finish}, "", true},
                    {"bad sum, again", {two, a, bad, b, finish}, "ab", true},
                    {"announced twice", {two, a, two, a, b, finish}, "ab", true},
                    {"block repeated", {two, a, a, b, finish}, ""},
                    {"size lies", {announce("u.tzl", ~0ULL), a, finish}, ""},
                    {"disk full", {announce("u.tzl", 2 * diskBytes), full, finish}, ""},
                    {"never announced", {a, b, finish}, ""},
                    {"finished twice", {two, a, finish, b, finish}, ""}};
        const FileLimit limit;
        for (const auto &row : rows) {
            removeModel("u.tzl");
            takeQueueChanged();
            Wire wire;
            for (const QByteArray &step : row.steps)
                QVERIFY2(!wire.send({step}).isEmpty(), row.what);
            QVERIFY2(readFile("model/u.tzl") == row.content, row.what);
            QVERIFY2(QFile::exists("model/u.tzl") == row.queued, row.what);
            QVERIFY2((firstWaitingModel() == "u.tzl") == row.queued, row.what);
            QVERIFY2(takeQueueChanged() == row.queued, row.what);
        }
    }

    void profiles()
    {
        Wire wire;
        QByteArray record(256, 0);
        record[0] = 1;
        for (int at = 1; at < 256; ++at)
            record[at] = char(at);
        const QByteArray reply = wire.send({frame(record, 0xAA, 3)});
        QCOMPARE(reply.left(9), QByteArray::fromHex("1234 00010000 AA03 00"));
        const QByteArray stored = wire.send({frame("\1", 0xAA, 2)}).mid(8);
        QCOMPARE(stored.size(), 256);
        QCOMPARE(stored.left(20), record.left(10) + QByteArray(10, 0));
        for (int at = 20; at < 100; at += 10) // boards and commands are the program's own
            QCOMPARE(stored.mid(at + 2, 8), record.mid(at + 2, 7) + '\0');
        QCOMPARE(stored.mid(20, 2) + stored.mid(90, 2), QByteArray::fromHex("0337 0572"));
        for (const char number : {'\3', '\4', '\xFF'}) // measured values and rows that are none
            wire.send({frame(number + record.mid(1), 0xAA, 3)});
        QCOMPARE(wire.send({frame("\4", 0xAA, 2)}).mid(8), QByteArray(256, 0));
        QCOMPARE(wire.send({frame("\1", 0xAA, 2)}).mid(8), stored);
        QCOMPARE(wire.send({frame("\3", 0xAA, 2)}).mid(28, 80).count('\x29'), 0);
        QCOMPARE(wire.send({frame({}, 0xAA, 1)}),
                 QByteArray::fromHex("5AA5 09000000 FFFF") + QByteArray(9, 0));
    }

    void serviceTakesTheNewestClient()
    {
        LogCapture log;
        CTcpServer server;
        server.start();
        QVERIFY(waitUntil([&] { return server.port() != 0; }));
        const auto ask = [](QTcpSocket &socket, const QByteArray &bytes, const QByteArray &end) {
            socket.write(bytes);
            QByteArray all;
            return waitUntil([&] { return (all += socket.readAll()).endsWith(end); });
        };
        qint64 afterTen = 0;
        for (int i = 0; i < 1000; ++i) {
            QTcpSocket client;
            client.connectToHost(QHostAddress::LocalHost, server.port());
            QVERIFY(ask(client, frame(beat), "}\n"));
            if (i == 10)
                afterTen = residentKiB();
            log.clear();
        }
        QVERIFY(residentKiB() - afterTen < growthLimitKiB);
        QTcpSocket first, second;
        first.connectToHost(QHostAddress::LocalHost, server.port());
        QVERIFY(ask(first, announce("u.tzl", 2), opened(true)) && ask(first, block("1"), written));
        second.connectToHost(QHostAddress::LocalHost, server.port());
        QVERIFY(ask(second, block("2"), written) && ask(second, finish, finished)); // the upload went on
        QVERIFY(waitUntil([&] { return first.state() == QAbstractSocket::UnconnectedState; }));
        QCOMPARE(readFile("model/u.tzl"), QByteArray("12"));
    }

    void whoMayConnect()
    {
        const struct {
            QJsonValue allow;
            bool allowed;
        } rows[] = {{QJsonValue::Undefined, true},
                    {QJsonArray{"10.0.0.1", "127.0.0.1"}, true},
                    {QJsonArray{"nonsense", "127.0.0.0/24"}, true},
                    {QJsonArray{"10.0.0.0/8", "127.0.0.2"}, false},
                    {"127.0.0.1", false}}; // no list
        for (const auto &row : rows) {
            m_install->setPlatform({{"RemoteListen", "127.0.0.1"}, {"RemoteAllow", row.allow}});
            CTcpServer server;
            server.start();
            QVERIFY(waitUntil([&] { return server.port() != 0; }));
            QTcpSocket client;
            client.connectToHost(QHostAddress::LocalHost, server.port());
            client.write(frame(beat));
            QVERIFY(waitUntil([&] {
                return client.bytesAvailable() || client.state() == QAbstractSocket::UnconnectedState;
            }));
            QCOMPARE(client.bytesAvailable() > 0, row.allowed);
        }
    }
};

QTEST_GUILESS_MAIN(TestFraming)
#include "test_framing.moc"
