// The client is the editor of the parameter files: it reads a document, changes it, and sends it back whole.

#include "frame/JsonConfig.h"
#include "material/BoardParameters.h"
#include "material/InkLevels.h"
#include "platform/Log.h"
#include "remote/RemoteCall.h"
#include "remote/RemoteCommands.h"

#include <QJsonDocument>

#include <cerrno>
#include <cstring>

namespace
{
struct Family {
    const char *title;
    JsonConfig *(*store)();
    void (*run)(const Family &family, const RemoteCall &call);
    const char *writeAction;               ///< null: the client may not write it
    bool savesOnlyWhenAsked;               ///< "IsSave" false: to the boards alone, for trying values out
    void (*push)(const QJsonObject &sent); ///< for values that live in the boards
};

QString titleOf(const Family &family)
{
    return QLatin1String(family.title);
}

bool isWrite(const Family &family, const RemoteCall &call)
{
    return family.writeAction && call["Action"].toString() == QLatin1String(family.writeAction);
}

/// Carries out a write if the call is one. The client's bytes go to the file as they came.
QString write(const Family &family, const RemoteCall &call)
{
    QString result = QStringLiteral("Success");
    if (!isWrite(family, call))
        return result;
    if (!family.savesOnlyWhenAsked || call["IsSave"].toBool()) {
        const QByteArray &text = call.text();
        const QString path = QStringLiteral("config/") + titleOf(family);
        if (!family.store()->syncFile(text.constData(), text.size(), path))
            result = QStringLiteral("Write file Error %1 ").arg(QString::fromLocal8Bit(std::strerror(errno)));
    }
    if (family.push)
        family.push(call.request());
    return result;
}

/// The document under its title.
QJsonObject titled(const Family &family)
{
    QJsonObject document = family.store()->object();
    document.insert(QStringLiteral("Title"), titleOf(family));
    return document;
}

void useInfo(const Family &family, const RemoteCall &call)
{
    call.reply(titled(family), ReplyHead::Echo);
}

void withInkLevels(const Family &family, const RemoteCall &call)
{
    write(family, call);
    QJsonObject levels;
    inkLevels().fill(levels);
    QJsonObject document = titled(family);
    document.insert(QStringLiteral("NozzleCurrentValue"), levels);
    call.reply(document, ReplyHead::Echo);
}

/// The result stays in the document in memory, until the next write replaces it.
void withStatus(const Family &family, const RemoteCall &call)
{
    family.store()->setValue(QStringLiteral("Status"), write(family, call));
    call.reply(family.store()->object(), ReplyHead::Own);
}

void sysFile(const Family &family, const RemoteCall &call)
{
    const QString text = QString::fromUtf8(call.text());
    qWarning() << (QStringLiteral("[func: RecvPeloraPro line:%1]").arg(__LINE__) +
                   text); // the dispatcher's line
    withStatus(family, call);
}

/// Documents that only the client reads: kept as this program writes them, and a write answers with no more
/// than its title.
void clientFile(const Family &family, const RemoteCall &call)
{
    QJsonObject answer;
    if (call["Action"].toString() == QLatin1String("Get"))
        answer = family.store()->object();
    else if (isWrite(family, call))
        family.store()->syncFile(QString::fromUtf8(QJsonDocument(call.request()).toJson()));
    answer.insert(QStringLiteral("Title"), call["Title"]);
    call.reply(answer, ReplyHead::Own);
}

void pushInk(const QJsonObject &ink)
{
    setInkFeedingPara(ink);
}

void pushAir(const QJsonObject &air)
{
    setAirPressurePara(air);
}

constexpr Family families[] = {
    {"Ink.json", inkConfig, withInkLevels, "Write", true, pushInk},
    {"Sys.json", sysConfig, sysFile, "Write", false, nullptr},
    {"Air.json", airConfig, withStatus, "Write", true, pushAir},
    {"Fan.json", fanConfig, withStatus, "Write", false, nullptr},
    {"UseInfo.json", useInfoConfig, useInfo, nullptr, false, nullptr},
    {"MachineName", machineNameConfig, clientFile, "Set", false, nullptr},
    {"Materials", materialsConfig, clientFile, "Set", false, nullptr},
    {"Settings", settingsConfig, clientFile, "Save", false, nullptr},
    {"Styles", stylesConfig, clientFile, "Save", false, nullptr},
};
} // namespace

void parameterFileCommand(const RemoteCall &call)
{
    const QString title = call["Title"].toString();
    for (const Family &family : families) {
        if (title == QLatin1String(family.title))
            return family.run(family, call);
    }
}
