// Model files, whole and damaged.

#include "frame/Folders.h"
#include "printdata/ModelFile.h"
#include "printdata/Samples.h"

#include <QBuffer>
#include <QtTest>

class TestModelFile : public QObject
{
    Q_OBJECT
    TestInstall m_install;
    const QByteArray m_text = "modelMaterialName=蜡 A\nescaped=\\x8721\nlayerCnt=480\n";

    static QByteArray png(int width, int height, Qt::GlobalColor colour)
    {
        QImage image(width, height, QImage::Format_RGB32);
        image.fill(colour);
        for (int i = 0; i < 16; ++i)
            image.setPixel(i % 4, i / 4, qRgb(0, 0, 0));
        QBuffer buffer;
        image.save(&buffer, "PNG");
        return buffer.data();
    }
    QByteArray whole() const { return modelBytes(m_text, png(40, 20, Qt::red), png(9, 7, Qt::blue)); }

private slots:
    void wholeModel()
    {
        writeFile(modelPath("a.tzl"), whole());
        QPixmap view, icon(100, 100);
        QCOMPARE(readModelView(modelPath("a.tzl"), &view), 0);
        QCOMPARE(view.size(), QSize(9, 7));
        QVERIFY(!QFile::exists(modelIniPath("a.tzl")));
        writeFile(modelIniPath("a.tzl"), QByteArray(500, 'x')); // of an earlier model
        QCOMPARE(GetModelBmpAndIni(modelPath("a.tzl"), &icon), 0);
        QCOMPARE(readFile(modelIniPath("a.tzl")), m_text);
        QCOMPARE(ModelSettings("a.tzl").value("modelMaterialName").toString(), QString("蜡 A"));
        QCOMPARE(ModelSettings("a.tzl").value("escaped").toString(), QString("蜡"));
        QCOMPARE(icon.size(), QSize(100, 50));
        QCOMPARE(qAlpha(icon.toImage().pixel(2, 2)), 0); // black lets the page show
        QCOMPARE(icon.toImage().pixel(60, 30), qRgb(255, 0, 0));
    }

    void damagedModel()
    {
        const QString header = "Read TzlHeader error";
        const QString text = "fread size != sizeof(m_PrintInfo) ";
        const QVector<QPair<QByteArray, QString>> rows{{"", header},
                                                       {whole().left(83), header},
                                                       {whole().left(100), text},
                                                       {with64(whole(), 52, quint64(-1)), text},
                                                       {with64(whole(), 60, quint64(1) << 32), text},
                                                       {with64(whole(), 60, quint64(-84)), text}};
        for (const auto &[bytes, line] : rows) {
            LogCapture log;
            QPixmap pixmap(10, 10);
            writeFile("model/bad.tzl", bytes);
            QCOMPARE(GetModelBmpAndIni("model/bad.tzl", &pixmap), -1);
            QCOMPARE(log.count(line), 1);
            QCOMPARE(readModelView("model/bad.tzl", &pixmap), -1);
            QVERIFY(!QFile::exists("model/bad.tzl.ini"));
        }
    }

    void damagedPicture()
    {
        const QByteArray manyPixels = "P1\n30000 30000\n1";
        for (const QByteArray &bytes : {whole().left(160), with64(whole(), 16, 1 << 30),
                                        with64(whole(), 16, quint64(-1)), with32(whole(), 24, quint32(-5)),
                                        with32(whole(), 24, 0x7fffffff), modelBytes(m_text, manyPixels)}) {
            LogCapture log;
            QPixmap icon(10, 10);
            writeFile("model/a.tzl", bytes);
            QCOMPARE(GetModelBmpAndIni("model/a.tzl", &icon), 0);
            QCOMPARE(log.count("picture of model/a.tzl"), 1);
            QCOMPARE(icon.toImage().pixel(5, 5), qRgb(255, 255, 255));
        }
    }
};

QTEST_MAIN(TestModelFile)
#include "test_model_file.moc"
