// The comparison finds every dot that is not where the slicer put it, and nothing else.

#include "LayerCompare.h"
#include "SlicedLayer.h"
#include "common/PassFile.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>
#include <functional>
#include <random>

namespace
{
constexpr int width = 96; // 66 + 2 * 10 columns, rounded up to whole words
constexpr int layers = 6;

/// As the layer files are packed: deflated without the length that Qt puts before it.
QByteArray packed(const QByteArray &bytes)
{
    return qCompress(bytes).mid(4);
}

/// A model of random dots, its layer files, and its passes cut as the process prescribes.
struct Model {
    QTemporaryDir folder;
    int passCnt;
    int height;
    std::vector<PassRecord> passes;

    explicit Model(int passCount) : passCnt(passCount), height(40 * passCount)
    {
        QFile ini(path("model.ini"));
        ini.open(QIODevice::WriteOnly);
        ini.write(QString("pixelsX=66\npixelsY=%1\nextraBlankPixel=10\ndpiX=600\npassCnt=%2\n")
                      .arg(height)
                      .arg(passCnt)
                      .toUtf8());
        for (int layer = 1; layer <= layers; ++layer) {
            std::mt19937 random{unsigned(layer)};
            LayerBits bits[2] = {{width, height}, {width, height}};
            for (int i = 0; i < 800; ++i)
                bits[i / 400].set(int(random() % unsigned(height)), 10 + int(random() % 66));
            write("slice_m", layer, bits[0]);
            write("slice_s", layer, bits[1]);
            print(layer, bits);
        }
    }
    QString path(const QString &name) const { return folder.path() + "/" + name; }
    void write(const QString &name, int layer, const LayerBits &picture) const
    {
        QByteArray bits;
        for (int row = height - 1; row >= 0; --row)
            bits.append(reinterpret_cast<const char *>(picture.row(row)), picture.stride());
        const QByteArray inner = packed(bits), outer = packed(inner);
        QByteArray head(12, '\x77');
        for (const quint32 size : {quint32(outer.size()), quint32(inner.size())})
            head.append(reinterpret_cast<const char *>(&size), 4);
        QFile file(path(name + QString::number(layer)));
        file.open(QIODevice::WriteOnly);
        file.write(head + outer);
    }
    int phase(int pass, int layer) const
    {
        const int v = passCnt / 4;
        const QVector<QVector<int>> groups = {{0}, {0, 1}, {0, 2, 1}};
        const int b = groups[v - 1][layer % v];
        return QVector<int>{b, b + 2 * v, b + v, b + 3 * v}[pass];
    }
    void print(int layer, const LayerBits *bits)
    {
        const int shift = QVector<int>{0, 4, 1, 8, 5, 2, 6, 3, 7}[layer % 9];
        for (int number = 0; number < 4; ++number) {
            PassRecord pass;
            pass.forward = number & 1;
            pass.columnPitch = 25400.0 / 600;
            pass.z = 2000;
            pass.y = std::round(168.8 / passCnt * phase(number, layer) + 12000.0 - shift * 168.8);
            pass.width = width;
            pass.rows = geometry::barRows;
            for (HeadPass &head : pass.heads)
                head = {true, geometry::bedOriginX + (pass.forward ? 0 : (width - 1) * pass.columnPitch), 0};
            LayerBits cut[2] = {{width, geometry::barRows}, {width, geometry::barRows}};
            for (int n = 0; n < 2 * width * height / passCnt; ++n) {
                const int plane = n & 1, column = n / 2 % width, i = n / 2 / width;
                if (bits[plane].row(phase(number, layer) + i * passCnt)[column / 8] >> column % 8 & 1)
                    cut[plane].set(shift + i, pass.forward ? column : width - 1 - column);
            }
            pass.structure = SparsePlane::pack(cut[0].row(0), width, geometry::barRows, cut[0].stride());
            pass.support = SparsePlane::pack(cut[1].row(0), width, geometry::barRows, cut[1].stride());
            passes.push_back(pass);
        }
    }
    CompareResult compare(const QString &sequence = {}) const
    {
        QString error;
        writePasses(path("passes.bin"), passes, &error);
        CompareOptions options{path("passes.bin"), path("model.ini"), folder.path(), {}, 1};
        if (!sequence.isEmpty())
            options.sequence = readSequence(sequence);
        return compareLayers(options);
    }
};
using Change = std::function<void(Model &)>;
} // namespace
Q_DECLARE_METATYPE(Change)

class TestCompare : public QObject
{
    Q_OBJECT
private slots:
    void findsDifferences_data();
    void findsDifferences();
    void followsTheOrderOfPrinting();
    void saysWhatItCannotRead();
};

