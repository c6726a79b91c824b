#include "client/FakeMachine.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QTcpSocket>
#include <QtEndian>

namespace
{
quint32 number(const QByteArray &bytes, int at)
{
    return qFromLittleEndian<quint32>(bytes.constData() + at);
}

/// CRC-32 bit by bit, so that nothing is shared with the client.
quint32 checksum(const QByteArray &bytes)
{
    quint32 sum = 0xFFFFFFFF;
    for (const char byte : bytes) {
        sum ^= quint8(byte);
        for (int bit = 0; bit < 8; ++bit)
            sum = (sum >> 1) ^ (sum & 1 ? 0xEDB88320 : 0);
    }
    return ~sum;
}

/// The tail of a binary answer of 256 bytes.
QByteArray binaryHead(char command, char subCommand)
{
    return QByteArray("\x5A\xA5\x00\x01\x00\x00", 6) + command + subCommand;
}

const QStringList files0{"Ink.json",    "Sys.json",  "Air.json", "Fan.json", "UseInfo.json",
                         "MachineName", "Materials", "Settings", "Styles"};
} // namespace

FakeMachine::FakeMachine() : m_database(QSqlDatabase::addDatabase("QSQLITE", QStringLiteral("machine")))
{
    m_database.setDatabaseName(":memory:");
    m_database.open();
    sql("create table PrintQueue (ModelName primary key, createtime, status, PrintLayer, SumLayer, EndTime, "
        "printTime,"
        "StrWax, SupWax, ID)");
    for (const QString &name : files0)
        files[name] = {{"Key", 1}, {"Group", QJsonObject{{"Inner", 2.5}}}, {"Text", "wax"}};
    const char boards[] = {3, 3, 3, 3, 6, 6, 5, 5};
    for (int row = 0; row < 4; ++row) {
        temperatures[row] = QByteArray(256, 0);
        for (int at = 0; at < 80; ++at)
            temperatures[row][20 + at] = char(at % 10 == 0 ? boards[at / 10] : 40 + row + at);
        temperatures[row][0] = char(row);
    }
    m_server.listen(QHostAddress::LocalHost);
    connect(&m_server, &QTcpServer::newConnection, this, &FakeMachine::accept);
}

void FakeMachine::sql(const QString &statement)
{
    QSqlQuery(m_database).exec(statement);
}

QStringList FakeMachine::column(const QString &query)
{
    QStringList values;
    QSqlQuery result(m_database);
    for (result.exec(query); result.next();)
        values << result.value(0).toString();
    return values;
}

QStringList FakeMachine::titlesWritten() const
{
    QStringList titles;
    for (const QByteArray &frame : frames) {
        const QJsonObject request = QJsonDocument::fromJson(frame.mid(8)).object();
        if (QStringList{"Write", "Set", "Save"}.contains(request["Action"].toString()))
            titles << request["Title"].toString();
        else if (frame.mid(6, 2) == "\xAA\x03")
            titles << QString::number(frame.at(8));
    }
    return titles;
}

void FakeMachine::accept()
{
    m_client = m_server.nextPendingConnection();
    m_buffer.clear();
    QTcpSocket *client = m_client;
    connect(client, &QTcpSocket::readyRead, this, [this, client] { take(client->readAll()); });
}

void FakeMachine::take(const QByteArray &bytes)
{
    m_buffer += bytes;
    const bool block = m_buffer.startsWith("\xA5\x5A");
    const int head = block ? 14 : 8;
    if (m_buffer.size() < head || m_buffer.size() - head < int(number(m_buffer, 2)))
        return;
    outOfStep += m_buffer.size() - head > int(number(m_buffer, 2));
    const QByteArray frame = m_buffer;
    m_buffer.clear();
    frames << frame;
    if (fault == HangUp)
        m_client->disconnectFromHost();
    else if (fault == Nonsense)
        m_client->write("HTTP/1.1 400 Bad Request\r\n\r\n");
    else if (fault != Silent)
        answer(frame);
}

