// The small picture of the layer being printed: what it shows of the layer files, and when.

#include "engine/XdmControl.h"
#include "forms/HomeForm.h"
#include "forms/LayerPicture.h"
#include "forms/MaterialForm.h"
#include "frame/Folders.h"
#include "printdata/LayerThumbnail.h"
#include "tests/forms/FormRig.h"

#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QTest>

namespace
{
constexpr int columns = 64, rows = 64, stride = columns / 8;
const QString model = "ring.tzl";

/// A layer file with the pixels of `area` set; the file holds the bottom row first.
void writeLayer(char kind, int layer, const QRect &area)
{
    QByteArray bits(stride * rows, '\0');
    for (int y = area.top(); y <= area.bottom(); ++y)
        for (int x = area.left(); x <= area.right(); ++x)
            bits[(rows - 1 - y) * stride + x / 8] = char(bits[(rows - 1 - y) * stride + x / 8] | 1 << x % 8);
    writeFile(layerFile(sliceFolder(model), kind, layer), layerAround(packed(bits)));
}

LayerThumbnail thumbnail(int columnCount = columns)
{
    return LayerThumbnail({sliceFolder(model), columnCount, rows, 1, Qt::red, Qt::blue});
}

QSize size()
{
    return {40, 40};
}

/// Where something is painted, and whether it is of one colour.
QRect painted(const QImage &picture, QRgb colour)
{
    QRect area;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            if (qAlpha(picture.pixel(x, y)) && (picture.pixel(x, y) & 0xffffff) == (colour & 0xffffff))
                area |= QRect(x, y, 1, 1);
    return area;
}
} // namespace

class TestLayerPicture : public QObject
{
    Q_OBJECT

    FormRig m_rig;

private slots:
    void initTestCase()
    {
        FormRig::addModel(model);
        QDir().mkpath(sliceFolder(model));
    }

    void colours()
    {
        writeLayer('m', 1, {8, 0, 24, 48});   // left and above
        writeLayer('s', 1, {32, 16, 24, 48}); // right and below
        const QImage picture = thumbnail().picture(1, size());
        const QRect structure = painted(picture, qRgb(255, 0, 0));
        const QRect support = painted(picture, qRgb(0, 0, 255));
        QVERIFY(structure.left() < 9 && support.right() > 30);
        QVERIFY(structure.right() < support.left() && structure.top() < 6 && support.bottom() > 34);
        QVERIFY(qAbs(structure.height() - support.height()) <= 2 && structure.width() == support.width());
    }

    void scaleStays()
    {
        writeLayer('m', 1, {0, 0, 64, 64});
        writeLayer('s', 1, {});
        writeLayer('m', 2, {16, 16, 16, 16});
        writeLayer('s', 2, {});
        LayerThumbnail job = thumbnail();
        QVERIFY(painted(job.picture(1, size()), qRgb(255, 0, 0)).width() > 34);
        QVERIFY(painted(job.picture(2, size()), qRgb(255, 0, 0)).width() < 12); // not blown up
    }

    void thinAndEmpty()
    {
        writeLayer('m', 1, {});
        writeLayer('s', 1, {});
        QVERIFY(painted(thumbnail().picture(1, size()), 0).isEmpty());
        writeLayer('m', 1, {63, 0, 1, 64}); // the last pixel of each row
        QVERIFY(!painted(thumbnail().picture(1, {400, 400}), qRgb(255, 0, 0)).isEmpty());
    }

    void notToBeHad()
    {
        writeLayer('m', 7, {0, 0, 64, 64});
        QVERIFY(thumbnail().picture(7, size()).isNull()); // no support
        writeFile(layerFile(sliceFolder(model), 's', 7), "damaged");
        QVERIFY(thumbnail().picture(7, size()).isNull());
        QVERIFY(thumbnail(0).picture(7, size()).isNull());
    }

    void onThePage()
    {
        FormRig::showWindow();
        FormRig::press("pushButton_home");
        auto *picture = FormRig::find<LayerPicture>("layerPicture");
        QVERIFY(!picture->isVisible());
        writeLayer('m', 5, {0, 0, 32, 64});
        writeLayer('s', 5, {32, 0, 32, 64});
        xdmControl()->setPrintStatus(PrintStatusPrinting);
        FormRig::setJobState("Tips", "");
        picture->look();
        QVERIFY(!picture->isVisible()); // before the first pass
        FormRig::setJobState("Tips", "5-0 10");
        picture->look();
        picture->look(); // while the worker is at it
        QVERIFY(picture->isVisible());
        QTRY_COMPARE(picture->layer(), 5);
        FormRig::setJobState("Tips", "6-3 10"); // fell behind: the last one stays
        picture->look();
        QTest::qWait(50);
        QCOMPARE(picture->layer(), 5);
        xdmControl()->setPrintStatus(PrintStatusIdle);
        picture->look();
        QVERIFY(!picture->isVisible() && picture->layer() == -1);
    }

    void needs()
    {
        // the queue holds one model that takes 12.5 g of structure wax and 3 g of support wax
        const struct {
            quint32 structure, support;
            bool isJob;
            QStringList shown;
        } cases[] = {{2, 9, false, {"3 g / 9 g", "够", "13 g / 2 g", "缺 11 g"}},
                     {0, 0, true, {"2 g / 0 g", "缺 2 g", "7 g / 0 g", "缺 7 g"}}}; // half is printed
        mainWindow()->showWidgetInStacked(materialForm());
        FormRig::setJobState("PrintLayer", 5);
        FormRig::setJobState("SumLayer", 10);
        for (const auto &row : cases) {
            xdmControl()->setPrintStatus(row.isJob ? PrintStatusPrinting : PrintStatusIdle);
            Bottles bottles;
            bottles.cards[2].rest_weight = 1000; // no card: nothing is known to be there
            bottles.cards[3].type[0] = bottles.cards[4].type[0] = 'M';
            bottles.cards[3].rest_weight = row.support;
            bottles.cards[4].rest_weight = row.structure;
            materialForm()->refresh(bottles);
            QStringList shown;
            for (const QLabel *label : FormRig::find<QWidget>("jobNeeds")->findChildren<QLabel *>())
                if (label->property("role") != "caption")
                    shown << label->text();
            QCOMPARE(shown, row.shown);
        }
        xdmControl()->setPrintStatus(PrintStatusIdle);
    }
};

FORM_TEST_MAIN(TestLayerPicture)
#include "test_layer_picture.moc"
