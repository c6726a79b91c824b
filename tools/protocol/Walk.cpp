#include "Walk.h"

#include "Pattern.h"

#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QThread>
#include <QUdpSocket>
#include <QtEndian>

namespace
{
constexpr int replyLimitMs = 60000; // a command may wait for boards
constexpr int scanLimitMs = 5000;
constexpr int probeMs = 250;
constexpr int lookMs = 20;
constexpr int frameHead = 8;

QByteArray fileBytes(const QString &name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool waitFor(const std::function<bool()> &condition)
{
    QElapsedTimer clock;
    for (clock.start(); clock.elapsed() < replyLimitMs; QThread::msleep(lookMs)) {
        if (condition())
            return true;
    }
    return false;
}

QJsonValue valueAt(QJsonValue value, const QString &path)
{
    for (const QString &key : path.split('/')) {
        bool number = false;
        const int index = key.toInt(&number);
        value = number ? value.toArray().at(index) : value[key];
    }
    return value;
}

bool showsFrames(const SessionStep &step)
{
    const bool json = step.data.contains("request") || step.data.contains("text");
    return !json || step.data["show"].toString() == "bytes";
}

QString hex(const QByteArray &bytes)
{
    return QString::fromLatin1(bytes.toHex(' '));
}
} // namespace

void Walk::walk(const QString &file)
{
    QString error;
    const QVector<SessionStep> steps = readSession(file, &error);
    if (!error.isEmpty() || !m_wire.connectTo(m_site.port))
        error += " no connection";
    if (!error.isEmpty()) {
        m_errors << error;
        return;
    }
    for (SessionStep step : steps) {
        // What a client sends back is what it has read.
        if (step.data.contains("request"))
            step.data["request"] = withFiles(step.data["request"].toObject(), m_site.install);
        const QString wrong = run(step);
        if (wrong.isEmpty())
            continue;
        m_errors << step.place + ": " + wrong;
        m_wire.connectTo(m_site.port); // a late reply must not be taken for the next one
    }
}

QString Walk::run(const SessionStep &step)
{
    const QJsonArray checks = step.data["then"].toArray();
    QVector<QByteArray> before;
    double number = 0; // the one that is to grow
    for (const QJsonValue &check : checks) {
        before << fileBytes(m_site.install + '/' + check["file"].toString());
        if (check["grows"].isDouble())
            number = valueAt(m_site.state(), check["state"].toString()).toDouble();
    }

    Exchange shown{step.name(), {}, {}};
    QString wrong = exchange(step, &shown);
    if (!wrong.isEmpty() && step.data["until"].toBool())
        waitFor([&] { return (wrong = exchange(step, &shown)).isEmpty(); });
    if (!shown.name.isEmpty())
        m_exchanges << shown;
    for (int at = 0; wrong.isEmpty() && at < checks.size(); ++at) {
        QJsonObject check = checks[at].toObject();
        if (check["grows"].isDouble())
            check["is"] = number + check["grows"].toDouble();
        wrong = afterwards(step, check, before[at]);
    }
    return wrong;
}

QString Walk::exchange(const SessionStep &step, Exchange *shown)
{
    shown->request = showsFrames(step) ? dumpOf(step.bytes()) : textOf(step.payload());
    shown->reply = "nothing";
    if (step.data["reply"].isNull())
        return silence(step);
    const QJsonObject keys = step.repliesJson() ? step.wantedKeys(m_site.install) : QJsonObject();
    if (step.data.contains("scan"))
        return judge(step, scanAnswer(step), keys, shown);
    return judge(step, answer(step), keys, shown);
}

/// Requests are worked one after the other, so what a heart beat brings first is not the reply to the one
/// before it. The program drops what arrives together with the request before it, hence more than one heart
/// beat.
QString Walk::silence(const SessionStep &step)
{
    m_wire.send(step.bytes());
    const QByteArray beat = R"({"Title":"HeartBeat","Action":"Reply"})";
    QElapsedTimer clock;
    for (clock.start(); clock.elapsed() < replyLimitMs;) {
        QByteArray start("\x77\0", 2);
        start[1] = char(++m_probe);
        m_wire.send(wireFrame(start, "\xFF\xFF", beat));
        for (;;) {
            const QByteArray reply = m_wire.takeFrame(probeMs);
            if (reply.isEmpty())
                break;
            if (reply[0] != start[0] || !reply.contains("HeartBeat"))
                return "nothing expected, not " + QString::fromUtf8(reply);
            if (reply.startsWith(start))
                return {};
        }
    }
    return "the link is dead afterwards";
}

QByteArray Walk::answer(const SessionStep &step)
{
    m_wire.send(step.bytes());
    const QJsonValue bytes = step.data["reply"]["bytes"];
    return bytes.isString() ? m_wire.take(bytesOf(bytes.toString()).size(), replyLimitMs)
                            : m_wire.takeFrame(replyLimitMs);
}

/// Asks every program on this computer, since several may share the port, and takes the answer of the one
/// that is meant.
QByteArray Walk::scanAnswer(const SessionStep &step)
{
    QUdpSocket socket;
    if (!socket.bind(QHostAddress::AnyIPv4))
        return {};
    const QHostAddress everybodyHere(QStringLiteral("127.255.255.255"));
    socket.writeDatagram(step.bytes(), everybodyHere, quint16(step.data["scan"]["port"].toInt()));
    while (socket.hasPendingDatagrams() || socket.waitForReadyRead(scanLimitMs)) {
        QByteArray reply(int(socket.pendingDatagramSize()), '\0');
        socket.readDatagram(reply.data(), reply.size());
        const QJsonDocument document = QJsonDocument::fromJson(reply.mid(6));
        if (document["Name"].toString() == m_site.machineName)
            return reply;
    }
    return {};
}

QString Walk::judge(const SessionStep &step, const QByteArray &reply, const QJsonObject &keys,
                    Exchange *shown)
{
    const QJsonObject wanted = step.data["reply"].toObject();
    QByteArray stable;
    if (wanted.contains("bytes")) {
        const QString error = mismatch(wanted["bytes"].toString(), reply, &stable);
        shown->reply = dumpOf(stable);
        return error;
    }
    const bool datagram = step.data.contains("scan"); // its head is two bytes shorter, and tells a count
    const int middleSize = datagram ? 2 : 4;
    const bool echo = wanted["head"].toString() == "echo";
    const QByteArray head = echo ? sessionStart() : QByteArray("\x5A\xA5", 2);
    const QByteArray tail = bytesOf(wanted["tail"].toString("FF FF"));
    if (!reply.startsWith(head) || reply.mid(2 + middleSize, 2) != tail)
        return "head " + hex(head) + " and tail " + hex(tail) + " expected, not " +
               hex(reply.left(frameHead));
    QString error = judgePayload(step, reply.mid(4 + middleSize), keys, &stable);
    QByteArray frame = wireFrame(head, tail, stable);
    if (datagram) {
        QByteArray count;
        error += mismatch(wanted["count"].toString(), reply.mid(2, middleSize), &count);
        frame.replace(2, 4, count);
    }
    if (showsFrames(step))
        shown->reply = dumpOf(frame);
    else
        shown->reply = textOf(stable) + (echo ? "\n(head echoed)" : "\n(head 5A A5)");
    return error;
}

QString Walk::judgePayload(const SessionStep &step, const QByteArray &payload, const QJsonObject &keys,
                           QByteArray *stable)
{
    const QJsonObject wanted = step.data["reply"].toObject();
    *stable = payload;
    if (wanted.contains("payload"))
        return mismatch(wanted["payload"].toString(), payload, stable);
    if (!step.repliesJson())
        return payload == step.payload() ? QString() : "the request's own payload expected, not " + payload;
    // JSON of the program is indented and its keys are sorted, to the byte.
    const QJsonDocument document = QJsonDocument::fromJson(payload);
    if (!document.isObject() || document.toJson() != payload)
        return "an indented JSON object expected, not " + QString::fromUtf8(payload);
    QJsonValue object;
    const QString error = mismatch(keys, document.object(), &object);
    *stable = QJsonDocument(object.toObject()).toJson();
    return error;
}

QString Walk::afterwards(const SessionStep &step, const QJsonObject &check, const QByteArray &before)
{
    const QJsonValue wanted = check["is"];
    if (check.contains("file")) {
        const QString what = wanted.toString();
        QByteArray expected = before;
        if (what != "before")
            expected = what == "request" ? step.payload() : QJsonDocument::fromJson(step.payload()).toJson();
        const QString file = m_site.install + '/' + check["file"].toString();
        return fileBytes(file) == expected ? QString() : file + " is not as " + what;
    }
    if (check.contains("exists")) {
        const QString file = m_site.install + '/' + check["exists"].toString();
        const auto holds = [&] { return QFileInfo::exists(file) == wanted.toBool(); };
        return waitFor(holds) ? QString() : file + (wanted.toBool() ? " is missing" : " is still there");
    }
    if (check.contains("log")) {
        const QByteArray text = check["log"].toString().toUtf8();
        const QString log = m_site.install + "/../.PeloraTemp/log/pelora.log";
        return waitFor([&] { return fileBytes(log).contains(text); }) ? QString() : "not logged: " + text;
    }
    QJsonValue value, stable;
    const auto holds = [&] {
        value = valueAt(m_site.state(), check["state"].toString());
        return mismatch(wanted, value, &stable).isEmpty();
    };
    return waitFor(holds) ? QString() : check["state"].toString() + ": " + mismatch(wanted, value, &stable);
}
