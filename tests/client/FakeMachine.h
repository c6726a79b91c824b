#pragma once
// The machine's end of the link: literal frames, parameter files in memory, a queue in a real database, and
// faults. It keeps every frame that came, and counts what arrived before the answer to the one before had
// gone.

#include <QJsonObject>
#include <QMap>
#include <QSqlDatabase>
#include <QTcpServer>

class FakeMachine : public QObject
{
public:
    enum Fault { None, Silent, HangUp, Nonsense, LoseWrites, DropUpload };

    FakeMachine();
    quint16 port() const { return m_server.serverPort(); }
    void sql(const QString &statement);
    QStringList column(const QString &query);
    QStringList titlesWritten() const; ///< of the parameter files and temperature rows, in their order

    Fault fault = None;
    int refuseBlocks = 0; ///< so many blocks are answered as damaged
    int profile = 2;      ///< the row of temperatures in force; 1 means printing
    QMap<QString, QJsonObject> files;
    QByteArray temperatures[4]; ///< records
    QList<QByteArray> frames;
    QByteArray uploaded;
    int outOfStep = 0;

private:
    void accept();
    void take(const QByteArray &bytes);
    void answer(const QByteArray &frame);
    void answerJson(const QJsonObject &request);
    void answerBinary(const QByteArray &frame);
    void answerBlock(const QByteArray &frame);
    void reply(const QByteArray &bytes);
    QJsonArray rows(const QString &query);

    QTcpServer m_server;
    QTcpSocket *m_client = nullptr;
    QByteArray m_buffer;
    QString m_uploadName;
    QSqlDatabase m_database;
};
