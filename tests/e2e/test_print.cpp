// Whole jobs: what is printed equals what was sliced, dot for dot, and the records tell so.

#include "TestPrinter.h"

#include <QtTest>

/// "subject|body" of a mail as the stand-in tool has written it.
static QString mail(const TestPrinter &printer, int number)
{
    QFile file(QString("%1/../.PeloraTemp/machine/mail/mail-000%2.json").arg(printer.install()).arg(number));
    file.open(QIODevice::ReadOnly);
    const QJsonDocument mail = QJsonDocument::fromJson(file.readAll());
    return mail["subject"].toString() + '|' + mail["body"].toString();
}

class TestPrint : public QObject
{
    Q_OBJECT
private slots:
    void printsEveryDot_data();
    void printsEveryDot();
    void awkwardNames_data();
    void awkwardNames();
    void damagedLayerIsPrintedAsItsPredecessor();

private:
    /// Prints to the end and proves the result. A damaged layer is printed as the one before it.
    void finish(TestPrinter &printer, const QString &name, int damagedLayer = 0);
};

void TestPrint::finish(TestPrinter &printer, const QString &name, int damagedLayer)
{
    QVERIFY2(printer.print(name), qPrintable(printer.error()));
    const QString end = printer.rig().waitPrintEnd(240000);
    QVERIFY2(end.contains("打印完成"), qPrintable(end + printer.error()));
    const auto rows = printer.query("select * from PrintQueue");
    const QStringList mails{mail(printer, 1), mail(printer, 2)};
    const QJsonObject report = printer.stop();
    QCOMPARE(mails[0], QString("打印开始|%1  打印开始").arg(name));
    QVERIFY2(mails[1].startsWith("PrintStop|" + name + '\n') && mails[1].endsWith("\n打印完成"),
             qPrintable(mails[1]));
    QCOMPARE(rows.size(), 1);
    QCOMPARE(rows[0]["ModelName"].toString(), name);
    QCOMPARE(rows[0]["status"].toInt(), 1);
    QVERIFY(rows[0]["PrintLayer"].toInt() > 4);
    QCOMPARE(rows[0]["PrintLayer"], rows[0]["SumLayer"]);
    QCOMPARE(TestPrinter::violations(report), QString());
    QCOMPARE(report["passes"].toInt(), 4 * rows[0]["SumLayer"].toInt());
    QStringList sequence;
    for (int layer = 1; layer <= rows[0]["SumLayer"].toInt(); ++layer)
        sequence << QString::number(layer == damagedLayer ? layer - 1 : layer);
    QCOMPARE(printer.differingDots(name, sequence.join(',')), 0);
}

void TestPrint::printsEveryDot_data()
{
    QTest::addColumn<int>("passCnt");
    for (int passCnt : {4, 8, 12})
        QTest::addRow("passCnt %d", passCnt) << passCnt;
}

void TestPrint::printsEveryDot()
{
    QFETCH(int, passCnt);
    TestPrinter printer;
    QVERIFY2(printer.makeModel("bar.tzl", {"--pass-cnt", QString::number(passCnt), "--pixels-y",
                                           QString::number(1320 * passCnt)}),
             qPrintable(printer.error()));
    QVERIFY2(printer.start(), qPrintable(printer.error()));
    finish(printer, "bar.tzl");
    if (QTest::currentTestFailed())
        qDebug().noquote() << printer.log().right(3000);
}

void TestPrint::awkwardNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("blank and quotes") << "a \"ring\" of 'mine'.tzl";
    QTest::newRow("Chinese") << "珍珠 吊坠.tzl";
    QTest::newRow("200 characters") << QString(196, 'x') + ".tzl";
}

void TestPrint::awkwardNames()
{
    QFETCH(QString, name);
    TestPrinter printer;
    QVERIFY2(printer.makeModel(name, {"--layer-height", "0.1"}), qPrintable(printer.error()));
    QVERIFY2(printer.start(), qPrintable(printer.error()));
    finish(printer, name);
    const auto history = printer.query("select * from PrintHistory");
    QCOMPARE(history.size(), 1);
    QCOMPARE(history[0]["ModelName"].toString(), name);
    QVERIFY(QFileInfo::exists(printer.install() + "/../.PeloraTemp/HistoryIcon/" + history[0]["Icon"].toString() +
                              ".jpg"));
}

void TestPrint::damagedLayerIsPrintedAsItsPredecessor()
{
    TestPrinter printer;
    QVERIFY(printer.makeModel("bar.tzl", {"--layer-height", "0.1"}));
    // Where the bar's lid begins, so that the layer differs from the one before.
    QVERIFY2(printer.start({"PELORA_SLICER_FAULT=damage:9"}), qPrintable(printer.error()));
    finish(printer, "bar.tzl", 9);
}

QTEST_GUILESS_MAIN(TestPrint)
#include "test_print.moc"
