// From a mesh to layer files: what the packer writes, what the slicer makes of it, and what neither accepts.
#include "ToolRig.h"

#include <QDir>
#include <QSettings>
#include <QtEndian>
#include <QtTest>
#include <array>
#include <cmath>

namespace
{
// A bed of 400 x 400 dots with 20 blank columns at each side.
constexpr int rows = 400, width = 440;
const QStringList smallBed{"--pixels-x", "400", "--pixels-y", "400"};
constexpr double columnMm = 25.4 / 600, rowMm = 0.1688 / 4;

template <typename T> T at(const QByteArray &bytes, int offset)
{
    return qFromLittleEndian<T>(bytes.constData() + offset);
}

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
    void modelFile();
    void meshFormats_data();
    void meshFormats();
    void refused_data();
    void refused();
    void areas();
    void supportUnderOverhang();
    void cavityAndOverlap();
    void sameBytesEachTime();
    void lines();
    void faults();
    void damagedModels_data();
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

void TestPackSlice::modelFile()
{
    m_rig.write("named.stl", table());
    const QString name = QString::fromUtf8("环 \"a\", b=c");
    const QByteArray file = m_rig.read(m_rig.model(
        "named.stl", {"--name", name, "--wait-x", "50", "--machine-type", "Other", "--pass-cnt", "8"}));
    QVERIFY(file.size() > 84);
    for (int offset : {16, 28}) {
        const QImage picture =
            QImage::fromData(file.mid(int(at<quint64>(file, offset)), at<qint32>(file, offset + 8)), "PNG");
        QVERIFY2(picture.width() >= 256 && picture.width() == picture.height(),
                 qPrintable(QString::number(offset)));
        const QColor middle = picture.pixelColor(picture.rect().center());
        QVERIFY2(middle.red() > middle.blue() + 40, qPrintable(middle.name())); // the part, in amber
        if (offset == 16)
            QCOMPARE(picture.pixel(0, 0), qRgb(0, 0, 0));
    }
    m_rig.write("table.ini", file.mid(int(at<quint64>(file, 52)), int(at<quint64>(file, 60))));
    const QSettings settings(m_rig.path("table.ini"), QSettings::IniFormat);
    const QMap<QString, QVariant> expected{{"machineType", "Other"},
                                           {"waitXTimeout", 50},
                                           {"layerHeight", 0.032},
                                           {"dpiX", 600},
                                           {"dpiY", 1203.7915},
                                           {"pixelsX", 6968},
                                           {"pixelsY", 10560},
                                           {"extraBlankPixel", 20},
                                           {"passCnt", 8},
                                           {"layerCnt", 32 + 4},
                                           {"extentX", 6},
                                           {"extentY", 6},
                                           {"extentZ", 1},
                                           {"modelName", name},
                                           {"PrintModeName", "Fine"},
                                           {"printModeName", "Fine"}};
    for (auto entry = expected.begin(); entry != expected.end(); ++entry)
        if (entry.value().type() == QVariant::String)
            QCOMPARE(settings.value(entry.key()).toString(), entry.value().toString());
        else
            QCOMPARE(settings.value(entry.key()).toDouble(), entry.value().toDouble());
    // 4 x 6 x 0.6 and 6 x 6 x 0.4 mm3 of structure; 2 x 6 x 0.6 mm3 under the lid; wax has 0.95 g/cm3.
    QVERIFY(std::fabs(settings.value("modelMaterial").toDouble() - 0.0274) < 0.001);
    QVERIFY(std::fabs(settings.value("supportMaterial").toDouble() - 0.0068) < 0.001);
    QVERIFY(settings.value("printTime").toDouble() > 36 * 4);
    QVERIFY(!settings.value("modelMaterialName").toString().isEmpty());
}

void TestPackSlice::meshFormats_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("obj") << "tetra.obj"
                         << QByteArray("v 0 0 0\nv 5 0 0\nv 0 5 0\nv 0 0 5\n"
                                       "f 1 3 2\nf 1 2 4\nf 1 4 3\nf 2 3 4\n");
    QTest::newRow("ply")
        << "tetra.ply"
        << QByteArray("ply\nformat ascii 1.0\nelement vertex 4\nproperty float x\nproperty float y\n"
                      "property float z\nelement face 4\nproperty list uchar int vertex_index\n"
                      "end_header\n0 0 0\n5 0 0\n0 5 0\n0 0 5\n3 0 2 1\n3 0 1 3\n3 0 3 2\n3 1 2 3\n");
    QTest::newRow("3mf") << "tetra.3mf" << QByteArray();
    QTest::newRow("stl in capitals") << "BOX.STL" << stlOfBoxes({{0, 0, 0, 5, 5, 5}});
}

