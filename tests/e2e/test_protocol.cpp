// The whole remote protocol against the running program on the simulated machine: every command with its
// replies to the byte, and docs/protocol.md, which shows what was sent and received here. With --record it is
// written anew.

#include "TestPrinter.h"
#include "Walk.h"

#include <QDir>
#include <QImage>
#include <QRegularExpression>
#include <QtTest>

namespace
{
bool recording = false;

QByteArray readAll(const QString &name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// What a process holds in memory, in kB.
int residentKb(qint64 pid)
{
    static const QRegularExpression resident("VmRSS:\\s+(\\d+) kB");
    return resident.match(QString::fromLatin1(readAll(QString("/proc/%1/status").arg(pid))))
        .captured(1)
        .toInt();
}
} // namespace

class TestProtocol : public QObject
{
    Q_OBJECT
private slots:
    void everyCommand();
    void memoryStays();
};

void TestProtocol::everyCommand()
{
    TestPrinter printer;
    QVERIFY2(printer.makeModel("bar.tzl"), qPrintable(printer.error()));
    QVERIFY2(printer.start(), qPrintable(printer.error()));
    PrinterRig &rig = printer.rig();
    QDir().mkpath(rig.tempPath("HistoryIcon"));
    QImage icon(8, 8, QImage::Format_RGB32);
    icon.fill(Qt::darkYellow);
    QVERIFY(icon.save(rig.tempPath("HistoryIcon/walk.jpg"), "jpg"));

    Walk walk({printer.install(), printer.remotePort(), "Protocol walk",
               [&] { return rig.machine({"state"})["state"].toObject(); }});
    const auto session = [&walk](const char *name) {
        walk.walk(QString(PELORA_SESSIONS "/%1.json").arg(name));
    };
    for (const char *name : {"1-status", "2-binary", "3-files", "4-bench", "5-upload", "6-queue", "7-scan"})
        session(name);
    QVERIFY2(printer.print("bar.tzl"), qPrintable(printer.error()));
    session("8-job");
    QVERIFY2(rig.waitPrintEnd(240000).contains("打印完成"), qPrintable(printer.error()));
    session("9-print");
    QVERIFY2(walk.errors().isEmpty(), qPrintable('\n' + walk.errors().join('\n')));
    QVERIFY(rig.productRuns());
    QCOMPARE(TestPrinter::violations(printer.stop()), QString());

    QStringList missing;
    QFile document(PELORA_PROTOCOL_DOCUMENT);
    const QString told = QString::fromUtf8(readAll(document.fileName()));
    const QString shown = withExchanges(told, walk.exchanges(), &missing);
    QVERIFY2(missing.isEmpty(), qPrintable(missing.join('\n')));
    if (recording)
        QVERIFY(document.open(QIODevice::WriteOnly) && document.write(shown.toUtf8()) > 0);
    else
        QVERIFY2(told == shown, "docs/protocol.md is not what was recorded: run scripts/record_protocol.sh");
}

/// Connections and uploads leave nothing behind.
void TestProtocol::memoryStays()
{
    constexpr int first = 10, connects = 1000, uploads = 100, growthKb = 2048;
    TestPrinter printer;
    QVERIFY2(printer.start(), qPrintable(printer.error()));
    const QByteArray model(1 << 20, 'w');
    Wire wire;
    int before = 0;
    for (int round = 0; round < connects; ++round) {
        if (round == first)
            before = residentKb(printer.rig().productPid());
        QVERIFY(wire.connectTo(printer.remotePort()));
        if (round < first || round >= connects - (uploads - first))
            QVERIFY2(wire.upload("walk.tzl", model, 65536), qPrintable(QString::number(round)));
    }
    const int growth = residentKb(printer.rig().productPid()) - before;
    qInfo("%d connects and %d uploads: %d kB more than after the first %d", connects, uploads, growth, first);
    QVERIFY2(before > 0 && growth <= growthKb, qPrintable(QString::number(growth)));
}

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    QStringList arguments = application.arguments();
    recording = arguments.removeAll("--record") > 0;
    TestProtocol test;
    return QTest::qExec(&test, arguments);
}
#include "test_protocol.moc"
