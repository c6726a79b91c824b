// Layer files to pass pictures, compared pixel by pixel with plain loops.

#include "frame/Folders.h"
#include "frame/PrintStatus.h"
#include "printdata/Samples.h"
#include "printdata/SliceToImage.h"

#include <QDir>
#include <QtTest>

namespace
{
const QString model = "ring \"%2\".tzl";
constexpr int width = 96; // 90 pixels and their margins, padded
constexpr int rows = 26;

using Dots = std::function<bool(int x, int y)>;

/// A made-up picture; two kinds and two layers differ everywhere.
Dots layerDots(int layer, bool structure)
{
    return [=](int x, int y) { return (x * 7 + y * 13 + layer * 5 + (structure ? 3 : 0)) % 11 < 4; };
}

QByteArray rowsBottomFirst(const Dots &dots)
{
    QByteArray bits;
    for (int y = rows - 1; y >= 0; --y) {
        QByteArray row(width / 8, '\0');
        for (int x = 0; x < width; ++x)
            row[x / 8] = char(row[x / 8] | int(dots(x, y)) << x % 8);
        bits += row;
    }
    return bits;
}

QString path(char kind, int layer)
{
    return sliceFolder(model) + "/slice_" + kind + QString::number(layer);
}

void writeLayer(int layer)
{
    writeFile(path('s', layer), layerAround(packed(rowsBottomFirst(layerDots(layer, false)))));
    writeFile(path('m', layer), layerAround(packed(rowsBottomFirst(layerDots(layer, true)))));
}

/// The first place where two pictures differ; empty when nowhere.
QString difference(const QImage &picture, const Dots &dots)
{
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            if (bool(picture.pixelIndex(x, y)) != dots(x, y))
                return QString("row %1 column %2").arg(y).arg(x);
    return QString();
}

struct Cut {
    int step, phase, firstRow;
    bool forward;

    Dots of(const Dots &dots) const
    {
        return [=](int x, int y) {
            const int index = y - firstRow;
            return index >= 0 && index < rows / step &&
                   dots(forward ? x : width - 1 - x, phase + index * step);
        };
    }
};
} // namespace

class TestLayerImages : public QObject
{
    Q_OBJECT
    TestInstall m_install;
    SliceToImage *m_slices = sliceToImage();
    QImage m_structure, m_support;

    bool load(const QByteArray &settings)
    {
        writeFile(modelPath(model), modelBytes(settings));
        return m_slices->loadModelInfo(modelPath(model)) == 0;
    }
    /// Where the pictures in memory differ from these.
    QString inMemory(const Dots &structure, const Dots &support)
    {
        const Cut cut{4, 1, 0, true};
        m_slices->getPassImage(&m_structure, &m_support, cut.phase, cut.firstRow, cut.forward);
        return difference(m_structure, cut.of(structure)) + difference(m_support, cut.of(support));
    }
    QString inMemory(int layer) { return inMemory(layerDots(layer, true), layerDots(layer, false)); }

private slots:
    void init()
    {
        m_install.writeConfig("Sys", {{"DotDropMass", 2e9}});
        QVERIFY(load(pictureSettings(70, rows, 10, 4)));
        m_slices->waitForStarted(); // there is no tool: only forgets and clears
    }

    void modelInfo()
    {
        const ModelInfo info = m_slices->modelInfo();
        QCOMPARE(info.width, 90.0f);
        QCOMPARE(info.modelMaterial + info.supportMaterial, 15.5f);
        QCOMPARE(m_slices->layerHeightUm(), 20.0f);
        QCOMPARE(m_slices->dpiX() + m_slices->dpiY(), 1201.5f);
        QCOMPARE(QSize(m_slices->passWidth(), m_slices->passHeight()), QSize(width, 1320));
        printStatus() = PrintStatusPaused;
        QCOMPARE(m_slices->loadModelInfo(modelPath(model)), -2);
        printStatus() = PrintStatusIdle;
        QCOMPARE(m_slices->loadModelInfo("model/none.tzl"), -1);
        QVERIFY(!load(pictureSettings(2000000000, 1000, 0, 4)) && !load(pictureSettings(1000, 100000, 0, 4)));
        QCOMPARE(m_slices->passWidth(), width); // the model before stays
    }

    /// Settings that make no picture: loaded, and nothing to print.
    void noPicture()
    {
        for (const char *settings :
             {"", "pixelsX=nan\npixelsY=inf\npassCnt=1e30\n", "pixelsX=-5\npixelsY=-5\n"}) {
            QVERIFY(load(settings));
            QCOMPARE(QSize(m_slices->passWidth(), m_slices->passHeight()), QSize(0, 0));
            m_slices->getPassImage(&m_structure, &m_support, 0, 0, false);
            QVERIFY(m_structure.isNull() && m_support.isNull());
            QVERIFY(!m_slices->calcDotCount(1) && !m_slices->getLayerImage(1) &&
                    m_slices->getLineImage(1, 1));
            m_slices->drawTestLines(0, 0, 0);
        }
    }

