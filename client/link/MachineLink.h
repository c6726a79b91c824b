#pragma once
// The connection to one machine. The machine works one frame at a time and drops what arrives behind it, so
// every call here sends one frame and waits for its answer. What fails is thrown as a Failure; after a
// time-out the connection is given up, since a late answer would be taken for the next one's. One thread.

#include <QJsonObject>
#include <QTcpSocket>

class MachineLink
{
public:
    static constexpr quint16 usualPort = 6666;

    /// Opens nothing; the first call does. `timeoutMs` holds for connecting and for every answer.
    MachineLink(const QString &host, quint16 port, int timeoutMs);

    /// Sends a JSON request; the object that answers it.
    QJsonObject request(const QJsonObject &object);
    /// Sends a binary frame; the payload of the answer.
    QByteArray binary(quint8 command, quint8 subCommand, const QByteArray &payload = {});
    /// Sends bytes as they are and waits for an answer of exactly `answerSize` bytes.
    QByteArray exchange(const QByteArray &bytes, int answerSize);

    /// For work that the machine answers only when it is done, such as a move.
    void setTimeout(int timeoutMs) { m_timeoutMs = timeoutMs; }
    QString place() const { return QStringLiteral("%1:%2").arg(m_host).arg(m_port); }

private:
    void open();
    void send(const QByteArray &bytes);
    QByteArray receive(int size);
    /// `tail`: command and sub-command that the answer may carry instead of those of a JSON frame.
    QByteArray receiveFrame(const QByteArray &tail = {});
    /// After a wait in vain: `silence` is the text, of place and seconds, for a machine that is still there.
    [[noreturn]] void loseConnection(const QString &silence);
    /// Gives the connection up and tells why.
    [[noreturn]] void giveUp(const QString &text);

    QString m_host;
    quint16 m_port;
    int m_timeoutMs;
    QTcpSocket m_socket;
};
