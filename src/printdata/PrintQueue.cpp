#include "printdata/PrintQueue.h"

#include "frame/Folders.h"
#include "frame/SqliteUtil.h"
#include "printdata/ModelFile.h"

#include <QDateTime>
#include <QFile>
#include <QSettings>
#include <QSqlQueryModel>
#include <QSqlRecord>

namespace
{
QString cell(const QSqlQueryModel &model, int row, const char *column)
{
    return model.record(row).value(QLatin1String(column)).toString();
}

void fillRows(QSqlQueryModel *model, int status)
{
    sqliteUtil()->ExecuteQueryModel(
        model, QStringLiteral("select * from PrintQueue where status=%1 ORDER  by ID").arg(status));
}

void fillFirstRow(QSqlQueryModel *model, int status)
{
    sqliteUtil()->ExecuteQueryModel(
        model, QStringLiteral("select * from PrintQueue where status=%1 ORDER  by ID limit 0,1").arg(status));
}

void deleteRow(const QString &modelName)
{
    sqliteUtil()->ExecuteSqlQuery(
        QStringLiteral("delete from PrintQueue where ModelName=\"%1\"").arg(sqlText(modelName)));
}
} // namespace

QList<QueueRow> queueRows(int status)
{
    QSqlQueryModel model;
    fillRows(&model, status);
    QList<QueueRow> rows;
    for (int row = 0; row < model.rowCount(); ++row)
        rows << QueueRow{cell(model, row, "ModelName"), cell(model, row, "createtime"), cell(model, row, "EndTime")};
    return rows;
}

int headId(int status)
{
    QSqlQueryModel model;
    fillFirstRow(&model, status);
    return model.rowCount() ? model.record(0).value(QStringLiteral("ID")).toInt() - 1 : -1;
}

QString firstWaitingModel()
{
    QSqlQueryModel model;
    fillFirstRow(&model, QueueWaiting);
    return model.rowCount() ? cell(model, 0, "ModelName") : QString();
}

void addToQueue(const QString &modelName)
{
    deleteRow(modelName);
    GetModelBmpAndIni(modelPath(modelName), nullptr);
    QSettings settings(modelIniPath(modelName), QSettings::IniFormat);
    settings.setIniCodec("UTF-8");
    const auto text = [&](const char *key) { return sqlText(settings.value(QLatin1String(key)).toString()); };
    const QString values[] = {
        sqlText(modelName),
        QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd hh:mm")),
        QStringLiteral("0"),
        QStringLiteral("%1,%2,%3").arg(text("extentX"), text("extentY"), text("extentZ")),
        text("PrintModeName"),
        text("supportMaterial"),
        text("modelMaterial"),
        text("modelMaterialName"),
        text("printTime"),
        text("layerCnt"),
        QString::number(headId(QueueWaiting)),
    };
    QStringList quoted;
    for (const QString &value : values)
        quoted << QLatin1Char('"') + value + QLatin1Char('"');
    sqliteUtil()->ExecuteSqlQuery(
        QStringLiteral("insert into PrintQueue(ModelName,createtime,status,Volume,PrintMode,SupWax,StrWax,"
                       "modelMaterialName,printTime,SumLayer,ID) \t\t values(%1)")
            .arg(quoted.join(QLatin1Char(','))));
}

void removeModel(const QString &modelName)
{
    if (modelName.isEmpty())
        return; // its folder would be that of all models
    deleteRow(modelName);
    QFile::remove(modelPath(modelName));
    QFile::remove(modelIniPath(modelName));
    QFile::remove(modelPath(modelName) + QStringLiteral(".md5"));
    removeFolder(sliceFolder(modelName));
}

bool moveRow(const QString &modelName, bool up, int status)
{
    QSqlQueryModel model;
    fillRows(&model, status);
    for (int row = 0; row < model.rowCount(); ++row) {
        if (cell(model, row, "ModelName") != modelName)
            continue;
        const int neighbour = up ? row - 1 : row + 1;
        if (neighbour < 0 || neighbour >= model.rowCount())
            return false;
        sqliteUtil()->ExecuteSqlQuery(
            QStringLiteral("update PrintQueue set ID =  case ModelName when \"%1\" then \"%2\" when \"%3\" then "
                           "\"%4\" end  where ModelName in (\"%1\",\"%3\")")
                .arg(sqlText(modelName), cell(model, neighbour, "ID"), sqlText(cell(model, neighbour, "ModelName")),
                     cell(model, row, "ID")));
        return true;
    }
    return false;
}

void moveToTop(const QString &modelName, int status)
{
    sqliteUtil()->ExecuteSqlQuery(QStringLiteral("update PrintQueue set ID=%1 where ModelName=\"%2\"")
                                      .arg(QString::number(headId(status)), sqlText(modelName)));
}

void reprintModel(const QString &modelName)
{
    sqliteUtil()->ExecuteSqlQuery(QStringLiteral("update PrintQueue set status=0,ID=%1 where ModelName=\"%2\"")
                                      .arg(QString::number(headId(QueueWaiting)), sqlText(modelName)));
}
