// Queue and history, read and changed by the client's own SQL texts. They run as they come; a statement that
// fails reads as no rows.

#include "frame/Folders.h"
#include "frame/SqliteUtil.h"
#include "printdata/ModelFile.h"
#include "printdata/SliceToImage.h"
#include "remote/RemoteCall.h"
#include "remote/RemoteCommands.h"

#include <QBuffer>
#include <QFileInfo>
#include <QImage>
#include <QJsonArray>
#include <QSqlQueryModel>
#include <QSqlRecord>

namespace
{
constexpr int iconSize = 256; // as the pictures of the history
const QLatin1String iconKey("Icon");

/// JPEG in base64; empty for no picture.
QString iconText(const QImage &picture)
{
    QBuffer buffer;
    if (!picture.save(&buffer, "jpg"))
        return QString();
    return QString::fromLatin1(buffer.data().toBase64());
}

/// The picture of a queued model. A list may hold any number of names whose files are gone: those cost a
/// look, no log line.
QString modelIcon(const QString &name)
{
    QImage icon(iconSize, iconSize, QImage::Format_RGB32);
    if (!isModelName(name) || !QFileInfo::exists(modelPath(name)) ||
        readModelIcon(modelPath(name), &icon) != 0)
        return QString();
    return iconText(icon);
}

/// The picture that a job has left.
QString historyIcon(const QString &name)
{
    if (!isModelName(name))
        return QString();
    return iconText(QImage(historyIconPath(name) + QStringLiteral(".jpg")));
}

/// A row by the names of its columns, every value as a text.
void addColumns(QJsonObject *object, const QSqlQueryModel &rows, const QStringList &names, int row)
{
    for (int column = 0; column < names.size(); ++column)
        object->insert(names[column], rows.data(rows.index(row, column)).toString());
}

QStringList columnNames(const QSqlQueryModel &rows)
{
    const QSqlRecord record = rows.record();
    QStringList names;
    for (int column = 0; column < record.count(); ++column)
        names << record.fieldName(column);
    return names;
}

/// Rows of the queue are given their model's picture; rows of the history tell the name of theirs.
QJsonArray rowsWithIcons(const QString &statement)
{
    QSqlQueryModel rows;
    sqliteUtil()->ExecuteQueryModel(&rows, statement);
    const QStringList names = columnNames(rows);
    const bool history = names.contains(iconKey);
    QJsonArray list;
    for (int row = 0; row < rows.rowCount(); ++row) {
        QJsonObject object;
        addColumns(&object, rows, names, row);
        object.insert(iconKey, history ? historyIcon(object.value(iconKey).toString())
                                       : modelIcon(object.value(QLatin1String("ModelName")).toString()));
        list.append(object);
    }
    return list;
}
} // namespace

void printFileInfoCommand(const RemoteCall &call)
{
    QJsonObject reply{{"Title", call["Title"]}};
    const QString name = sliceToImage()->fileName();
    if (!name.isEmpty()) {
        QSqlQueryModel rows;
        sqliteUtil()->ExecuteQueryModel(
            &rows, QStringLiteral("select * from PrintQueue where ModelName=\"%1\"").arg(sqlText(name)));
        if (rows.rowCount() > 0)
            addColumns(&reply, rows, columnNames(rows), 0);
        reply.insert(iconKey, modelIcon(name));
    }
    call.reply(reply, ReplyHead::Echo);
}

void fileListCommand(const RemoteCall &call)
{
    const QJsonArray rows = rowsWithIcons(call["Action"].toString());
    call.reply({{"Title", call["Title"]}, {"Queue", rows}}, ReplyHead::Echo);
}

void fileListCntCommand(const RemoteCall &call)
{
    QSqlQueryModel rows;
    sqliteUtil()->ExecuteQueryModel(&rows, call["Action"].toString());
    call.replyWith(QStringLiteral("Count"), rows.rowCount(), ReplyHead::Echo);
}

void sqlCommand(const RemoteCall &call)
{
    sqliteUtil()->ExecuteSqlQuery(call["Action"].toString());
    call.reply({{"valid", true}, {"active", true}}, ReplyHead::Echo);
}
