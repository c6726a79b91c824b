#include "printdata/PrintQueue.h"

#include "frame/Folders.h"
#include "frame/SqliteUtil.h"
#include "platform/Log.h"
#include "platform/Mutex.h"
#include "printdata/ModelFile.h"

#include <QDateTime>
#include <QFile>
#include <QSqlQueryModel>
#include <QSqlRecord>
#include <cmath>

namespace
{
// A change reads the list and then writes by what it read: the pages (GUI thread), remote commands and the
// job thread take turns, so that no two rows take the same place.
Mutex &queueMutex()
{
    static auto *mutex = new Mutex; // never destroyed: threads use it until the process is gone
    return *mutex;
}

/// Puts `values` for %1, %2, ... in one go. A model's name may hold a "%2" of its own, and a chain of arg()
/// would fill that as well.
QString filled(const QString &statement, const QStringList &values)
{
    QString text;
    for (int at = 0; at < statement.size(); ++at) {
        int number = 0;
        int next = at + 1;
        while (statement[at] == QLatin1Char('%') && next < statement.size() && statement[next].isDigit())
            number = number * 10 + statement[next++].digitValue();
        if (number == 0) {
            text += statement[at];
            continue;
        }
        text += sqlText(values.value(number - 1));
        at = next - 1;
    }
    return text;
}

void run(const char *statement, const QStringList &values)
{
    sqliteUtil()->ExecuteSqlQuery(filled(QString::fromLatin1(statement), values));
}

QString table()
{
    return QStringLiteral("PrintQueue");
}

/// All rows of a status in their order, or the first alone.
QList<QSqlRecord> records(int status, bool firstOnly)
{
    const QString statement = QStringLiteral("select * from PrintQueue where status=%1 ORDER  by ID%2")
                                  .arg(QString::number(status), QLatin1String(firstOnly ? " limit 0,1" : ""));
    QSqlQueryModel model;
    sqliteUtil()->ExecuteQueryModel(&model, statement);
    QList<QSqlRecord> rows;
    for (int row = 0; row < model.rowCount(); ++row)
        rows << model.record(row);
    return rows;
}

QString text(const QSqlRecord &row, const char *column)
{
    return row.value(QLatin1String(column)).toString();
}

/// The column is a text as the model's settings gave it: empty, or anything, where they did not tell.
double grams(const QSqlRecord &row, const char *column)
{
    bool isNumber = false;
    const double value = text(row, column).toDouble(&isNumber);
    return isNumber && std::isfinite(value) && value >= 0 ? value : -1;
}

/// Values of a model's settings; empty texts when it has none.
QStringList settingTexts(const QString &modelName, std::initializer_list<const char *> keys)
{
    // A side file that is left from an earlier model of this name does not describe this one.
    const bool described = GetModelBmpAndIni(modelPath(modelName), nullptr) == 0;
    const ModelSettings settings(modelName);
    QStringList texts;
    for (const char *key : keys)
        texts << (described ? settings.value(QLatin1String(key)).toString() : QString());
    return texts;
}
} // namespace

QList<QueueRow> queueRows(int status)
{
    QList<QueueRow> rows;
    for (const QSqlRecord &row : records(status, false))
        rows << QueueRow{text(row, "ModelName"), text(row, "createtime"), text(row, "EndTime")};
    return rows;
}

QList<WaxNeed> waitingNeeds()
{
    QList<WaxNeed> needs;
    for (const QSqlRecord &row : records(QueueWaiting, false))
        needs << WaxNeed{text(row, "ModelName"), grams(row, "StrWax"), grams(row, "SupWax")};
    return needs;
}

int headId(int status)
{
    const QList<QSqlRecord> first = records(status, true);
    return first.isEmpty() ? -1 : first[0].value(QStringLiteral("ID")).toInt() - 1;
}

QString firstWaitingModel()
{
    const QList<QSqlRecord> first = records(QueueWaiting, true);
    return first.isEmpty() ? QString() : text(first[0], "ModelName");
}

void addToQueue(const QString &modelName)
{
    if (!isModelName(modelName)) {
        LOG_WARNING(QStringLiteral("no name of a model: %1").arg(modelName));
        return;
    }
    constexpr int extents = 3; // the first three keys make one column
    const QStringList texts =
        settingTexts(modelName, {"extentX", "extentY", "extentZ", "PrintModeName", "supportMaterial",
                                 "modelMaterial", "modelMaterialName", "printTime", "layerCnt"});
    const QString createTime = QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd hh:mm"));
    QStringList values{table(), modelName, createTime, texts.mid(0, extents).join(QLatin1Char(','))};

    MutexLock lock(queueMutex());
    run("delete from PrintQueue where ModelName=\"%1\"", {modelName});
    values += texts.mid(extents);
    values += QString::number(headId(QueueWaiting));
    run("insert into "
        "%1(ModelName,createtime,status,Volume,PrintMode,SupWax,StrWax,modelMaterialName,printTime,"
        "SumLayer,ID) \t\t values(\"%2\",\"%3\",0,\"%4\",\"%5\",\"%6\",\"%7\",\"%8\",\"%9\",\"%10\",\"%11\")",
        values);
}

void removeModel(const QString &modelName)
{
    run("delete from PrintQueue where ModelName=\"%1\"", {modelName});
    if (!isModelName(modelName))
        return; // its files would not be a model's
    QFile::remove(modelPath(modelName));
    QFile::remove(modelIniPath(modelName));
    QFile::remove(modelPath(modelName) + QStringLiteral(".md5"));
    removeFolder(sliceFolder(modelName));
}

bool moveRow(const QString &modelName, bool up, int status)
{
    MutexLock lock(queueMutex());
    const QList<QSqlRecord> rows = records(status, false);
    int at = 0;
    while (at < rows.size() && text(rows[at], "ModelName") != modelName)
        ++at;
    const int neighbour = up ? at - 1 : at + 1;
    if (at >= rows.size() || neighbour < 0 || neighbour >= rows.size())
        return false;
    run("update PrintQueue set ID =  case ModelName when \"%1\" then \"%2\" when \"%3\" then \"%4\" end  "
        "where "
        "ModelName in (\"%1\",\"%3\")",
        {modelName, text(rows[neighbour], "ID"), text(rows[neighbour], "ModelName"), text(rows[at], "ID")});
    return true;
}

void moveToTop(const QString &modelName, int status)
{
    MutexLock lock(queueMutex());
    run("update %1 set ID=%2 where ModelName=\"%3\"", {table(), QString::number(headId(status)), modelName});
}

void reprintModel(const QString &modelName)
{
    MutexLock lock(queueMutex());
    run("update %1 set status=0,ID=%2 where ModelName=\"%3\"",
        {table(), QString::number(headId(QueueWaiting)), modelName});
}
