// Layer files to pass pictures, compared pixel by pixel with plain loops.

#include "frame/Folders.h"
#include "frame/PrintStatus.h"
#include "printdata/Samples.h"
#include "printdata/SliceToImage.h"

#include <QDir>
#include <QFile>
#include <QtTest>

namespace
{
const QString model = "ring \"%2\".tzl";
constexpr int width = 96; // 90 pixels and their margins, padded
constexpr int rows = 26;
constexpr int rowBytes = width / 8;

/// The dot of a made-up picture; two kinds and two layers differ everywhere.
bool dot(int layer, bool structure, int x, int y)
{
    return ((x * 7 + y * 13 + layer * 5 + (structure ? 3 : 0)) % 11) < 4;
}

QByteArray picture(int layer, bool structure, int height = rows)
{
    QByteArray bits(rowBytes * height, '\0');
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            if (dot(layer, structure, x, y))
                bits[(height - 1 - y) * rowBytes + x / 8] =
                    char(bits[(height - 1 - y) * rowBytes + x / 8] | 1 << x % 8);
        }
    }
    return bits;
}

QString layerPath(char kind, int layer)
{
    return sliceFolder(model) + "/slice_" + kind + QString::number(layer);
}

void writeLayer(int layer)
{
    writeFile(layerPath('s', layer), layerBytes(picture(layer, false)));
    writeFile(layerPath('m', layer), layerBytes(picture(layer, true)));
}

bool load(const QByteArray &settings)
{
    writeFile(modelPath(model), modelBytes(settings));
    return sliceToImage()->loadModelInfo(modelPath(model)) == 0;
}

/// Tells where a pass differs from the rows of the layer it is to hold; empty when nowhere.
QString difference(const QImage &pass, int layer, bool structure, int step, int phase, int firstRow,
                   bool forward)
{
    for (int row = 0; row < pass.height(); ++row) {
        const int index = row - firstRow;
        const bool printed = index >= 0 && index < rows / step && layer >= 0;
        for (int x = 0; x < width; ++x) {
            const int from = forward ? x : width - 1 - x;
            if (pass.pixelIndex(x, row) != int(printed && dot(layer, structure, from, phase + index * step)))
                return QString("row %1 column %2").arg(row).arg(x);
        }
    }
    return QString();
}

/// The layer in memory, empty for -1.
QString inMemory(int layer)
{
    QImage structure;
    QImage support;
    sliceToImage()->getPassImage(&structure, &support, 1, 0, true);
    return difference(structure, layer, true, 4, 1, 0, true) +
           difference(support, layer, false, 4, 1, 0, true);
}
} // namespace

class TestLayerImages : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void modelInfo();
    void refusals();
    void passes_data();
    void passes();
    void passesKeepTheirMemory();
    void keepsThirtyLayers();
    void missingLayer();
    void damagedLayer_data();
    void damagedLayer();
    void standsInOnce();
    void singleFile();
    void dropMass();
    void testPatterns();

private:
    TestInstall m_install;
};

void TestLayerImages::init()
{
    printStatus() = PrintStatusIdle;
    sliceToImage()->resetHeadMass();
    sliceToImage()->waitForStarted(); // there is no tool: only forgets and clears
    QVERIFY(load(pictureSettings(70, rows, 10, 4)));
    QDir().mkpath(sliceFolder(model));
    sliceToImage()->waitForStarted();
}

void TestLayerImages::modelInfo()
{
    const ModelInfo info = sliceToImage()->modelInfo();
    QCOMPARE(info.width, 90.0f);
    QCOMPARE(info.pixelsY, 26.0f);
    QCOMPARE(info.passCnt, 4);
    QCOMPARE(info.modelMaterial, 12.5f);
    QCOMPARE(info.supportMaterial, 3.0f);
    QCOMPARE(sliceToImage()->layerHeightUm(), 20.0f);
    QCOMPARE(sliceToImage()->dpiX(), 600.0f);
    QCOMPARE(sliceToImage()->dpiY(), 601.5f);
    QCOMPARE(sliceToImage()->fileName(), model);
    QCOMPARE(sliceToImage()->passWidth(), width);
    QCOMPARE(sliceToImage()->passHeight(), 1320);
}

