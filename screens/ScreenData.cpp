#include "screens/ScreenData.h"

#include "events/EventHandler.h"
#include "events/SendEmail.h"
#include "frame/Folders.h"
#include "frame/JsonConfig.h"
#include "frame/RotatingLog.h"
#include "frame/SqliteUtil.h"
#include "printdata/LayerFile.h"
#include "printdata/PrintQueue.h"
#include "tests/forms/FormRig.h"

#include <QBuffer>
#include <QDateTime>
#include <QDir>
#include <QJsonDocument>
#include <QPainter>
#include <QtMath>
#include <functional>

namespace
{
constexpr int samplePeriodS = 300;
constexpr int samples = 24 * 3600 / samplePeriodS;
constexpr int tempZones = 56;
constexpr int layerPixels = 256;

const char *const waiting[] = {
    "calibration-pins",  "bracelet-link-x24", "impeller-88",
    "signet-oval",       "珍珠吊坠-v3",       "crown-bridge-4u",
    "pendant-leaf",      "cuff-links",        "a-very-long-name-of-a-part-from-the-office",
    "filigree-ring-17mm"};

/// A slow wave about `middle`, another one for each curve.
int wave(int sample, int curve, int middle, int height)
{
    return middle +
           qRound(height * qSin(sample / 17.0 + curve) + height / 3.0 * qSin(sample / 3.1 + 2 * curve));
}

QByteArray stamp(int sample)
{
    const QDateTime time = QDateTime::currentDateTime().addSecs(-(samples - sample) * samplePeriodS);
    return time.toString("yy.MM.dd hh:mm:ss.z,").toLatin1();
}

QByteArray tempLine(int sample)
{
    QByteArray line = stamp(sample);
    for (int zone = 0; zone < tempZones; ++zone) {
        const int set = sample < 90 ? 60 : 115 + zone / 7;
        const int warming = qMin(0, (sample - 100) * 6);
        line += QByteArray::number(wave(sample, zone, set, 2) + (sample < 90 ? 0 : qMax(-55, warming))) +
                ',' + QByteArray::number(set) + ',';
    }
    return line + "\r\n";
}

QByteArray airLine(int sample)
{
    QByteArray line = stamp(sample) + ',';
    for (int curve = 0; curve < 13; ++curve) {
        const int middle = curve < 6 ? -1400 : curve == 6 ? 3000 : 1800;
        line += QByteArray::number(quint16(wave(sample, curve, middle, 60))) + ',';
    }
    return line + ",\r\n";
}

QByteArray eventLine(int sample, quint32 id)
{
    return stamp(sample) + QString("\"%1\",\"%2\"\r\n")
                               .arg(id, 8, 16, QChar('0'))
                               .arg(EventHandler::eventMessage(id))
                               .toUtf8();
}
/// As FormRig's, but with all that the details page tells.
void addModel(const QString &name, const QByteArray &picture)
{
    const QByteArray settings =
        pictureSettings(layerPixels, layerPixels, 0, 4) +
        "printTime=9300\nmachineType=Pelora620\nlayerCnt=480\nextentX=21.4\nextentY=19.8\nextentZ=9.6\n"
        "PrintModeName=HD\nprintModeName=HD\n";
    writeFile("model/" + name, modelBytes(settings, picture, picture));
    addToQueue(name);
}

/// A layer file of what `paint` paints; the file holds the bottom row first.
void writeLayer(const QString &model, char kind, const std::function<void(QPainter *)> &paint)
{
    QImage image(layerPixels, layerPixels, QImage::Format_MonoLSB);
    image.fill(0);
    QPainter painter(&image);
    painter.setPen(QPen(Qt::color1, 26));
    paint(&painter);
    painter.end();
    QByteArray bits;
    for (int y = layerPixels - 1; y >= 0; --y)
        bits.append(reinterpret_cast<const char *>(image.constScanLine(y)), layerPixels / 8);
    writeFile(layerFile(sliceFolder(model), kind, jobLayer), layerAround(packed(bits)));
}
} // namespace

