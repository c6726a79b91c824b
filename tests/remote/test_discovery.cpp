// How machines are found: the datagrams, the adapter that is told, and both sockets.

#include "remote/Discovery.h"
#include "tests/support/TestInstall.h"

#include <QJsonDocument>
#include <QNetworkDatagram>
#include <QUdpSocket>
#include <QtTest>

class TestDiscovery : public QObject
{
    Q_OBJECT
    TestInstall m_install;

    static AdapterInfo adapter(const char *description, bool up, const char *ip = "10.1.2.3")
    {
        return {"eth", description, "AA-BB-CC-00-11-22", ip, "", "", up};
    }

private slots:
    void initTestCase()
    {
        m_install.writeConfig("MachineName", {{"Name", "蜡 1"}});
        m_install.writeConfig("Settings", {{"Material", "Wax"}, {"Volume", 5}, {"Style", "S"}});
    }

    void reply()
    {
        const QByteArray head("\x5a\xa5\x10\x00\xff\xff", 6);
        const QByteArray text =
            "{\n    \"Ip\": \"10.1.2.3\",\n    \"Mac\": \"AA-BB-CC-00-11-22\",\n"
            "    \"Material\": \"Wax\",\n    \"Name\": \"蜡 1\",\n    \"Port\": 6666,\n"
            "    \"Precision\": \"\",\n    \"Style\": \"S\",\n    \"Title\": \"ScanMachine\",\n"
            "    \"Type\": \"Pelora620\",\n    \"Volume\": \"\"\n}\n";
        QCOMPARE(scanReply(adapter("", true), 6666), head + text);
        QByteArray unreachable = head + text;
        unreachable[2] = 15;
        unreachable.replace("10.1.2.3", "127.0.0.7").replace("    \"Mac\": \"AA-BB-CC-00-11-22\",\n", "");
        QCOMPARE(scanReply(adapter("", false), 6666), unreachable);
    }

    void requests()
    {
        for (const QByteArray &yes : {QByteArray("{}"), QByteArray("123456[]"),
                                      QByteArray("123456{\"Title\":0}\0x", 18), QByteArray(6, '\0') + " {} "})
            QVERIFY2(isScanRequest(yes), yes);
        for (const QByteArray &no : {QByteArray(), QByteArray("{} "), QByteArray("12345{}"),
                                     QByteArray("123456"), QByteArray("123456\0{}", 9), QByteArray("123456{"),
                                     QByteArray("123456{}x"), "123456" + QByteArray(60000, '[')})
            QVERIFY2(!isScanRequest(no), no);
    }

    void choiceOfAdapter()
    {
        const auto chosen = [](const QList<AdapterInfo> &all) {
            return findAdapter(all, "Intel(R)", "PCIe");
        };
        const AdapterInfo intel = adapter("Intel(R) Wireless", true, "1"), bus = adapter("X PCIe", true, "2"),
                          usb = adapter("intel(r) pcie", true, "3"),
                          down = adapter("Intel(R) PCIe", false, "4");
        QCOMPARE(chosen({intel, bus, usb}).ip, QString("2")); // the last that matches
        QCOMPARE(chosen({bus, intel, usb}).ip, QString("1"));
        QCOMPARE(chosen({bus, down}).up, false); // even if it is down
        QVERIFY(!chosen({usb}).up && !chosen({}).up);
    }

    void sockets()
    {
        const QList<QUdpSocket *> sockets = openDiscovery(this, {0, 0}); // ports that are free
        for (QUdpSocket *socket : sockets) {
            connect(socket, &QUdpSocket::readyRead, this, [socket] { answerScan(socket); });
            QUdpSocket client;
            QVERIFY(client.bind(QHostAddress(QHostAddress::LocalHost)));
            for (const char *datagram : {"", "rubbish", "{}", "", "123456{}"}) // two requests in one go
                client.writeDatagram(datagram, QHostAddress::LocalHost, socket->localPort());
            for (int i = 0; i < 2; ++i) {
                QTRY_VERIFY(client.hasPendingDatagrams());
                const QNetworkDatagram answer = client.receiveDatagram();
                QCOMPARE(answer.senderPort(), int(socket->localPort()));
                QCOMPARE(QJsonDocument::fromJson(answer.data().mid(6))["Name"].toString(), QString("蜡 1"));
            }
            QVERIFY(!waitUntil([&client] { return client.hasPendingDatagrams(); }, 50));
        }
    }
};

QTEST_GUILESS_MAIN(TestDiscovery)
#include "test_discovery.moc"