void TestPackSlice::meshFormats()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, bytes);
    if (bytes.isEmpty())
        QVERIFY(QFile::copy(QString(TEST_DATA "/") + name, m_rig.path(name)));
    else
        m_rig.write(name, bytes);
    const ToolRun run = m_rig.pack({name, "--out", "format.tzl"});
    QVERIFY2(run.code == 0, run.err);
    QVERIFY2(run.out.contains("5.00 x 5.00 x 5.00 mm"), run.out);
}

void TestPackSlice::refused_data()
{
    QTest::addColumn<QByteArray>("mesh");
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QString>("says");
    const float nan = std::nanf("");
    QTest::newRow("empty") << QByteArray() << QStringList() << "cannot be read|holds no triangle";
    QTest::newRow("no triangles") << QByteArray(84, '\0') << QStringList()
                                  << "cannot be read|holds no triangle";
    QTest::newRow("rubbish") << QByteArray(300, '\x7f') << QStringList()
                             << "cannot be read|holds no triangle";
    QTest::newRow("cut") << table().left(600) << QStringList() << "cannot be read|holds no triangle";
    QTest::newRow("nan") << stlOfBoxes({{0, 0, 0, nan, 5, 5}}) << QStringList() << "no number";
    QTest::newRow("too wide") << stlOfBoxes({{0, 0, 0, 17.5f, 5, 5}}) << smallBed << "does not fit";
    QTest::newRow("too deep") << table() << (smallBed + QStringList{"--scale", "3"}) << "does not fit";
    QTest::newRow("four layers") << stlOfBoxes({{0, 0, 0, 5, 5, 0.128f}}) << QStringList{"--raft", "0"}
                                 << "4 layers";
    QTest::newRow("flat") << stlOfBoxes({{0, 0, 1, 5, 5, 1}}) << QStringList() << "layers";
    QTest::newRow("pass count") << table() << QStringList{"--pass-cnt", "6"} << "4, 8 or 12";
    QTest::newRow("no height") << table() << QStringList{"--layer-height", "0"} << "layer-height";
    QTest::newRow("no target") << table() << QStringList{"--out", "no/such/folder.tzl"} << "folder.tzl";
    QTest::newRow("unknown option") << table() << QStringList{"--colour"} << "colour";
}

void TestPackSlice::refused()
{
    QFETCH(QByteArray, mesh);
    QFETCH(QStringList, options);
    QFETCH(QString, says);
    m_rig.write("refused.stl", mesh);
    const ToolRun run = m_rig.pack(QStringList{"refused.stl"} + options);
    QCOMPARE(run.code, 1);
    QVERIFY2(QString::fromUtf8(run.err).contains(QRegularExpression(says)), run.err);
    QVERIFY(!QFile::exists(m_rig.path("refused.tzl")));
}

