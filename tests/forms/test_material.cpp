// The material page: what it shows of the bottles, and what a touch tells and does. Levels of the home page.

#include "forms/BottleBar.h"
#include "forms/HomeForm.h"
#include "forms/MaterialForm.h"
#include "forms/MsgForm.h"
#include "material/BackgroundService.h"
#include "tests/forms/FormRig.h"

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QTimer>

namespace
{
CardInfo card(const char *type, quint32 weight, quint32 rest, quint32 date = 0, const char *serial = "")
{
    CardInfo info;
    memcpy(info.type, type, qstrnlen(type, sizeof info.type));
    memcpy(info.sn, serial, qstrnlen(serial, sizeof info.sn));
    info.weight = weight;
    info.rest_weight = rest;
    info.date = date;
    return info;
}

Bottles table()
{
    Bottles bottles;
    bottles.cards = {CardInfo(),
                     CardInfo(),
                     card("MTS7205", 3000, 1),
                     card("MTS7205", 0, 2100),
                     CardInfo(),
                     card("MTJ7401-long", 4600, 0)}; // no end mark in its twelve bytes
    return bottles;
}
} // namespace

class TestMaterial : public QObject
{
    Q_OBJECT

    FormRig m_rig;
    template <class T> T *part(const char *name, int n)
    {
        return materialForm()->findChild<T *>(QString("%1_%2").arg(name).arg(n));
    }
    QString shown(int n)
    {
        const auto *bar = part<QProgressBar>("progressBar", n);
        const QString texts = part<QLabel>("label_status", n)->text() + '|' +
                              part<QLabel>("label_type", n)->text() + '|' +
                              part<QLabel>("label_rest", n)->text() + '|';
        if (bar->isHidden() && !bar->isEnabled())
            return texts + "no bar";
        return texts + QString("%1/%2").arg(bar->value()).arg(bar->maximum());
    }
    /// Touches bottle n and answers; the buttons that were offered and the table that was shown.
    QString touch(int n, const QString &answer, QString *text = nullptr)
    {
        QString offered;
        QTimer::singleShot(0, [&] {
            for (const char *name : {"pushButton_No", "pushButton_Yes", "pushButton_close"}) {
                const auto *button = msgForm()->findChild<QPushButton *>(name);
                offered += button->isVisible() ? button->text() + ' ' : QString();
            }
            if (text)
                *text = FormRig::message();
            msgForm()->findChild<QPushButton *>(answer)->click();
        });
        part<QPushButton>("pushButton", n)->click();
        return offered.trimmed();
    }

private slots:
    void initTestCase() { FormRig::showWindow(); }

    void levels()
    {
        const quint32 cases[][5] = {// weight, rest, grams when full; maximum and value of the bar
                                    {0, 0, 3600, 3600, 0},
                                    {0, 1, 3000, 3000, 30},
                                    {2050, 3, 3600, 2050, 20},
                                    {2000, 2100, 3600, 2000, 2000},
                                    {0xffffffff, 0xffffffff, 3600, 0x7fffffff, 0x7fffffff},
                                    {50, 1, 3600, 50, 1}};
        for (const auto &row : cases) {
            const BottleBar bar = bottleBar(card("", row[0], row[1]), row[2]);
            QVERIFY2(bar.maximum == int(row[3]) && bar.value == int(row[4]),
                     qPrintable(QString("%1 of %2").arg(row[1]).arg(row[0])));
        }
        homeForm()->showBottles(table());
        const auto *bar = homeForm()->findChild<QProgressBar *>("sup_progressBar");
        QCOMPARE(QString("%1/%2").arg(bar->value()).arg(bar->maximum()), QString("2100/3600"));
    }

    void rows()
    {
        materialForm()->refresh(table());
        QCOMPARE(shown(3), QString("已安装|MTS7205|1 g|30/3000"));
        QCOMPARE(shown(4), QString("使用中|MTS7205|2100 g|2100/3000"));
        QCOMPARE(shown(5), QString("缺失|未安装||no bar"));
        QCOMPARE(shown(6), QString("使用中|MTJ7401-long|0 g|0/4600"));
    }

    void refreshes()
    {
        const QString missing = "缺失|未安装||no bar";
        FormRig::press("pushButton_fileList");
        materialForm()->refresh(table());
        homeForm()->msecEvent(); // whichever page is up
        QCOMPARE(shown(3), missing);
        materialForm()->refresh(table());
        FormRig::press("pushButton_material");
        QVERIFY(materialForm()->isVisible());
        QCOMPARE(shown(3), missing);
    }

    void details()
    {
        const struct {
            CardInfo card;
            QStringList values; ///< rest, percent, batch, expiry
        } cases[] = {
            {card("MTJ7401", 3000, 540, 20271130, "26B-7"), {"540 g", "18.0 %", "26B-7", "2027-11-30"}},
            {card("MTJ7401", 0, 1500, 20270992, "1234567890123456"),
             {"1500 g", "50.0 %", "1234567890123456", "20270992"}},
            {card("MTJ7401", 1000, 0, 0, "%1<b>&"), {"0 g", "0.0 %", "%1&lt;b&gt;&amp;", "0"}}};
        const QString captions[] = {"剩余重量", "剩余比例", "批号", "过期日期", "型号", "材料状态"};
        for (const auto &row : cases) {
            Bottles bottles;
            bottles.cards[4] = row.card;
            materialForm()->refresh(bottles);
            QString text;
            touch(5, "pushButton_No", &text);
            const QStringList values = row.values + QStringList{"MTJ7401", "已安装"};
            QString expected = "<table width=\"100%\">";
            for (int i = 0; i < 6; ++i)
                expected += "<tr><td>" + captions[i] + "</td><td align=\"right\">" + values[i] + "</td></tr>";
            QCOMPARE(text, expected + "</table>");
            const int height = msgForm()->findChild<QLabel *>("label_text")->heightForWidth(450);
            QVERIFY(height > 6 * 30 && height < 6 * 60); // six lines, not their source
        }
    }

    void activates()
    {
        const struct {
            int bottle;
            const char *answer, *offered;
            int strUse, supUse;
        } cases[] = {{3, "pushButton_Yes", "关闭 激活", 5, 2},
                     {5, "pushButton_Yes", "关闭 激活", 4, 3},
                     {3, "pushButton_No", "关闭 激活", 5, 3},
                     {4, "pushButton_close", "关闭", 5, 3},
                     {6, "pushButton_close", "关闭", 5, 3}};
        for (const auto &row : cases) {
            backgroundService()->setBottleInUse(5, 3);
            materialForm()->refresh();
            QCOMPARE(touch(row.bottle, row.answer), QString(row.offered));
            const Bottles now = backgroundService()->cards();
            QCOMPARE(qMakePair(now.strUse, now.supUse), qMakePair(quint8(row.strUse), quint8(row.supUse)));
        }
    }
};

FORM_TEST_MAIN(TestMaterial)
#include "test_material.moc"
