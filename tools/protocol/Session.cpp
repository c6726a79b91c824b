#include "Session.h"

#include "Pattern.h"
#include "Wire.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>

QByteArray sessionStart()
{
    return QByteArray("\x12\x34", 2);
}

QByteArray SessionStep::payload() const
{
    if (data.contains("request"))
        return QJsonDocument(data["request"].toObject()).toJson();
    return data.contains("text") ? data["text"].toString().toUtf8() : bytesOf(data["payload"].toString());
}

QByteArray SessionStep::bytes() const
{
    if (data.contains("bytes"))
        return bytesOf(data["bytes"].toString());
    if (data.contains("scan"))
        return QByteArray(6, '\0') + payload();
    if (data.contains("binary"))
        return wireFrame(sessionStart(), bytesOf(data["binary"].toString()), payload());
    if (data.contains("announce"))
        return wireAnnounce(sessionStart(), quint64(data["announce"]["size"].toDouble()),
                            data["announce"]["name"].toString().toUtf8());
    if (data.contains("block"))
        return wireBlock(quint32(data["block"]["number"].toDouble()),
                         data["block"]["data"].toString().toUtf8(), !data["block"]["spoilt"].toBool());
    return wireFrame(sessionStart(), "\xFF\xFF", payload());
}

bool SessionStep::repliesJson() const
{
    const QJsonObject reply = data["reply"].toObject();
    return reply.contains("object") || reply.contains("adds");
}

QJsonObject SessionStep::wantedKeys(const QString &installFolder) const
{
    const QJsonObject reply = data["reply"].toObject();
    if (reply.contains("object"))
        return withFiles(reply["object"].toObject(), installFolder);
    QJsonObject wanted = data["request"].toObject();
    const QJsonObject adds = reply["adds"].toObject();
    for (auto key = adds.begin(); key != adds.end(); ++key)
        wanted[key.key()] = key.value();
    return wanted;
}

QVector<SessionStep> readSession(const QString &name, QString *error)
{
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = name + ": " + file.errorString();
        return {};
    }
    QJsonParseError wrong;
    const QJsonArray list = QJsonDocument::fromJson(file.readAll(), &wrong).array();
    if (wrong.error)
        *error = QString("%1: %2 at byte %3").arg(name, wrong.errorString()).arg(wrong.offset);
    QVector<SessionStep> steps;
    for (const QJsonValue &step : list) {
        const QString place = QString("%1 step %2 ").arg(QFileInfo(name).fileName()).arg(steps.size() + 1);
        steps << SessionStep{place + step["name"].toString(), step.toObject()};
    }
    return steps;
}
