// What the head boards are told, call by call, through a library that notes it.

#include "JobRig.h"

#include "engine/HibLibrary.h"
#include "printdata/SliceToImage.h"

#include <QtTest>

class TestHeadBoards : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { QVERIFY(m_rig.loadModel()); }
    void init() { m_rig.reset(); }
    void printBar();
    void dotClockAndPages();
    void waveform();
    void handsOverOnePicture();
    void testPrint();

private:
    JobRig m_rig;
};

void TestHeadBoards::printBar()
{
    const QStringList places[] = {{"(1,1,1,1,0)", "(1,2,443,5,0)", "(1,3,881,5,0)"},
                                  {"(1,1,1,1,0)", "(1,2,438,1,0)", "(1,3,876,1,0)"}};
    m_rig.hibFail("hibConfigPrintBarHead", 5); // an error is only logged
    LogCapture log;
    for (const bool test : {false, true}) {
        ProbeJob job;
        QCOMPARE(test ? job.configPrintBarTest(600.9f) : job.configPrintBar(600.9f), 0);
        QStringList expected;
        for (int head = 1; head <= 3; ++head)
            expected << QStringLiteral("hibAddHeadToPrintBar(1,%1,%1,1,1,0)").arg(head)
                     << "hibConfigPrintBarHead" + places[test][head - 1];
        QCOMPARE(m_rig.hibCalls(), expected << "hibSetupAllDotclocks(3,5000,1,6350,600,65537)");
    }
    QCOMPARE(log.count("Error in lockHibConfigPrintBarHead() call. 5"), 6);
}

void TestHeadBoards::dotClockAndPages()
{
    ProbeJob job;
    job.configPrintBar(600);
    m_rig.hibCalls();
    QVERIFY(job.setDotClock(3, 0.0f));
    QCOMPARE(m_rig.hibCalls().join(' '),
             QString("hibAutofireStop(1) hibAutofireStop(2) hibAutofireStop(3) "
                     "hibSetupAllDotclocks(3,0,1,6350,600,65537) hibConfigPage(1,1,1,2100,1) "
                     "hibConfigPage(2,1,1,2100,1) hibConfigPage(3,1,1,2100,1) masks=2640"));
    m_rig.hibFail("hibSetupAllDotclocks", 1);
    QVERIFY(!job.setDotClock(3, 0.0f));
    QVERIFY(m_rig.hibCalls("hibConfigPage").isEmpty());

    QVERIFY(job.configPage(true));
    QCOMPARE(
        m_rig.hibCalls().join(' '),
        QString("hibConfigPage(1,1.5,11,64,0) hibConfigPage(2,1.5,12,64,0) hibConfigPage(3,1.5,13,64,0)"));
    QVERIFY(job.configPage(false)); // a missing key reads 0
    QCOMPARE(
        m_rig.hibCalls().join(' '),
        QString("hibConfigPage(1,2.5,21,64,0) hibConfigPage(2,2.5,0,64,0) hibConfigPage(3,2.5,23,64,0)"));
}

void TestHeadBoards::waveform()
{
    struct Row {
        int knots, failure;
        bool done;
        const char *adjusted; // head, waveform and difference
    };
    const Row rows[] = {{5, 0, true, "1,1,10 3,1,-10"},
                        {2, 0, true, "1,1,80 2,1,70 3,1,60"}, // too few knots for a peak
                        {3, 4, false, "1,1,10"},              // a head refuses
                        {1000000000, 0, false, ""}};
    for (const Row &row : rows) {
        m_rig.hibSet(row.knots, 70, 0);
        m_rig.hibFail("hibAdjustWaveformVoltage", row.failure);
        QCOMPARE(setWaveformVoltage(80, 70, 60), row.done);
        QCOMPARE(m_rig.hibCalls("hibAdjust").join(' ').remove("hibAdjustWaveformVoltage(").remove(')'),
                 QString(row.adjusted));
    }
}

void TestHeadBoards::handsOverOnePicture()
{
    QVERIFY(m_rig.slice(9, 20));
    QVERIFY(sliceToImage()->getLayerImage(9));
    ProbeJob job;
    job.configPrintBar(600.9f);
    for (const bool forward : {true, false, true}) {
        job.configPage(forward);
        m_rig.hibCalls();
        QCOMPARE(job.printImage(0, 0), 0);
        // Support plane first; a reverse sweep meets the columns last to first, so the bits of a byte turn
        // round.
        QCOMPARE(QString(m_rig.hibPicture()),
                 QString("64,1320,1,150,600,") + (forward ? "1,17,34" : "0,136,68"));
        QCOMPARE(m_rig.hibCalls().join(' '),
                 QString("hibSetupPackedImageTransfer(1) hibSetFreePackedMemoryCallback(1) "
                         "hibEnablePrintingWDelay(0,0) hibWaitForImageTransferCompleteWto(1,10000) "
                         "hibWaitForImageTransferCompleteWto(2,10000) "
                         "hibWaitForImageTransferCompleteWto(3,10000)"));
    }
    QCOMPARE(m_rig.bridge.count(2, 0x83), 3);
}

void TestHeadBoards::testPrint()
{
    // Where the carriage stands, and the direction of the sweep from there; none between the ends.
    const QMap<int, QString> cases{{49999, "1"}, {50001, "0"}, {50000, ""}, {-1, ""}};
    for (auto row = cases.begin(); row != cases.end(); ++row) {
        m_rig.hibSet(3, 0, row.key());
        ProbeJob job;
        QCOMPARE(job.printGraph(7, 1, 2, 3), row->isEmpty() ? 0 : 1);
        QCOMPARE(
            m_rig.hibCalls("hibConfigPage(").join(' '),
            row->isEmpty()
                ? QString()
                : QString("hibConfigPage(1,7,1,64,0) hibConfigPage(2,7,2,64,0) hibConfigPage(3,7,3,64,0)"));
        if (!row->isEmpty())
            QCOMPARE(QString(m_rig.hibPicture()).section(',', 5, 5), *row);
    }
}

QTEST_MAIN(TestHeadBoards)
#include "test_head_boards.moc"
