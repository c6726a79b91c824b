// An unattended job: bottles run empty and are switched, one is exchanged by hand while the job holds, and the heads
// are cleaned in mid-job, with layers printed again after each cleaning. Nothing is lost: every drop lands on its
// place, and every gram is accounted for.

#include "TestPrinter.h"

#include "TestMesh.h"

#include <QJsonArray>
#include <QRegularExpression>
#include <QtTest>

namespace {
constexpr int waitLimitMs = 900000; // under the thread sanitizer
constexpr int cleanings = 3;        // in mid-job, at least
constexpr double closes = 1e-6;     // grams: sums of doubles
constexpr double handSeconds = 15;  // machine time that an operator takes to pull a bottle, and to put one in

/// The layers in the order of printing when cleanings come at these layers: each back to the 18th before it, the next
/// heights swept without ink, and forward again from the 20th before it.
QString prescribed(const QList<int> &cleanedAt, int total)
{
    QStringList layers;
    int from = 1;
    for (int at : cleanedAt) {
        for (int layer = from; layer <= at; ++layer)
            layers << QString::number(layer);
        for (int layer = at - 1; layer >= at - 18; --layer)
            layers << QString::number(layer);
        from = at - 20;
    }
    for (int layer = from; layer <= total; ++layer)
        layers << QString::number(layer);
    return layers.join(',');
}

/// Where the program says that it began to go back.
QList<int> cleanedLayers(const QString &log)
{
    static const QRegularExpression firstStep("m_printLayer = (\\d+) reprintLayer= 19");
    QList<int> layers;
    for (auto match = firstStep.globalMatch(log); match.hasNext();)
        layers << match.next().captured(1).toInt() + 1;
    return layers;
}

/// The machine's wax by place, in grams.
struct Wax
{
    double bottles = 0, islands = 0, tanks = 0, printed = 0, pressed = 0, fed = 0, nozzleFed = 0;

    Wax(const QJsonObject &state, const QString &ink)
    {
        const QString otherInk = ink == "support" ? "structure" : "support";
        for (const QJsonValue &bottle : state["bottles"].toArray()) {
            if ((bottle["position"].toInt() <= 2) == (ink == "support"))
                bottles += bottle["grams"].toDouble();
        }
        for (const QJsonValue &head : state["heads"].toArray())
            tanks += head[ink + "Grams"].toDouble();
        const QJsonObject all = state["ink"].toObject();
        islands = all["islands"][ink]["grams"].toDouble();
        printed = all["printed"][ink].toDouble();
        pressed = all["pressed"][ink].toDouble();
        fed = all["fed"][ink].toDouble();
        nozzleFed = all["nozzleFed"][ink].toDouble();
    }
};
} // namespace

class TestLongJob : public QObject
{
    Q_OBJECT
private slots:
    void nothingIsLost();

private:
    QJsonObject state() { return m_printer.rig().machine({"state"})["state"].toObject(); }
    bool machine(const QString &command) { return m_printer.rig().machine(command.split(' '))["ok"].toBool(); }
    /// As an operator does it: door open, a new bottle, door closed. Waits until its card was read.
    bool exchange(int position, int grams, const QString &serial);
    bool logHas(const QString &text)
    {
        return m_printer.rig().waitFor([&] { return m_printer.log().contains(text); }, waitLimitMs);
    }

    TestPrinter m_printer;
};

bool TestLongJob::exchange(int position, int grams, const QString &serial)
{
    const auto handsAtWork = [this] {
        const auto seconds = [this] { return state()["machineSeconds"].toDouble(); };
        const double end = seconds() + handSeconds;
        return m_printer.rig().waitFor([&] { return seconds() > end; }, waitLimitMs);
    };
    return machine("door inkbox open") && handsAtWork() &&
           machine(QString("bottle-new %1 %2 %3").arg(position).arg(grams).arg(serial)) && handsAtWork() &&
           machine("door inkbox close") && logHas(QString("card[%1]=%2").arg(position).arg(serial));
}