void TestLayerImages::refusals()
{
    printStatus() = PrintStatusPaused;
    QCOMPARE(sliceToImage()->loadModelInfo(modelPath(model)), -2);
    printStatus() = PrintStatusIdle;
    QCOMPARE(sliceToImage()->loadModelInfo("model/none.tzl"), -1);
    for (const auto &settings :
         {pictureSettings(2000000000, 1000, 0, 4), pictureSettings(1000, 100000, 0, 4)})
        QVERIFY(!load(settings));
    QCOMPARE(sliceToImage()->passWidth(), width); // the model before stays
    // Settings without numbers, or with none that make a picture: loaded, and nothing to print.
    for (const QByteArray &settings : {QByteArray(), QByteArray("pixelsX=nan\npixelsY=inf\npassCnt=1e30\n"),
                                       pictureSettings(-5, -5, 0, -4)}) {
        QVERIFY(load(settings));
        QCOMPARE(sliceToImage()->passWidth(), 0);
        QCOMPARE(sliceToImage()->passHeight(), 0);
        QImage structure;
        QImage support;
        sliceToImage()->getPassImage(&structure, &support, 0, 0, false);
        QVERIFY(structure.isNull() && support.isNull());
        QVERIFY(!sliceToImage()->calcDotCount(1));
        QVERIFY(!sliceToImage()->getLayerImage(1));
        QVERIFY(sliceToImage()->getLineImage(1, 1));
        sliceToImage()->drawTestLines(0, 0, 0);
    }
    // No interlace: no rows. Two side files of one size in the same tick of the file system look alike to Qt.
    QVERIFY(load(pictureSettings(70, rows, 10, 0) + "note=x\n"));
    writeLayer(1);
    QVERIFY(sliceToImage()->getLayerImage(1));
    QCOMPARE(inMemory(-1), QString());
}

void TestLayerImages::passes_data()
{
    QTest::addColumn<int>("step");
    QTest::addColumn<int>("phase");
    QTest::addColumn<int>("firstRow");
    QTest::addColumn<bool>("forward");
    QTest::newRow("first") << 4 << 0 << 0 << true;
    QTest::newRow("reverse") << 4 << 3 << 8 << false;
    QTest::newRow("eight") << 8 << 5 << 3 << false;
    QTest::newRow("twelve") << 12 << 11 << 8 << true;
    QTest::newRow("beyond the nozzles") << 4 << 2 << 1317 << false;
    QTest::newRow("before the nozzles") << 4 << 2 << -3 << true;
}

void TestLayerImages::passes()
{
    QFETCH(int, step);
    QFETCH(int, phase);
    QFETCH(int, firstRow);
    QFETCH(bool, forward);
    QVERIFY(load(pictureSettings(70, rows, 10, step)));
    writeLayer(3);
    QVERIFY(sliceToImage()->getLayerImage(3));
    QImage structure;
    QImage support;
    for (int time = 0; time < 2; ++time) { // the second finds the rows of another pass
        sliceToImage()->getPassImage(&structure, &support, 0, 100, !forward);
        sliceToImage()->getPassImage(&structure, &support, phase, firstRow, forward);
        QCOMPARE(structure.size(), QSize(width, 1320));
        QCOMPARE(structure.format(), QImage::Format_MonoLSB);
        QCOMPARE(difference(structure, 3, true, step, phase, firstRow, forward), QString());
        QCOMPARE(difference(support, 3, false, step, phase, firstRow, forward), QString());
    }
}

/// The boards read a pass from its memory. The next pass goes into the same memory, unless somebody holds the
/// old.
void TestLayerImages::passesKeepTheirMemory()
{
    writeLayer(3);
    QVERIFY(sliceToImage()->getLayerImage(3));
    QImage structure;
    QImage support;
    sliceToImage()->getPassImage(&structure, &support, 0, 0, true);
    const uchar *memory = structure.constBits();
    sliceToImage()->getPassImage(&structure, &support, 1, 0, false);
    QVERIFY(structure.constBits() == memory);
    const QImage held = structure;
    sliceToImage()->getPassImage(&structure, &support, 2, 8, true);
    QCOMPARE(difference(held, 3, true, 4, 1, 0, false), QString());
    QCOMPARE(difference(structure, 3, true, 4, 2, 8, true), QString());
    QVERIFY(load(pictureSettings(700, rows, 10, 4))); // another model while the last pass is still held
    QCOMPARE(difference(structure, 3, true, 4, 2, 8, true), QString());
}

