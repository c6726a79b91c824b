// Which rows each pass prints and where the carriage stands for it.

#include "engine/Geometry.h"

#include <QtTest>

class TestGeometry : public QObject
{
    Q_OBJECT
private slots:
    void phases();
    void shiftsAndY();
};

/// A group of layers prints each phase exactly once, in the order that the wax needs to cool.
void TestGeometry::phases()
{
    const QMap<int, QVector<int>> expected{
        {4, {0, 2, 1, 3}}, {8, {0, 4, 2, 6, 1, 5, 3, 7}}, {12, {0, 6, 3, 9, 2, 8, 5, 11, 1, 7, 4, 10}}};
    for (auto row = expected.begin(); row != expected.end(); ++row) {
        const int passCnt = row.key();
        QVERIFY(isKnownPassCount(passCnt) && !isKnownPassCount(passCnt - 1));
        QVector<int> phases;
        for (int layer = 24; layer < 24 + passCnt / 4; ++layer)
            for (int pass = 0; pass < passesPerLayer; ++pass)
                phases << layerPhase(pass, layer, passCnt);
        QCOMPARE(phases, row.value());
    }
}

void TestGeometry::shiftsAndY()
{
    const int shifts[] = {0, 4, 1, 8, 5, 2, 6, 3, 7, 0, 4};
    for (int layer = 0; layer < 11; ++layer)
        QCOMPARE(nozzleShift(layer), shifts[layer]);
    QCOMPARE(nozzleShift(-9), 0); // a number that cannot be printed must not reach outside the table
    QCOMPARE(passY(0, 0, 4), 12000.0f);
    QCOMPARE(passY(3, 3, 4), float(12000.0 + 3 * 42.2 - 8 * 168.8));
    QCOMPARE(passY(11, 2, 12), float(168.8 / 12 * 11 + 12000.0 - 168.8));
    QCOMPARE(encoderCounts(690000, 25400), 690000);
    QCOMPARE(encoderCounts(690000, 1200), 32598);
}

QTEST_APPLESS_MAIN(TestGeometry)
#include "test_geometry.moc"