    /// Whole prints prove the interlace; here what begins or ends beside the picture.
    void passes()
    {
        writeLayer(3);
        QVERIFY(m_slices->getLayerImage(3));
        for (const Cut &cut : {Cut{4, 3, 8, false}, Cut{4, 2, 1317, false}, Cut{4, 2, -3, true}}) {
            m_slices->getPassImage(&m_structure, &m_support, 0, 100, true); // leaves rows that must go
            m_slices->getPassImage(&m_structure, &m_support, cut.phase, cut.firstRow, cut.forward);
            QCOMPARE(m_structure.format(), QImage::Format_MonoLSB);
            QCOMPARE(difference(m_structure, cut.of(layerDots(3, true))), QString());
            QCOMPARE(difference(m_support, cut.of(layerDots(3, false))), QString());
        }
        // The next pass goes into the same memory, unless somebody holds the one before.
        const uchar *memory = m_structure.constBits();
        QCOMPARE(inMemory(3), QString());
        QVERIFY(m_structure.constBits() == memory);
        const QImage held = m_structure;
        m_slices->getPassImage(&m_structure, &m_support, 2, 8, false);
        QVERIFY(load(pictureSettings(700, rows, 10, 4)));
        QCOMPARE(difference(held, Cut{4, 1, 0, true}.of(layerDots(3, true))), QString());
        QCOMPARE(difference(m_structure, Cut{4, 2, 8, false}.of(layerDots(3, true))), QString());
    }

    void layersOnDisk()
    {
        for (int layer : {9, 10, 11, 40, 41})
            writeLayer(layer);
        QVERIFY(QFile::remove(path('m', 41)));
        QVERIFY(m_slices->getLayerImage(40));
        LogCapture log;
        for (int layer : {41, 0, -7, INT_MIN, INT_MAX}) // not whole, not there: nothing is deleted
            QVERIFY(!m_slices->getLayerImage(layer));
        QCOMPARE(log.count("m_misLayer=-10000 _layer=41"), 1);
        QVERIFY(!QFile::exists(path('s', 10)) && !QFile::exists(path('m', 10)));
        for (int layer : {9, 11, 40})
            QVERIFY(QFile::exists(path('s', layer)));
    }

    void damagedLayer()
    {
        const QByteArray bits = rowsBottomFirst(layerDots(2, true));
        const QByteArray whole = layerAround(packed(bits));
        const QString inHead = "read layer error ", tooShort = "read data  error ";
        const QString inOuter = "read  data  error ", inInner = "uncompress  data  error ";
        QByteArray bent = whole;
        bent[40] = char(bent[40] ^ 0x55);
        const QVector<QPair<QByteArray, QString>> cases{{"", inHead},
                                                        {whole.chopped(1), tooShort},
                                                        {with32(whole, 12, 0), inOuter},
                                                        {with32(whole, 12, 0xffffffff), tooShort},
                                                        {with32(whole, 16, 5), inOuter},
                                                        {with32(whole, 16, 0xffffffff), inOuter},
                                                        {bent, inOuter},
                                                        {layerAround(packed(bits).chopped(3)), inInner},
                                                        {layerAround(packed(bits + 'x')), inInner}};
        for (const auto &[bytes, line] : cases) {
            m_slices->waitForStarted(); // each is the first damage of its run
            writeLayer(1);
            writeLayer(2);
            QVERIFY(m_slices->getLayerImage(2)); // its streams are still in the buffers
            writeFile(path('m', 2), bytes);
            LogCapture log;
            QVERIFY(m_slices->getLayerImage(2)); // after two tries the layer before stands in
            QCOMPARE(log.count(line), 2);
            QCOMPARE(inMemory(1), QString());
        }
    }

    void standsInOnceInAHundred()
    {
        for (int layer : {9, 10, 60, 109, 110, 111, 112})
            writeLayer(layer);
        for (int layer : {10, 60, 110, 111})
            writeFile(path('s', layer), "damaged");
        QVERIFY(m_slices->getLayerImage(10));
        QCOMPARE(inMemory(9), QString());
        for (int layer : {60, 110, 10, 111}) // 111 is far enough, but the layer before is damaged as well
            QVERIFY(!m_slices->getLayerImage(layer));
        QVERIFY(m_slices->getLayerImage(112));
    }

    void dropMass()
    {
        QVERIFY(!m_slices->calcDotCount(1e-30)); // nothing printed yet
        writeLayer(1);
        QVERIFY(m_slices->getLayerImage(1));
        double highest = 0;
        for (int head = 0; head < 3; ++head) { // bands of 8 rows; rows 24 and 25 are in none
            double mass = 0;
            for (int y = head * 8; y < head * 8 + 8; y += 2)
                for (int x = 0; x < width; ++x)
                    mass += layerDots(1, true)(x, y) ? 2 : 0;
            highest = qMax(highest, mass);
        }
        LogCapture log;
        QVERIFY(!m_slices->calcDotCount(0)); // off
        QVERIFY(!m_slices->calcDotCount(2 * highest));
        QVERIFY(!m_slices->calcDotCount(2 * highest)); // reached, not passed
        QVERIFY(m_slices->calcDotCount(3 * highest - 1));
        QCOMPARE(log.count("func: CheckDropMass"), 1);
        QVERIFY(!m_slices->calcDotCount(highest)); // all three began anew
    }

    void testPatterns()
    {
        const auto inside = [](int x) { return x >= 10 && x < 80; };
        const auto eighth = [&](int x, int) { return inside(x) && x % 8 == 0; };
        QVERIFY(m_slices->getLineImage(0x01, 0xfe));
        QCOMPARE(inMemory([&](int x, int y) { return inside(x) && !eighth(x, y); }, eighth), QString());
        for (int step : {7, INT_MAX, 0, -3}) {
            const int stride = step > 0 ? step : 100;
            m_slices->drawTestLines(-1, 0, step);
            const auto lines = [&](int x, int) { return inside(x) && (x - 10) % stride == 0; };
            QCOMPARE(inMemory([](int, int) { return false; }, lines), QString());
        }
    }
};

QTEST_GUILESS_MAIN(TestLayerImages)
#include "test_layer_images.moc"