void TestLayerImages::keepsThirtyLayers()
{
    for (int layer : {9, 10, 11, 40, 41})
        writeLayer(layer);
    QVERIFY(QFile::remove(layerPath('m', 41)));
    QVERIFY(sliceToImage()->getLayerImage(40));
    QVERIFY(!sliceToImage()->getLayerImage(41)); // not whole: deletes nothing
    QVERIFY(!QFile::exists(layerPath('s', 10)) && !QFile::exists(layerPath('m', 10)));
    for (int layer : {9, 11, 40})
        QVERIFY(QFile::exists(layerPath('s', layer)));
}

void TestLayerImages::missingLayer()
{
    writeLayer(1);
    QVERIFY(sliceToImage()->getLayerImage(1));
    LogCapture log;
    for (int layer : {2, 0, -7, INT_MIN, INT_MAX - 9})
        QVERIFY(!sliceToImage()->getLayerImage(layer));
    QCOMPARE(log.count("m_misLayer=-10000 _layer=-7"), 1);
    QCOMPARE(inMemory(-1), QString());
}

void TestLayerImages::damagedLayer_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("log");
    const QByteArray whole = layerBytes(picture(2, true));
    const auto with = [&whole](int at, quint32 value) {
        QByteArray bytes = whole;
        put32(&bytes, at, qint32(value));
        return bytes;
    };
    const QString packedError = "read  data  error ";
    const QString lengthError = "read data  error ";
    const QString pictureError = "uncompress  data  error ";
    QTest::newRow("empty") << QByteArray() << "read layer error ";
    QTest::newRow("head cut") << whole.left(19) << "read layer error ";
    QTest::newRow("cut") << whole.left(whole.size() - 1) << lengthError;
    QTest::newRow("P 0") << with(12, 0) << packedError;
    QTest::newRow("P 4 GiB") << with(12, 0xffffffff) << lengthError;
    QTest::newRow("I 0") << with(16, 0) << packedError;
    QTest::newRow("I 4 GiB") << with(16, 0xffffffff) << packedError;
    QTest::newRow("I small") << with(16, 5) << packedError;
    QByteArray outer = whole;
    outer[40] = char(outer[40] ^ 0x55);
    QTest::newRow("bad outer stream") << outer << packedError;
    QTest::newRow("bad inner stream") << layerAround(QByteArray(300, 'x')) << pictureError;
    QTest::newRow("inner stream cut") << layerAround(packed(picture(2, true)).chopped(3)) << pictureError;
    QTest::newRow("bigger picture") << layerBytes(picture(2, true) + 'x') << pictureError;
}

void TestLayerImages::damagedLayer()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, log);
    writeLayer(1);
    writeLayer(2);
    QVERIFY(sliceToImage()->getLayerImage(2)); // its streams are still in the buffers
    writeFile(layerPath('m', 2), bytes);
    QImage target(width, rows, QImage::Format_MonoLSB);
    target.fill(1);
    LogCapture lines;
    QVERIFY(!sliceToImage()->binary2Image(layerPath('m', 2), &target));
    QCOMPARE(lines.count(log), 1);
    QVERIFY(sliceToImage()->getLayerImage(2)); // the layer before stands in
    QCOMPARE(lines.count(log), 3);
    QCOMPARE(inMemory(1), QString());
}

void TestLayerImages::standsInOnce()
{
    for (int layer : {9, 10, 60, 109, 110, 111, 112})
        writeLayer(layer);
    for (int layer : {10, 60, 110, 111})
        writeFile(layerPath('s', layer), "damaged");
    QVERIFY(sliceToImage()->getLayerImage(10));
    QCOMPARE(inMemory(9), QString());
    for (int layer : {60, 110, 10}) // 110 is not more than a hundred away
        QVERIFY(!sliceToImage()->getLayerImage(layer));
    QVERIFY(!sliceToImage()->getLayerImage(111)); // allowed again, but 110 is damaged as well
    QVERIFY(sliceToImage()->getLayerImage(112));
    QCOMPARE(inMemory(112), QString());
    sliceToImage()->waitForStarted(); // a new run forgets, and clears the folder
    writeLayer(9);
    writeFile(layerPath('m', 10), "damaged");
    writeFile(layerPath('s', 10), "damaged");
    QVERIFY(sliceToImage()->getLayerImage(10));
}

