// From a mesh to layer files: what the packer writes, what the slicer makes of it, and what neither accepts.
#include "ToolRig.h"

#include <QDir>
#include <QtTest>
#include <array>
#include <cmath>

namespace
{
// A bed of 400 x 400 dots with 20 blank columns at each side.
constexpr int rows = 400, width = 440;
const QStringList smallBed{"--pixels-x", "400", "--pixels-y", "400"};
constexpr double columnMm = 25.4 / 600, rowMm = 0.1688 / 4;

/// 25 layers of 0.04 mm; the lid reaches over the foot by 2 mm to the right.
QByteArray table()
{
    return stlOfBoxes({{0, 0, 0, 4, 6, 0.6f}, {0, 0, 0.6f, 6, 6, 1}});
}
const QStringList tableOptions = smallBed + QStringList{"--layer-height", "0.04", "--raft", "2"};
constexpr int tableLayers = 27;
} // namespace

class TestPackSlice : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void meshFormats();
    void refused();
    void supportUnderOverhang();
    void cavityAndOverlap();
    void sameBytesEachTime();
    void damagedModels();

private:
    ToolRig m_rig;
    QString m_table; ///< the table, packed with tableOptions
};

void TestPackSlice::initTestCase()
{
    m_rig.write("table.stl", table());
    m_table = m_rig.model("table.stl", tableOptions);
    QVERIFY(QFile::exists(m_rig.path(m_table)));
}

void TestPackSlice::meshFormats()
{
    QVERIFY(QFile::copy(TEST_DATA "/tetra.3mf", m_rig.path("tetra.3mf")));
    m_rig.write("BOX.STL", stlOfBoxes({{0, 0, 0, 5, 5, 5}}));
    m_rig.write("tetra.obj", "v 0 0 0\nv 5 0 0\nv 0 5 0\nv 0 0 5\nf 1 3 2\nf 1 2 4\nf 1 4 3\nf 2 3 4\n");
    for (const char *name : {"tetra.3mf", "tetra.obj", "BOX.STL"}) {
        const ToolRun run = m_rig.pack({name, "--out", "format.tzl"});
        QVERIFY2(run.code == 0 && run.out.contains("5.00 x 5.00 x 5.00 mm"), run.err);
    }
}

void TestPackSlice::refused()
{
    struct Case {
        QByteArray mesh;
        QStringList options;
        const char *says;
    };
    const char *unreadable = "cannot be read|holds no triangle";
    for (const Case &it : {Case{"", {}, unreadable},
                           {QByteArray(84, '\0'), {}, unreadable},
                           {QByteArray(300, '\x7f'), {}, unreadable},
                           {table().left(600), {}, unreadable},
                           {stlOfBoxes({{0, 0, 0, std::nanf(""), 5, 5}}), {}, "no number"},
                           {stlOfBoxes({{0, 0, 0, 17.5f, 5, 5}}), smallBed, "does not fit"},
                           {table(), smallBed + QStringList{"--scale", "3"}, "does not fit"},
                           {stlOfBoxes({{0, 0, 0, 5, 5, 0.128f}}), {"--raft", "0"}, "4 layers"},
                           {table(), {"--pass-cnt", "6"}, "4, 8 or 12"},
                           {table(), {"--layer-height", "0"}, "layer-height"},
                           {table(), {"--out", "no/such/folder.tzl"}, "folder.tzl"}}) {
        m_rig.write("refused.stl", it.mesh);
        const ToolRun run = m_rig.pack(QStringList{"refused.stl"} + it.options);
        QVERIFY2(run.code == 1 && QString(run.err).contains(QRegularExpression(it.says)), run.err);
        QVERIFY(!QFile::exists(m_rig.path("refused.tzl")));
    }
}

void TestPackSlice::supportUnderOverhang()
{
    QCOMPARE(m_rig.slice(m_table, "table").code, 0);
    // The part is 6 mm wide, in the middle of columns 20 to 419: 142 columns, from 149.1 to 290.9.
    constexpr int left = 149, middle = 243, right = 290, row = 200;
    for (int layer = 1; layer <= tableLayers; ++layer) {
        const QImage structure = m_rig.layer("table", 'm', layer, width, rows);
        const QImage support = m_rig.layer("table", 's', layer, width, rows);
        const QByteArray name = "layer " + QByteArray::number(layer);
        const bool raft = layer <= 2, foot = layer <= 17;
        QVERIFY2(structure.pixelIndex(left + 1, row) == (raft ? 0 : 1), name);
        QVERIFY2(support.pixelIndex(left + 1, row) == (raft ? 1 : 0), name);
        QVERIFY2(structure.pixelIndex(right - 1, row) == (foot ? 0 : 1), name);
        QVERIFY2(support.pixelIndex(right - 1, row) == (foot ? 1 : 0), name);
        // The gap of one dot between foot and support, and nothing at all outside the part.
        int gap = 0;
        for (int x = middle - 4; x < middle + 4; ++x)
            gap += !structure.pixelIndex(x, row) && !support.pixelIndex(x, row);
        QCOMPARE(gap, foot && !raft ? 1 : 0);
        for (int x : {left - 2, right + 3})
            QVERIFY2(!structure.pixelIndex(x, row) && !support.pixelIndex(x, row), name);
        for (int y = 0; y < rows; ++y)
            for (int n = 0; n < structure.bytesPerLine(); ++n)
                QVERIFY((structure.constScanLine(y)[n] & support.constScanLine(y)[n]) == 0);
    }
}

