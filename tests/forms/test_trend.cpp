// The curves of a day: what is read from the sampled logs and what is passed over.

#include "forms/TrendData.h"
#include "forms/TrendForm.h"
#include "forms/TrendPlot.h"
#include "tests/forms/FormRig.h"

#include <QApplication>
#include <QDateTime>
#include <QDir>
#include <QLabel>
#include <QSignalSpy>
#include <QTest>

namespace
{
const QDateTime now(QDate(2026, 11, 21), QTime(12, 0));
const QString logs = "../.PeloraTemp/log/";

QByteArray stamp(const QDateTime &time)
{
    return time.toString("yy.MM.dd hh:mm:ss.z,").toLatin1();
}
QByteArray stamp(int minutesAgo)
{
    return stamp(now.addSecs(-60 * minutesAgo));
}
/// A whole line of temp.csv whose first zone reads `value` at a set-point of 60.
QByteArray temps(int value)
{
    return QByteArray::number(value) + ",60," + QByteArray("70,80,").repeated(trendTempZones - 1) + "\r\n";
}
QByteArray air(const char *first)
{
    return QByteArray(",") + first + ",2,3,4,5,6,65530," + "59000,2,3,4,5,6,,\r\n";
}
QString shown(const TrendCurve &curve)
{
    QStringList texts;
    for (int i = 0; i < trendBuckets; ++i) {
        const TrendBucket &bucket = curve.buckets[size_t(i)];
        if (bucket.isFilled)
            texts << QString("%1:%2-%3").arg(i).arg(bucket.low).arg(bucket.high);
    }
    return texts.join(' ');
}
} // namespace

class TestTrend : public QObject
{
    Q_OBJECT

    FormRig m_rig;
    static TrendData read() { return readTrends(now.toMSecsSinceEpoch()); }

private slots:
    void init()
    {
        QDir(logs).removeRecursively();
        QDir().mkpath(logs);
    }

    void nothing() { QVERIFY(!read().temps[0].hasData && !read().air[0].hasData && read().events.isEmpty()); }

    void leastAndMost()
    {
        writeFile(logs + "temp.csv1", stamp(1439) + temps(20) + stamp(10) + temps(61));
        writeFile(logs + "temp.csv",
                  stamp(9) + temps(64) + stamp(8) + temps(59) + stamp(7) + temps(62) + stamp(0) + temps(60));
        const TrendData data = read();
        QCOMPARE(shown(data.temps[0]), QString("0:20-20 285:61-61 286:59-64 287:60-60"));
        QCOMPARE(data.temps[0].newest()->set, 60);
        QCOMPARE(data.temps[trendTempZones - 1].newest()->last, 70);
    }

    void passedOver()
    {
        const QByteArray whole = temps(50);
        const QByteArray lines[] = {stamp(5) + "31,,31,,\r\n",               // the head line
                                    stamp(5) + whole.left(whole.size() / 2), // cut; the next goes on in it
                                    stamp(5) + whole + "\r\n",               //
                                    stamp(5) + "50,60,70,80\r\n",            // silent boards
                                    stamp(5) + whole.trimmed() + "1,\r\n",   // a column too many
                                    stamp(5) + QByteArray(whole).replace("80", "x"), //
                                    stamp(5) + QByteArray(whole).replace("80", "99999999999"),
                                    stamp(1441) + whole, // too old
                                    stamp(-1) + whole,   // the clock was ahead
                                    "26.13.21 11:55:00.0," + whole,
                                    "26.11.21 25:55:00.0," + whole,
                                    whole,
                                    QByteArray(100000, '1') + "\r\n",
                                    QByteArray(3, '\0') + "\r\n"};
        QByteArray log;
        for (const QByteArray &line : lines)
            log += line;
        writeFile(logs + "temp.csv", log);
        QVERIFY(!read().temps[0].hasData);
        writeFile(logs + "temp.csv", log + stamp(5) + whole);
        QCOMPARE(shown(read().temps[0]), QString("286:50-50"));
    }

    void airAndLevels()
    {
        writeFile(logs + "air.csv", stamp(1) + air("65036") + stamp(1) + air("12").left(20) + "\r\n");
        const TrendData data = read();
        QCOMPARE(shown(data.air[0]), QString("287:-500--500"));
        QCOMPARE(data.air[trendPressures - 1].newest()->last, -6);
        QCOMPARE(data.air[trendPressures].newest()->last, 59000);
    }

    void events()
    {
        QByteArray log;
        for (int i = 0; i < 1000; ++i)
            log += stamp(1000 - i) + "\"00000010\",\"door \"" + QByteArray::number(i) + "\"\"\r\n";
        writeFile(logs + "event.csv", stamp(3) + "no row\r\n" + log);
        const TrendData data = read();
        QVERIFY(data.events.size() <= 300);
        QCOMPARE(data.events.last().text, QString("door \"999\""));
    }

    void page()
    {
        const QDateTime present = QDateTime::currentDateTime();
        const QByteArray at = stamp(present.addSecs(-60));
        writeFile(logs + "temp.csv", at + temps(61));
        writeFile(logs + "event.csv", at + "\"00000010\",\"the door\"\r\n");
        FormRig::showWindow()->showWidgetInStacked(trendForm());
        auto *plot = trendForm()->findChild<TrendPlot *>("plotTemp");
        const auto *events = trendForm()->findChild<QLabel *>("label_events");
        const QString hint = events->text();
        QVERIFY(waitUntil([&] {
            QTest::mouseClick(plot, Qt::LeftButton, {}, QPoint(plot->width() - 34, 100));
            return events->text() != hint && events->text().contains("the door");
        }));
    }
};

FORM_TEST_MAIN(TestTrend)
#include "test_trend.moc"