QImage ringPicture()
{
    QImage image(348, 348, QImage::Format_RGB32);
    image.fill(Qt::black);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(0xd8, 0xde, 0xe6), 5));
    painter.drawEllipse(QRectF(50, 120, 248, 200));
    painter.drawEllipse(QRectF(74, 142, 200, 156));
    painter.setBrush(QColor(0x46, 0x3a, 0x28));
    painter.setPen(QPen(QColor(0xf2, 0xa3, 0x3c), 5));
    painter.drawPolygon(QPolygonF({{174, 40}, {226, 100}, {174, 142}, {122, 100}}));
    return image;
}

Bottles bottles(const std::array<int, 4> &rests)
{
    Bottles result;
    for (size_t i = 0; i < rests.size(); ++i) {
        CardInfo &card = result.cards[i + 2];
        if (rests[i] < 0)
            continue;
        qstrcpy(card.type, i < 2 ? "MTS7205" : "MTJ7401");
        qstrcpy(card.sn, qPrintable(QString("26B1104-%1").arg(4711 + i * 13)));
        card.weight = 3000;
        card.rest_weight = quint32(rests[i]);
        card.date = 20271130;
    }
    return result;
}

void writeSettings()
{
    const QJsonObject counters{{"SystemTotalRunTime", 412.5},       {"PrintTotalTime", 6218.4},
                               {"SystemSingleRunTime", 71.3},       {"UsedStructMaterialWeight", 184.37},
                               {"UsedSupportMaterialWeight", 96.2}, {"PrintingTotalLayer", 1284096}};
    for (auto it = counters.begin(); it != counters.end(); ++it)
        useInfoConfig()->setValue(it.key(), it.value());
    const QJsonObject account{{"Host", "smtp.workshop.example"},
                              {"From", "printer-2@workshop.example"},
                              {"Password", "wax-and-ink"},
                              {"SslOnConnect", true},
                              {"Cc", "office@workshop.example; night@workshop.example"},
                              {"Ink", true},
                              {"Error", true}};
    emailConfig()->syncFile(QString::fromUtf8(QJsonDocument(account).toJson()));
    QJsonObject plan;
    const int daysAgo[] = {3, 6, 7, 1, 0, 2, 16, 5, 12, 27, 31, 4};
    for (int row = 0; row < 12; ++row)
        plan.insert(QString::number(row), QDate::currentDate().addDays(-daysAgo[row]).toString(Qt::ISODate));
    writeFile("config/MaintainPlan.json", QJsonDocument(plan).toJson());
}

void writeTrendLogs()
{
    QByteArray temps, air;
    for (int sample = 0; sample < samples; ++sample) {
        temps += tempLine(sample);
        air += airLine(sample);
    }
    writeFile(logPath("temp.csv"), temps);
    writeFile(logPath("air.csv"), air);
    writeFile(logPath("event.csv"), eventLine(92, 0x14) + eventLine(150, 0xffff06) + eventLine(240, 0x20));
}

void fillQueue()
{
    QByteArray picture;
    QBuffer buffer(&picture);
    ringPicture().save(&buffer, "PNG");
    for (const char *name : waiting)
        addModel(QString(name) + ".tzl", picture);
    for (int status : {QueuePrinted, QueueAborted})
        for (int i = 0; i < 3 * status; ++i) {
            const QString name =
                QString("%1-%2.tzl").arg(status == QueuePrinted ? "chain" : "crown").arg(110 + 7 * i);
            addModel(name, picture);
            sqliteUtil()->ExecuteSqlQuery(
                QString(
                    "update PrintQueue set status=%1,EndTime=\"2026-11-1%2 08:2%2\" where ModelName=\"%3\"")
                    .arg(status)
                    .arg(i)
                    .arg(name));
        }
}

void writeJobLayer(const QString &model)
{
    QDir().mkpath(sliceFolder(model));
    writeLayer(model, 'm', [](QPainter *painter) { painter->drawEllipse(QRect(40, 60, 176, 140)); });
    writeLayer(model, 's', [](QPainter *painter) { painter->drawEllipse(QRect(72, 90, 112, 80)); });
}

void raiseEvents()
{
    EventHandler::checkEventRange(131, 115, 0x00033201, 15);
    EventHandler::setEvent(0x00ffff06, {});
    EventHandler::setEvent(0x00ffff07, {});
}
