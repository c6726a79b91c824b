// Model files, whole and damaged.

#include "frame/Folders.h"
#include "printdata/ModelFile.h"
#include "printdata/Samples.h"

#include <QFile>
#include <QtTest>

namespace
{
const QByteArray settings = "modelMaterialName=蜡 A\nescaped=\\x8721\nlayerCnt=480\n";

QByteArray withField(int at, quint64 value, bool wide)
{
    QByteArray bytes = modelBytes(settings, png(40, 20, qRgb(200, 0, 0)), png(9, 7, qRgb(0, 200, 0)));
    if (wide)
        put64(&bytes, at, value);
    else
        put32(&bytes, at, qint32(value));
    return bytes;
}
} // namespace

class TestModelFile : public QObject
{
    Q_OBJECT
private slots:
    void wholeModel_data();
    void wholeModel();
    void damagedModel_data();
    void damagedModel();
    void damagedPicture_data();
    void damagedPicture();
    void sideFileCannotBeWritten();
    void names();

private:
    TestInstall m_install;
};

void TestModelFile::wholeModel_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("plain") << "ring.tzl";
    QTest::newRow("blank and quotes") << "a \"ring\" 'b'.tzl";
    QTest::newRow("Chinese") << "戒指.tzl";
    QTest::newRow("200 characters") << QString(196, 'x') + ".tzl";
}

void TestModelFile::wholeModel()
{
    QFETCH(QString, name);
    writeFile(modelPath(name),
              modelBytes(settings, png(40, 20, qRgb(200, 0, 0)), png(9, 7, qRgb(0, 200, 0))));
    writeFile(modelIniPath(name), "a longer text of an earlier model" + QByteArray(500, ' '));
    QPixmap icon(100, 100);
    QCOMPARE(GetModelBmpAndIni(modelPath(name), &icon), 0);
    QCOMPARE(readFile(modelIniPath(name)), settings);
    const ModelSettings read(name);
    QCOMPARE(read.value("modelMaterialName").toString(), QString("蜡 A"));
    QCOMPARE(read.value("escaped").toString(), QString("蜡"));

    QCOMPARE(icon.size(), QSize(100, 50));
    const QImage image = icon.toImage();
    QCOMPARE(qAlpha(image.pixel(2, 2)), 0); // black lets the page show
    QCOMPARE(image.pixel(60, 30), qRgb(200, 0, 0));

    QVERIFY(QFile::remove(modelIniPath(name)));
    QPixmap view;
    QCOMPARE(readModelView(modelPath(name), &view), 0);
    QCOMPARE(view.size(), QSize(9, 7));
    QVERIFY(!QFile::exists(modelIniPath(name)));
}

void TestModelFile::damagedModel_data()
{
    const QString header = "Read TzlHeader error";
    const QString text = "fread size != sizeof(m_PrintInfo) ";
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("log");
    QTest::newRow("empty") << QByteArray() << header;
    QTest::newRow("short") << modelBytes({}).left(83) << header;
    QTest::newRow("cut in the settings") << modelBytes(settings).left(100) << text;
    QTest::newRow("offset beyond") << withField(52, 1u << 30, true) << text;
    QTest::newRow("offset negative") << withField(52, quint64(-1), true) << text;
    QTest::newRow("length beyond") << withField(60, 1u << 30, true) << text;
    QTest::newRow("length 4 GiB") << withField(60, quint64(1) << 32, true) << text;
    QTest::newRow("length negative") << withField(60, quint64(-84), true) << text;
}

void TestModelFile::damagedModel()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, log);
    writeFile(modelPath("bad.tzl"), bytes);
    LogCapture lines;
    QPixmap pixmap(10, 10);
    QCOMPARE(GetModelBmpAndIni(modelPath("bad.tzl"), &pixmap), -1);
    QCOMPARE(lines.count(log), 1);
    QCOMPARE(readModelView(modelPath("bad.tzl"), &pixmap), -1);
    QVERIFY(!QFile::exists(modelIniPath("bad.tzl")));
    QVERIFY(QFile::remove(modelPath("bad.tzl")));
    QCOMPARE(GetModelBmpAndIni(modelPath("bad.tzl"), nullptr), -1);
    QCOMPARE(readModelView(modelPath("bad.tzl"), &pixmap), -1);
    QCOMPARE(lines.count("open file=model/bad.tzl error="), 2);
}

void TestModelFile::damagedPicture_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("iconWhite"); // else it is empty
    const QByteArray whole = withField(0, 0, false);
    QTest::newRow("cut") << whole.left(84 + settings.size() + 20) << true;
    QTest::newRow("offsets beyond") << withField(16, 1u << 30, true).left(200) << true;
    QTest::newRow("length negative") << withField(24, quint64(-5), false) << true;
    QTest::newRow("length 2 GiB") << withField(24, 0x7fffffff, false) << true;
    QTest::newRow("length 0") << withField(24, 0, false) << false;
    QTest::newRow("no picture") << modelBytes(settings, QByteArray(500, 'x'), "y") << false;
    QByteArray huge = "P1\n30000 30000\n1";
    QTest::newRow("pixels without end") << modelBytes(settings, huge, huge) << true;
}

void TestModelFile::damagedPicture()
{
    QFETCH(QByteArray, bytes);
    QFETCH(bool, iconWhite);
    writeFile(modelPath("picture.tzl"), bytes);
    LogCapture lines;
    QPixmap icon(10, 10);
    QCOMPARE(GetModelBmpAndIni(modelPath("picture.tzl"), &icon), 0);
    QCOMPARE(lines.count("picture of model/picture.tzl"), iconWhite ? 1 : 0);
    QCOMPARE(icon.isNull(), !iconWhite);
    QVERIFY(!iconWhite || icon.toImage().pixel(5, 5) == qRgb(255, 255, 255));
    QPixmap view;
    QCOMPARE(readModelView(modelPath("picture.tzl"), &view), 0);
}

void TestModelFile::sideFileCannotBeWritten()
{
    writeFile(modelPath("c.tzl"), modelBytes(settings, png(40, 20, qRgb(200, 0, 0))));
    QVERIFY(QDir().mkpath(modelIniPath("c.tzl")));
    LogCapture lines;
    QPixmap icon(20, 20);
    QCOMPARE(GetModelBmpAndIni(modelPath("c.tzl"), &icon), 0);
    QCOMPARE(lines.count("init model/c.tzl.ini error "), 1);
    QCOMPARE(icon.size(), QSize(20, 10));
}

void TestModelFile::names()
{
    for (const char *good : {"a.tzl", "log.tzl", "戒 \"1\".tzl", "..tzl"})
        QVERIFY2(isModelName(good), good);
    for (const char *bad : {"", ".", "..", "../a", "a/b", "a\\b", "log", "historyicon"})
        QVERIFY2(!isModelName(bad), bad);
}

QTEST_MAIN(TestModelFile)
#include "test_model_file.moc"
