#include "link/MachineLink.h"

#include "link/Failure.h"
#include "link/Frame.h"

#include <QHostAddress>
#include <QJsonDocument>

MachineLink::MachineLink(const QString &host, quint16 port, int timeoutMs)
    : m_host(host), m_port(port), m_timeoutMs(timeoutMs)
{
}

QJsonObject MachineLink::request(const QJsonObject &object)
{
    open();
    send(frame::json(object));
    QJsonParseError error;
    const QJsonDocument answer = QJsonDocument::fromJson(receiveFrame(), &error);
    if (error.error != QJsonParseError::NoError || !answer.isObject())
        giveUp(QStringLiteral("The machine's answer is no JSON object: ") + error.errorString());
    if (answer["Error"].toString() == QLatin1String("parse error"))
        throw Failure{Exit::Refused, QStringLiteral("The machine could not read the request.")};
    return answer.object();
}

QByteArray MachineLink::binary(quint8 command, quint8 subCommand, const QByteArray &payload)
{
    open();
    send(frame::binary(command, subCommand, payload));
    // A message for the bus is answered in a frame with the tail of JSON.
    return receiveFrame(QByteArray(1, char(command)) + char(subCommand));
}

QByteArray MachineLink::exchange(const QByteArray &bytes, int answerSize)
{
    open();
    send(bytes);
    return receive(answerSize);
}

void MachineLink::open()
{
    if (m_socket.state() == QAbstractSocket::ConnectedState)
        return;
    m_socket.connectToHost(m_host, m_port);
    if (m_socket.waitForConnected(m_timeoutMs)) {
        m_socket.setSocketOption(QAbstractSocket::LowDelayOption, 1);
        return;
    }
    const QString why = m_socket.errorString();
    m_socket.abort();
    throw Failure{Exit::NoConnection,
                  QStringLiteral("No machine answers at %1: %2.\nName one with --host or PELORA_HOST; "
                                 "\"peloractl discover\" finds the machines of this network.")
                      .arg(place(), why)};
}

void MachineLink::send(const QByteArray &bytes)
{
    if (m_socket.bytesAvailable() > 0)
        giveUp(QStringLiteral("The machine sent what nobody asked for; the connection was given up."));
    m_socket.write(bytes);
    while (m_socket.bytesToWrite() > 0) {
        if (!m_socket.waitForBytesWritten(m_timeoutMs))
            loseConnection(QStringLiteral("%1 took nothing of what was sent for %2 s."));
    }
}

QByteArray MachineLink::receive(int size)
{
    while (m_socket.bytesAvailable() < size) {
        if (!m_socket.waitForReadyRead(m_timeoutMs))
            loseConnection(
                QStringLiteral("%1 gave no answer within %2 s. It may be busy with its boards; try "
                               "again, with a longer --timeout."));
    }
    return m_socket.read(size);
}

void MachineLink::loseConnection(const QString &silence)
{
    const bool connected = m_socket.state() == QAbstractSocket::ConnectedState;
    m_socket.abort();
    if (connected)
        throw Failure{Exit::TimeOut, silence.arg(place()).arg(m_timeoutMs / 1000.0)};
    throw Failure{Exit::NoConnection,
                  QStringLiteral("%1 closed the connection. The machine serves one client at "
                                 "a time, and the newest wins: another may have connected.")
                      .arg(place())};
}

QByteArray MachineLink::receiveFrame(const QByteArray &tail)
{
    const QByteArray head = receive(frame::headSize);
    const quint32 length = frame::lengthOf(head);
    const bool known = frame::isJson(head) || head.mid(6) == tail;
    if (!head.startsWith("\x5A\xA5") || !known || length > frame::longestAnswer)
        giveUp(QStringLiteral("%1 answers with something else than this protocol (%2). Is it the right port?")
                   .arg(place(), QString::fromLatin1(head.toHex(' '))));
    return receive(int(length));
}

void MachineLink::giveUp(const QString &text)
{
    m_socket.abort();
    throw Failure{Exit::Refused, text};
}