void FakeMachine::answer(const QByteArray &frame)
{
    if (frame.startsWith("\xA5\x5A"))
        return answerBlock(frame);
    if (frame.mid(6, 2) == "\xFF\xFF")
        return answerJson(QJsonDocument::fromJson(frame.mid(8)).object());
    answerBinary(frame);
}

void FakeMachine::reply(const QByteArray &bytes)
{
    m_client->write(bytes.left(7)); // in two pieces, so that nobody relies on one
    m_client->flush();
    m_client->write(bytes.mid(7));
}

void FakeMachine::answerJson(const QJsonObject &request)
{
    const QString title = request["Title"].toString(), action = request["Action"].toString();
    QJsonObject object = request;
    if (files.contains(title)) {
        const bool write = action == "Write" || action == "Set" || action == "Save";
        if (write && fault != LoseWrites && request["IsSave"].toBool(true))
            files[title] = request;
        object = files[title];
        object["Title"] = title;
        object["Status"] = "Success";
        if (title == "Ink.json")
            object["NozzleCurrentValue"] = QJsonObject{{"Nozzle1_1", 61000}};
    } else if (title == "Machine") {
        object = {{"Title", title}, {"Status", profile}, {"UUID", "u-1"}, {"FirmwareVer", "4.4.1.4-III"}};
    } else if (title == "FileList") {
        object = {{"Title", title}, {"Queue", rows(action)}};
    } else if (title == "SQL") {
        sql(action);
    } else if (title == "FileDelete") {
        sql("delete from PrintQueue where ModelName='" + request["File"].toString().replace('\'', "''") +
            '\'');
    } else if (title == "FileListSort") {
        sql("update PrintQueue set ID=-100 where ModelName='" +
            request["FileName"].toString().replace('\'', "''") + '\'');
    }
    const QByteArray text = QJsonDocument(object).toJson();
    QByteArray length(4, 0);
    qToLittleEndian(quint32(text.size()), length.data());
    reply(QByteArray("\x5A\xA5") + length + "\xFF\xFF" + text);
}

QJsonArray FakeMachine::rows(const QString &query)
{
    QJsonArray list;
    QSqlQuery result(m_database);
    for (result.exec(query); result.next();) {
        QJsonObject row;
        for (int i = 0; i < result.record().count(); ++i)
            row[result.record().fieldName(i)] = result.value(i).toString();
        list << row;
    }
    return list;
}

void FakeMachine::answerBinary(const QByteArray &frame)
{
    const QByteArray kind = frame.mid(6, 2);
    if (kind == QByteArray("\x02\x00", 2)) {
        m_uploadName = QString::fromUtf8(frame.constData() + 16);
        uploaded.clear();
        reply(QByteArray("\x5A\xA5\x04\x00\x00\x00\x02\x00\x00\x00", 10));
    } else if (kind == "\x02\x01") {
        if (fault != DropUpload)
            sql("insert or replace into PrintQueue (ModelName,status,SumLayer,ID) values ('" +
                m_uploadName.replace('\'', "''") + "',0,9,-1)");
        reply(QByteArray("\x5A\xA5\x02\x00\x00\x00\x02\x01", 8));
    } else if (kind == "\xAA\x02") {
        reply(binaryHead('\xAA', 2) + temperatures[frame.at(8) & 3]);
    } else if (kind == "\xAA\x03") {
        if (fault != LoseWrites)
            temperatures[frame.at(8) & 3] = frame.mid(8);
        reply(binaryHead('\xAA', 3) + temperatures[0]);
    } else if (kind == "\xAA\x01") { // only board 2 answers
        const QByteArray message = frame.at(8) == 2 ? frame.mid(8, 9) : QByteArray(9, 0);
        reply(QByteArray("\x5A\xA5\x09\x00\x00\x00\xFF\xFF", 8) + message);
    }
}

void FakeMachine::answerBlock(const QByteArray &frame)
{
    const bool good = number(frame, 10) == checksum(frame.mid(14)) && refuseBlocks-- <= 0;
    if (good)
        uploaded += frame.mid(14);
    reply(QByteArray("\x5A\xA5\x06\x00\x00\x00", 6) + frame.mid(6, 4) + char(good ? 0 : 1) + '\0');
}
