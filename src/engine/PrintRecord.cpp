// What a job leaves behind: its mark in the queue, an icon, and a row of the history.

#include "engine/JobCodes.h"
#include "engine/MachineServices.h"
#include "engine/PrintService.h"
#include "events/EventHandler.h"
#include "events/SendEmail.h"
#include "frame/Folders.h"
#include "frame/SqliteUtil.h"
#include "platform/Log.h"
#include "printdata/ModelFile.h"
#include "printdata/PrintQueue.h"
#include "printdata/SliceToImage.h"

#include <QPixmap>
#include <QUuid>

namespace
{
constexpr int iconSize = 256;

/// Tells the owner how a job has ended. Blocks for as long as the mail tool takes.
void mailResult(const QString &model, int code, const QJsonObject &state)
{
    const auto text = [&state](const char *key) { return state.value(QLatin1String(key)).toString(); };
    const QString times = text("StartTime") + QStringLiteral(" - ") + text("EndTime");
    const int event = code == JobCode::done ? JobCode::printed : JobCode::failed;
    SendEmail(QStringLiteral("PrintStop"),
              QStringList{model, times, EventHandler::eventMessage(event)}.join(QLatin1Char('\n')));
}

/// The model's picture; white when it has none. Null when the model cannot be read.
QPixmap historyIcon(const QString &model)
{
    QPixmap icon(iconSize, iconSize);
    if (GetModelBmpAndIni(modelPath(model), &icon) != 0)
        return QPixmap();
    if (icon.isNull()) {
        icon = QPixmap(iconSize, iconSize);
        icon.fill(Qt::white);
    }
    return icon;
}

/// Values between double quotes, separated by commas. A number has the default form of QString::arg.
QString valueList(const QJsonObject &row, const QStringList &keys)
{
    QStringList values;
    for (const QString &key : keys) {
        const QJsonValue value = row.value(key);
        const QString text = value.isDouble() ? QStringLiteral("%1").arg(value.toDouble()) : value.toString();
        values << QLatin1Char('"') + sqlText(text) + QLatin1Char('"');
    }
    return values.join(QLatin1Char(','));
}

void updateQueueRow(const QString &model, QueueStatus status, const QJsonObject &state)
{
    const auto text = [&state](const char *key) {
        return sqlText(state.value(QLatin1String(key)).toString());
    };
    const auto number = [&state](const char *key) {
        return QString::number(state.value(QLatin1String(key)).toInt());
    };
    sqliteUtil()->ExecuteSqlQuery(
        QStringLiteral(
            "update PrintQueue set status=\"%1\",PrintLayer=\"%2\",SumLayer=\"%3\",StartTime=\"%4\","
            "EndTime=\"%5\",ID=\"%6\" where ModelName=\"%7\"")
            .arg(QString::number(status), number("PrintLayer"), number("SumLayer"), text("StartTime"),
                 text("EndTime"), QString::number(headId(status)), sqlText(model)));
}

/// The history row by the columns of its table.
QJsonObject historyRow(const QString &model, const QJsonObject &state, const QSettings &settings,
                       const QString &iconName)
{
    const auto setting = [&settings](const char *key) {
        return settings.value(QLatin1String(key)).toString();
    };
    const ModelInfo info = sliceToImage()->modelInfo();
    QJsonObject row;
    for (const char *key : {"StartTime", "EndTime", "PrintLayer", "SumLayer"})
        row.insert(QLatin1String(key), state.value(QLatin1String(key)));
    row.insert(QStringLiteral("ModelName"), model);
    row.insert(QStringLiteral("SupWax"), static_cast<double>(info.supportMaterial));
    row.insert(QStringLiteral("StrWax"), static_cast<double>(info.modelMaterial));
    row.insert(QStringLiteral("StrWaxSn"), jobServices().structureBottleSerial());
    row.insert(QStringLiteral("SupWaxSn"), jobServices().supportBottleSerial());
    row.insert(QStringLiteral("PrintMode"), setting("PrintModeName"));
    row.insert(QStringLiteral("Volume"),
               QStringLiteral("%1,%2,%3").arg(setting("extentX"), setting("extentY"), setting("extentZ")));
    row.insert(QStringLiteral("Icon"), iconName);
    row.insert(QStringLiteral("modelMaterialName"), setting("modelMaterialName"));
    return row;
}
} // namespace

void PrintService::PrintRecord(int code)
{
    const QString model = sliceToImage()->fileName();
    const QueueStatus status = code == JobCode::done ? QueuePrinted : QueueAborted;
    mailResult(model, code, printState());

    const QString iconName = QUuid::createUuid().toString();
    const QString iconPath = historyIconPath(iconName) + QStringLiteral(".jpg");
    const QPixmap icon = historyIcon(model);
    if (!icon.isNull() && !icon.save(iconPath))
        LOG_WARNING(QStringLiteral("%1getmodelbmp error %2").arg(iconPath).arg(icon.save(iconPath)));

    const ModelSettings settings(model);
    if (printState().value(QLatin1String("SumLayer")).toInt() == 0) // ended before its first layer
        setState(QStringLiteral("SumLayer"), settings.value(QStringLiteral("layerCnt")).toInt());
    const QJsonObject state = printState();
    updateQueueRow(model, status, state);

    static const QString columns =
        QStringLiteral("StartTime,EndTime,ModelName,SupWax,StrWax,PrintLayer,SumLayer,StrWaxSn,SupWaxSn,"
                       "PrintMode,Volume,Icon,modelMaterialName");
    const QString values =
        valueList(historyRow(model, state, settings, iconName), columns.split(QLatin1Char(',')));
    const QString statement = QStringLiteral("insert into PrintHistory(%1) values(%2)").arg(columns, values);
    sqliteUtil()->ExecuteSqlQuery(statement);
    LOG_WARNING(statement);
}