void TestLayerImages::singleFile()
{
    QImage target(width, rows, QImage::Format_MonoLSB);
    LogCapture log;
    QVERIFY(!sliceToImage()->binary2Image(QString(), &target));
    QCOMPARE(log.count("file name is null"), 1);
    QVERIFY(!sliceToImage()->binary2Image("none", &target));
    QCOMPARE(log.count("open none error "), 1);
    for (int height : {rows, rows - 7}) { // a smaller picture takes the bottom, and the rest is empty
        writeFile(layerPath('s', 1), layerBytes(picture(1, false, height)));
        target.fill(1);
        QVERIFY(sliceToImage()->binary2Image(layerPath('s', 1), &target));
        for (int y = 0; y < rows; ++y) {
            const int from = y - (rows - height);
            for (int x = 0; x < width; ++x)
                QCOMPARE(target.pixelIndex(x, y), int(from >= 0 && dot(1, false, x, from)));
        }
    }
}

void TestLayerImages::dropMass()
{
    QVERIFY(!sliceToImage()->calcDotCount(1e-30)); // nothing printed yet
    writeLayer(1);
    QVERIFY(sliceToImage()->getLayerImage(1));
    m_install.writeConfig("Sys", {{"DotDropMass", 2e9}});
    double highest = 0;
    for (int head = 0; head < 3; ++head) { // bands of 8 rows; rows 24 and 25 are in none
        double dots = 0;
        for (int y = head * 8; y < head * 8 + 8; y += 2)
            for (int x = 0; x < width; ++x)
                dots += dot(1, true, x, y);
        highest = qMax(highest, dots * 2);
    }
    LogCapture log;
    QVERIFY(!sliceToImage()->calcDotCount(0));           // off
    QVERIFY(!sliceToImage()->calcDotCount(2 * highest)); // 1 x highest
    QVERIFY(!sliceToImage()->calcDotCount(2 * highest)); // 2 x: reached, not passed
    QVERIFY(sliceToImage()->calcDotCount(3 * highest - 1));
    QCOMPARE(log.count("func: CheckDropMass"), 1);
    QVERIFY2(log.count(QString("dotDropMass=2e+09,topmass=%1").arg(3 * highest - 1)) == 1,
             qPrintable(log.text()));
    QVERIFY(!sliceToImage()->calcDotCount(highest)); // all three began anew
    sliceToImage()->resetHeadMass();
    QVERIFY(!sliceToImage()->calcDotCount(highest));
}

void TestLayerImages::testPatterns()
{
    QVERIFY(!SliceToImage().getLineImage(1, 1));
    QImage structure;
    QImage support;
    const auto check = [&](const std::function<bool(int)> &inStructure,
                           const std::function<bool(int)> &inSupport) {
        sliceToImage()->getPassImage(&structure, &support, 0, 0, true);
        for (int y = 0; y < rows / 4; ++y) {
            for (int x = 0; x < width; ++x) {
                if (structure.pixelIndex(x, y) != int(inStructure(x)) ||
                    support.pixelIndex(x, y) != int(inSupport(x)))
                    return QString("row %1 column %2").arg(y).arg(x);
            }
        }
        return QString();
    };
    const auto inside = [](int x) { return x >= 10 && x < 80; };
    const auto nothing = [](int) { return false; };
    QVERIFY(sliceToImage()->getLineImage(0x01, 0xfe));
    QCOMPARE(
        check([&](int x) { return inside(x) && x % 8 != 0; }, [&](int x) { return inside(x) && x % 8 == 0; }),
        QString());
    for (int step : {1, 7, INT_MAX, 0, -3}) {
        const int stride = step > 0 ? step : 100;
        const auto lines = [&](int x) { return inside(x) && (x - 10) % stride == 0; };
        sliceToImage()->drawTestLines(-1, 0, step);
        QCOMPARE(check(nothing, lines), QString());
        sliceToImage()->drawTestLines(0, 0, step);
        QCOMPARE(check(lines, nothing), QString());
    }
}

QTEST_GUILESS_MAIN(TestLayerImages)
#include "test_layer_images.moc"
