#include "commands/ParameterFile.h"

#include "commands/Session.h"
#include "link/Failure.h"

#include <QJsonDocument>
#include <algorithm>

const QVector<ParameterFile> &parameterFiles()
{
    static const QVector<ParameterFile> files{
        {"name", "MachineName", "Set", false, "what the machine is called"},
        {"settings", "Settings", "Save", false, "material, precision, volume and style it announces"},
        {"styles", "Styles", "Save", false, "print styles, for clients"},
        {"materials", "Materials", "Set", false, "materials, for clients"},
        {"fan", "Fan.json", "Write", false, "fan speeds by temperature"},
        {"sys", "Sys.json", "Write", false, "positions, speeds, offsets, voltages"},
        {"ink", "Ink.json", "Write", true, "feeding times and full levels; goes to the boards at once"},
        {"air", "Air.json", "Write", true, "pressures and pumps; goes to the boards at once"},
        {"use", "UseInfo.json", "", false, "hours, layers and wax so far; read only"},
    };
    return files;
}

QString ParameterFile::fileName() const
{
    const QString text = QString::fromLatin1(title);
    return text.endsWith(QLatin1String(".json")) ? text : text + QLatin1String(".json");
}

const ParameterFile &parameterFile(const QString &name)
{
    QString stem = name;
    if (stem.endsWith(QLatin1String(".json"), Qt::CaseInsensitive))
        stem.chop(5);
    QStringList names;
    for (const ParameterFile &file : parameterFiles()) {
        if (!stem.compare(QLatin1String(file.name), Qt::CaseInsensitive) ||
            !file.fileName().compare(stem + ".json", Qt::CaseInsensitive))
            return file;
        names << QString::fromLatin1(file.name);
    }
    throw Failure{Exit::Usage, QStringLiteral("There are no parameters \"%1\"; there are: %2.")
                                   .arg(name, names.join(QStringLiteral(", ")))};
}

QJsonObject withoutMessageKeys(QJsonObject document)
{
    for (const char *key : {"Title", "Action", "IsSave", "Status", "NozzleCurrentValue"})
        document.remove(QLatin1String(key));
    return document;
}

QJsonObject readParameters(Session &session, const ParameterFile &file)
{
    const QString title = QString::fromLatin1(file.title);
    const QJsonObject answer = session.request({{"Title", title}, {"Action", "Get"}});
    const QJsonValue echoed = answer["Title"];
    if (!echoed.isUndefined() && echoed.toString() != title)
        throw Failure{Exit::Refused, QStringLiteral("The machine answered for \"%1\" when asked for \"%2\".")
                                         .arg(echoed.toString(), title)};
    return withoutMessageKeys(answer);
}

void writeParameters(Session &session, const ParameterFile &file, const QJsonObject &document, bool keep)
{
    QJsonObject request = withoutMessageKeys(document);
    request["Title"] = QString::fromLatin1(file.title);
    request["Action"] = QString::fromLatin1(file.write);
    if (file.hasIsSave)
        request["IsSave"] = keep;
    const QString status = session.request(request)["Status"].toString();
    if (status.startsWith(QLatin1String("Write file Error")))
        throw Failure{Exit::Refused,
                      QStringLiteral("The machine could not write %1: %2").arg(file.fileName(), status)};
    if (keep && readParameters(session, file) != withoutMessageKeys(document))
        throw Failure{Exit::Refused,
                      QStringLiteral("%1 was sent, but the machine holds something else now. Look with "
                                     "\"peloractl params get %2\".")
                          .arg(file.fileName(), QLatin1String(file.name))};
}

QJsonObject parsedObject(const QByteArray &text, const QString &where)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(text, &error);
    if (document.isObject())
        return document.object();
    const int line = text.left(error.offset).count('\n') + 1;
    throw Failure{Exit::Usage,
                  error.error == QJsonParseError::NoError
                      ? QStringLiteral("%1 is no JSON object.").arg(where)
                      : QStringLiteral("%1, line %2: %3.").arg(where).arg(line).arg(error.errorString())};
}