void TestLongJob::nothingIsLost()
{
    QVERIFY2(m_printer.makeModel("bar.tzl", {"--layer-height", "0.02"}, 2.2, writeBar), qPrintable(m_printer.error()));
    QVERIFY(m_printer.configure("Sys.json", {{"TopDropMass", 0.134}}));
    QVERIFY2(m_printer.start(), qPrintable(m_printer.error()));
    PrinterRig &rig = m_printer.rig();
    QVERIFY2(logHas("readCard"), qPrintable(m_printer.log()));
    // Of each wax one feed is left in the bottle in use, and of structure wax no more in the other.
    QVERIFY2(exchange(4, 65, "WX-STR-EMPTYING"), qPrintable(rig.error()));
    QVERIFY(exchange(3, 65, "WX-STR-THE-LAST"));
    QVERIFY(exchange(2, 65, "WX-SUP-EMPTYING"));
    QVERIFY(exchange(1, 3600, "WX-SUP-THE-NEXT"));
    QVERIFY(machine("island structure 2") && machine("island support 2"));
    const QJsonObject before = state();

    QVERIFY2(m_printer.print("bar.tzl"), qPrintable(m_printer.error()));
    QVERIFY(logHas("\"00ffff06\",")); // the job holds, both structure bottles are empty
    QVERIFY2(exchange(4, 3600, "WX-STR-EXCHANGE"), qPrintable(rig.error()));
    const QString end = rig.waitPrintEnd(waitLimitMs);
    QVERIFY2(end.contains("打印完成"), qPrintable(end + m_printer.error()));
    const QJsonObject after = state();
    const auto history = m_printer.query("select * from PrintHistory");
    const QJsonObject report = m_printer.stop();
    QCOMPARE(TestPrinter::violations(report), QString());
    QCOMPARE(TestPrinter::sanitizerReports(m_printer), QString());

    QCOMPARE(history.size(), 1);
    QCOMPARE(history[0]["StrWaxSn"].toString(), QString("WX-STR-EXCHANGE"));
    QCOMPARE(history[0]["SupWaxSn"].toString(), QString("WX-SUP-THE-NEXT"));
    const int total = history[0]["SumLayer"].toInt();
    QCOMPARE(history[0]["PrintLayer"].toInt(), total);

    const QList<int> cleanedAt = cleanedLayers(m_printer.log());
    QVERIFY2(cleanedAt.size() >= cleanings, qPrintable(QString::number(cleanedAt.size())));
    const QString sequence = prescribed(cleanedAt, total);
    QCOMPARE(report["layers"].toInt(), sequence.split(',').size());
    QCOMPARE(m_printer.differingDots("bar.tzl", sequence), 0);

    for (const QString ink : {"structure", "support"}) {
        const Wax was(before, ink), is(after, ink);
        const double added = ink == "structure" ? 3600 : 0; // the exchanged bottle; the one taken out was empty
        const double fed = is.fed - was.fed, nozzleFed = is.nozzleFed - was.nozzleFed;
        const double used = is.printed - was.printed + is.pressed - was.pressed;
        // The third feed, out of the exchanged or the second bottle, may still be under way.
        QVERIFY2(fed > 2 * 65 && used > 0, qPrintable(QString::number(fed)));
        QVERIFY2(qAbs(was.bottles + added - is.bottles - fed) < closes, qPrintable(ink));
        QVERIFY2(qAbs(was.islands + fed - nozzleFed - is.islands) < closes, qPrintable(ink));
        QVERIFY2(qAbs(was.tanks + nozzleFed - used - is.tanks) < closes, qPrintable(ink));
        qInfo().noquote() << QString("%1: bottles %2 g, islands %3 g, tanks %4 g, used %5 g")
                                 .arg(ink)
                                 .arg(is.bottles - was.bottles - added)
                                 .arg(is.islands - was.islands)
                                 .arg(is.tanks - was.tanks)
                                 .arg(used);
    }
}

QTEST_GUILESS_MAIN(TestLongJob)
#include "test_long_job.moc"