void TestPackSlice::areas()
{
    m_rig.write("cylinder.stl", stlOfCylinder(5, 0.4f, 200));
    const QString model =
        m_rig.model("cylinder.stl", smallBed + QStringList{"--raft", "0", "--layer-height", "0.05"});
    QCOMPARE(m_rig.slice(model, "areas").code, 0);
    const double expected = M_PI * 25 / (columnMm * rowMm);
    for (int layer = 1; layer <= 8; ++layer) {
        const QImage structure = m_rig.layer("areas", 'm', layer, width, rows);
        QVERIFY(!structure.isNull());
        QVERIFY2(std::fabs(dots(structure) / expected - 1) < 0.002,
                 qPrintable(QString::number(dots(structure))));
        QCOMPARE(dots(m_rig.layer("areas", 's', layer, width, rows)), 0);
        // In the middle of the bed, round to within a dot.
        QVERIFY(structure.pixelIndex(220 - 117, 200) == 1 && structure.pixelIndex(219 + 117, 200) == 1);
        QVERIFY(structure.pixelIndex(220 - 120, 200) == 0 && structure.pixelIndex(219 + 120, 200) == 0);
        QVERIFY(structure.pixelIndex(220, 200 - 118) == 1 && structure.pixelIndex(220, 200 - 120) == 0);
    }
    QVERIFY(!QFile::exists(m_rig.path("areas/slice_s9")));
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

void TestPackSlice::lines()
{
    const ToolRun run = m_rig.slice(m_table, "lines");
    float progress = 0;
    int layer = -1, of = 0;
    for (const QByteArray &line : run.out.split('\n')) {
        float nextProgress = progress;
        int nextLayer = layer;
        if (line.startsWith("progress:"))
            QCOMPARE(std::sscanf(line.constData(), "%*s%f", &nextProgress), 1);
        else if (!line.isEmpty())
            QVERIFY2(std::sscanf(line.constData(), "%*s%d/%d", &nextLayer, &of) == 2 && of == tableLayers,
                     line);
        QVERIFY(nextProgress >= progress && nextLayer >= layer);
        QVERIFY2(nextLayer < 0 || nextProgress == 1.0f, run.out);
        progress = nextProgress;
        layer = nextLayer;
    }
    QCOMPARE(layer, tableLayers);
    QProcess version;
    version.start(LAMOREL, {"-V"});
    QVERIFY(version.waitForFinished());
    QCOMPARE(version.readAll(), QByteArray("Lamorel vesion: 1.3.2\n"));
    QCOMPARE(version.exitCode(), 0);
}

void TestPackSlice::faults()
{
    const auto has = [&](const QString &file) { return QFile::exists(m_rig.path(file)); };
    const ToolRun died = m_rig.slice(m_table, "die", "die:9");
    QVERIFY(died.code == 3 && died.out.endsWith("slice: 8/27\n"));
    QVERIFY(has("die/slice_s8") && !has("die/slice_m9") && !has("die/slice_s9"));

    QCOMPARE(m_rig.slice(m_table, "damage", "damage:5").code, 0);
    for (int layer = 1; layer <= tableLayers; ++layer) {
        QCOMPARE(m_rig.layer("damage", 'm', layer, width, rows).isNull(), layer == 5);
        QVERIFY(!m_rig.layer("damage", 's', layer, width, rows).isNull());
    }
    const ToolRun rubbish = m_rig.slice(m_table, "rubbish", "rubbish");
    QVERIFY(rubbish.code == 0 && rubbish.out.endsWith("\nslice: 27/27\n") &&
            rubbish.out.contains("slice: ?"));

    QProcess stalled;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("PELORA_SLICER_FAULT", "stall:9");
    stalled.setProcessEnvironment(environment);
    stalled.start(LAMOREL, {"-X", m_rig.path(m_table), "-O", m_rig.path("stall")});
    QByteArray out;
    QTRY_VERIFY((out += stalled.readAll()).contains("slice: 8/27"));
    QVERIFY(!stalled.waitForFinished(200) && !has("stall/slice_m9"));
    stalled.kill();
    QVERIFY(stalled.waitForFinished());

    QVERIFY(m_rig.slice(m_table, "unknown", "explode").err.contains("no such fault"));
}

void TestPackSlice::damagedModels_data()
{
    QTest::addColumn<int>("offset");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("length");
    const QByteArray huge(8, '\xff'), big("\0\0\0\0\0\0\0\x7f", 8);
    QTest::newRow("empty") << 0 << QByteArray() << 0;
    QTest::newRow("83 bytes") << 0 << QByteArray() << 83;
    QTest::newRow("cut in the mesh") << 0 << QByteArray() << -1;
    QTest::newRow("mark") << 0 << QByteArray("X") << -2;
    QTest::newRow("version") << 8 << QByteArray("\x02") << -2;
    QTest::newRow("checksum") << 12 << QByteArray("\x01\x02\x03\x04") << -2;
    for (int offset : {40, 52, 60, 68}) {
        QTest::addRow("at %d all ones", offset) << offset << huge << -2;
        QTest::addRow("at %d far away", offset) << offset << big << -2;
        QTest::addRow("at %d zero", offset) << offset << QByteArray(8, '\0') << -2;
    }
}

void TestPackSlice::damagedModels()
{
    QFETCH(int, offset);
    QFETCH(QByteArray, bytes);
    QFETCH(int, length);
    QByteArray file = m_rig.read(m_table);
    file.replace(offset, bytes.size(), bytes);
    m_rig.write("damaged.tzl", length == -2   ? file
                               : length == -1 ? file.left(file.size() - 1)
                                              : file.left(length));
    const ToolRun run = m_rig.slice("damaged.tzl", "damaged");
    QCOMPARE(run.code, 1);
    QVERIFY2(run.err.startsWith("lamorel: damaged.tzl: "), run.err);
    QVERIFY(!QFile::exists(m_rig.path("damaged/slice_s1")));
}

QTEST_GUILESS_MAIN(TestPackSlice)
#include "test_pack_slice.moc"