void TestPackSlice::cavityAndOverlap()
{
    // Two boxes that overlap make a union; a third, turned inside out within, makes a hollow, which holds
    // support.
    QByteArray mesh = stlOfBoxes({{0, 0, 0, 6, 6, 1}, {4, 0, 0, 8, 6, 1}, {1, 2, 0.3f, 3, 4, 0.7f}});
    for (int n = 84 + 24 * 50; n < mesh.size(); n += 50) {
        const QByteArray first = mesh.mid(n + 12, 12), second = mesh.mid(n + 24, 12);
        mesh.replace(n + 12, 12, second).replace(n + 24, 12, first);
    }
    m_rig.write("hollow.stl", mesh);
    QCOMPARE(m_rig.slice(m_rig.model("hollow.stl", smallBed + QStringList{"--raft", "0"}), "hollow").code, 0);
    const double dot = columnMm * rowMm;
    const int hollow = dots(m_rig.layer("hollow", 'm', 16, width, rows));
    const int full = dots(m_rig.layer("hollow", 'm', 3, width, rows));
    QVERIFY2(std::fabs(full * dot - 48) < 0.4, qPrintable(QString::number(full * dot)));
    QVERIFY2(std::fabs((full - hollow) * dot - 4) < 0.1, qPrintable(QString::number((full - hollow) * dot)));
    QVERIFY(dots(m_rig.layer("hollow", 's', 16, width, rows)) * dot > 3.5);

    // A missing wall still gives a filled layer, not one that bleeds to the edge of the bed.
    const QByteArray box = stlOfBoxes({{0, 0, 0, 5, 5, 1}}).mid(84);
    m_rig.write("open.stl", stlOfTriangles(box.left(9 * 50) + box.mid(10 * 50)));
    QCOMPARE(m_rig.slice(m_rig.model("open.stl", smallBed), "open").code, 0);
    QVERIFY(dots(m_rig.layer("open", 'm', 20, width, rows)) * dot < 25.5);
}

void TestPackSlice::sameBytesEachTime()
{
    const QByteArray first = m_rig.read(m_table);
    QCOMPARE(m_rig.read(m_rig.model("table.stl", tableOptions)), first);
    for (const char *folder : {"once", "twice"})
        QCOMPARE(m_rig.slice(m_table, folder).code, 0);
    const QStringList names = QDir(m_rig.path("once")).entryList(QDir::Files);
    QCOMPARE(names.size(), 2 * tableLayers);
    for (const QString &name : names)
        QCOMPARE(m_rig.read("once/" + name), m_rig.read("twice/" + name));
}

void TestPackSlice::damagedModels()
{
    const QByteArray whole = m_rig.read(m_table);
    QList<QByteArray> damaged{"", whole.left(83), whole.left(whole.size() - 1)};
    const auto put = [&](int offset, const QByteArray &bytes) {
        damaged << QByteArray(whole).replace(offset, bytes.size(), bytes);
    };
    put(0, "X");                        // the mark
    put(8, "\x02");                     // the version
    put(12, "\x01\x02\x03\x04");        // the checksum
    for (int offset : {40, 52, 60, 68}) // where the parts lie and how long they are
        for (const QByteArray &number :
             {QByteArray(8, '\xff'), QByteArray(7, '\0') + '\x7f', QByteArray(8, '\0')})
            put(offset, number);
    for (const QByteArray &file : damaged) {
        m_rig.write("damaged.tzl", file);
        const ToolRun run = m_rig.slice("damaged.tzl", "damaged");
        QVERIFY2(run.code == 1 && run.err.startsWith("lamorel: damaged.tzl: "), run.err);
        QVERIFY(!QFile::exists(m_rig.path("damaged/slice_s1")));
    }
}

QTEST_GUILESS_MAIN(TestPackSlice)
#include "test_pack_slice.moc"