void TestCompare::findsDifferences_data()
{
    QTest::addColumn<int>("passCnt");
    QTest::addColumn<Change>("change");
    QTest::addColumn<int>("least"); // differing dots
    QTest::addColumn<int>("most");
    const auto row = [](const char *name, int least, int most, Change change, int passCnt = 4) {
        QTest::newRow(name) << passCnt << change << least << most;
    };
    row("equal, 4 passes", 0, 0, [](Model &) {});
    row(
        "equal, 8 passes", 0, 0, [](Model &) {}, 8);
    row(
        "equal, 12 passes", 0, 0, [](Model &) {}, 12);
    row("one dot a column on", 1, 16, [](Model &m) {
        uint8_t &byte = m.passes[5].structure.bytes[SparsePlane::entryHead];
        byte = byte & 0x80 ? uint8_t(byte >> 1) : uint8_t(byte << 1);
    });
    row("a dot fired twice", 100, 700, [](Model &m) {
        m.passes[6].structure = SparsePlane();
        m.passes[6].support = m.passes[4].support;
        m.passes[6].y = m.passes[4].y;
        m.passes[6].heads[0] = m.passes[4].heads[0];
    });
    row("a pass between two columns", 100, 700, [](Model &m) { m.passes[3].heads[0].firstX += 21; });
    row(
        "a pass a row off", 40, 700, [](Model &m) { m.passes[0].y += 21; }, 8);
    row("reverse fired as forward", 100, 700, [](Model &m) { m.passes[0].forward = true; });
    row("inks exchanged", 100, 900, [](Model &m) { std::swap(m.passes[1].structure, m.passes[1].support); });
    row("half a layer higher", 1, 1, [](Model &m) { m.passes[9].z += 15; });
    row("last layer not printed", 700, 800, [](Model &m) { m.passes.resize(m.passes.size() - 4); });
    row("a layer too many", 700, 800, [](Model &m) {
        for (size_t i = 0; i < 4; ++i)
            m.passes.push_back(PassRecord(m.passes[i]));
    });
}

void TestCompare::findsDifferences()
{
    QFETCH(int, passCnt);
    QFETCH(Change, change);
    QFETCH(int, least);
    QFETCH(int, most);
    Model model(passCnt);
    change(model);
    const CompareResult result = model.compare();
    QCOMPARE(result.error, QString());
    QVERIFY2(result.differing >= least && result.differing <= most,
             qPrintable(QString::number(result.differing)));
    QCOMPARE(result.equal(), most == 0);
    QVERIFY(result.dots > 500 * layers * 4 / passCnt);
}

void TestCompare::followsTheOrderOfPrinting()
{
    Model model(4);
    std::vector<PassRecord> order;
    for (int layer : {1, 2, 2, 4, 5, 4, 6}) {
        for (int pass = 0; pass < 4; ++pass)
            order.push_back(model.passes[size_t((layer - 1) * 4 + pass)]);
    }
    model.passes = order;
    QVERIFY(model.compare("1,2,2,4-5,4,6").equal());
    QVERIFY(model.compare("1,2,3,4-5,4,6").differing > 0);
    QVERIFY(model.compare("1,2,2,4-5,4").differing > 0);
    for (const char *bad : {"", "1,,2", "0", "5-4", "1-99999999", "x"})
        QCOMPARE(readSequence(bad), QVector<int>());
}

void TestCompare::saysWhatItCannotRead()
{
    // How many bytes stay; below 0, where 16 bytes of rubbish begin: another kind of passes, lengths of 4
    // GiB.
    for (const auto &[file, keep] : {std::pair{"model.ini", 0},
                                     {"passes.bin", 100},
                                     {"passes.bin", -1},
                                     {"slice_m3", 25},
                                     {"slice_s2", -12}}) {
        Model model(4);
        QVERIFY(model.compare().equal());
        QFile damaged(model.path(file));
        QVERIFY(damaged.open(QIODevice::ReadWrite));
        if (keep >= 0)
            damaged.resize(keep);
        else
            QVERIFY(damaged.seek(-keep - 1) && damaged.write(QByteArray(16, '\xFF')));
        damaged.close();
        const CompareResult result =
            compareLayers({model.path("passes.bin"), model.path("model.ini"), model.folder.path(), {}, 1});
        QVERIFY2(result.error.contains(file) && !result.equal(), qPrintable(result.error));
    }
}

QTEST_GUILESS_MAIN(TestCompare)
#include "test_compare.moc"
