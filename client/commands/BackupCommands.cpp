// All parameters of a machine in a folder, and back. Restoring checks everything before it writes anything.

#include "commands/Command.h"
#include "commands/ParameterFile.h"
#include "commands/Session.h"
#include "commands/TemperatureTable.h"
#include "link/Failure.h"
#include "output/Difference.h"
#include "output/Terminal.h"

#include <QDateTime>
#include <QDir>
#include <QJsonDocument>
#include <QSaveFile>
#include <functional>

namespace
{
const char temperaturesName[] = "temperatures.json";
const char labelName[] = "backup.json";

void save(const QDir &folder, const QString &name, const QJsonObject &document)
{
    QSaveFile file(folder.filePath(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(QJsonDocument(document).toJson()) < 0 ||
        !file.commit())
        throw Failure{Exit::Usage,
                      QStringLiteral("%1 can't be written: %2").arg(file.fileName(), file.errorString())};
}

QJsonObject load(const QDir &folder, const QString &name)
{
    QFile file(folder.filePath(name));
    if (!file.open(QIODevice::ReadOnly))
        throw Failure{Exit::Usage,
                      QStringLiteral("%1 can't be read: %2").arg(file.fileName(), file.errorString())};
    return parsedObject(file.readAll(), file.fileName());
}

void backup(Session &session)
{
    QDir folder(session.word(0));
    if (folder.exists() && !folder.isEmpty() && !session.arguments().has("yes"))
        throw Failure{Exit::Usage,
                      QStringLiteral("%1 is not empty; choose a new folder, or say --yes to write over an "
                                     "older backup.")
                          .arg(folder.path())};
    QMap<QString, QJsonObject> files; // all read before any is written, so that no half a backup is left
    for (const ParameterFile &file : parameterFiles())
        files[file.fileName()] = readParameters(session, file);
    QJsonObject temperatures;
    for (int profile = 0; profile < settableProfiles; ++profile)
        temperatures[QLatin1String(profileNames()[profile])] = readTemperatures(session, profile);
    files[QLatin1String(temperaturesName)] = temperatures;
    const QJsonObject status = session.status();
    files[QLatin1String(labelName)] = {{"Made", QDateTime::currentDateTime().toString(Qt::ISODate)},
                                       {"Name", files["MachineName.json"]["Name"]},
                                       {"UUID", status["UUID"]},
                                       {"FirmwareVer", status["FirmwareVer"]}};
    if (!folder.mkpath(QStringLiteral(".")))
        throw Failure{Exit::Usage, QStringLiteral("The folder %1 can't be made.").arg(folder.path())};
    for (auto file = files.cbegin(); file != files.cend(); ++file)
        save(folder, file.key(), file.value());
    session.report(QStringLiteral("%1 files are in %2.").arg(files.size()).arg(folder.path()),
                   {{"Folder", folder.path()}, {"Files", QJsonArray::fromStringList(files.keys())}});
}

/// One document that differs, and how to write it.
struct Step {
    QString name;
    QVector<Change> changes;
    std::function<void()> write;
};

/// Names and JSON, before the machine is asked anything.
QMap<QString, QJsonObject> loadBackup(const QDir &folder)
{
    QStringList known{temperaturesName, labelName};
    for (const ParameterFile &file : parameterFiles())
        known << file.fileName();
    QMap<QString, QJsonObject> files;
    for (const QString &name : folder.entryList(QDir::Files)) {
        if (!known.contains(name))
            throw Failure{Exit::Usage, QStringLiteral("%1 does not belong to a backup; nothing was written.")
                                           .arg(folder.filePath(name))};
        files[name] = load(folder, name);
    }
    const QJsonObject temperatures = files.value(QLatin1String(temperaturesName));
    for (const QString &profile : temperatures.keys()) {
        if (profileNumber(profile) >= settableProfiles)
            throw Failure{Exit::Usage, QStringLiteral("What was measured can't be restored.")};
        checkTemperatures(temperatures[profile].toObject(), profile);
    }
    if (files.isEmpty())
        throw Failure{Exit::Usage, QStringLiteral("There is no backup in %1.").arg(folder.path())};
    return files;
}

/// The table of files stands in the order that is safe to write: names first, what moves or heats last.
QVector<Step> stepsFor(Session &session, const QMap<QString, QJsonObject> &files)
{
    QVector<Step> steps;
    for (const ParameterFile &file : parameterFiles()) {
        if (file.isReadOnly() || !files.contains(file.fileName()))
            continue;
        const QJsonObject wanted = withoutMessageKeys(files[file.fileName()]);
        steps << Step{file.fileName(), difference(readParameters(session, file), wanted),
                      [&session, &file, wanted] { writeParameters(session, file, wanted); }};
    }
    QVector<int> profiles{0, 1, 2};
    const int inForce = session.status()["Status"].toInt();
    if (profiles.removeOne(inForce))
        profiles << inForce;
    const QJsonObject temperatures = files.value(QLatin1String(temperaturesName));
    for (int profile : profiles) {
        const QJsonObject now = readTemperatures(session, profile);
        QJsonObject wanted = now;
        const QJsonObject kept = temperatures[QLatin1String(profileNames()[profile])].toObject();
        for (const QString &key : kept.keys())
            wanted[key] = kept[key];
        steps << Step{QStringLiteral("temperatures, ") + QLatin1String(profileNames()[profile]),
                      difference(now, wanted),
                      [&session, profile, wanted] { writeTemperatures(session, profile, wanted); }};
    }
    QVector<Step> needed;
    std::copy_if(steps.begin(), steps.end(), std::back_inserter(needed),
                 [](const Step &step) { return !step.changes.isEmpty(); });
    return needed;
}

void tellOrigin(Session &session, const QJsonObject &label)
{
    const QString kept = label["UUID"].toString();
    if (!kept.isEmpty() && kept != session.status()["UUID"].toString())
        terminal::complain(QStringLiteral("This backup was made of another machine, %1 (%2).")
                               .arg(label["Name"].toString(), kept));
}

void write(const QVector<Step> &steps)
{
    QStringList written;
    for (const Step &step : steps) {
        try {
            step.write();
        } catch (Failure &failure) {
            failure.text +=
                QStringLiteral("\nWritten before that: %1. Run the same command again to go on.")
                    .arg(written.isEmpty() ? QStringLiteral("nothing") : written.join(QStringLiteral(", ")));
            throw;
        }
        written << step.name;
    }
}

void restore(Session &session)
{
    const QDir folder(session.word(0));
    const QMap<QString, QJsonObject> files = loadBackup(folder);
    session.refuseWhilePrinting(QStringLiteral("restoring parameters"));
    const QVector<Step> steps = stepsFor(session, files);
    QJsonArray names;
    for (const Step &step : steps) {
        names << step.name;
        if (!session.json()) {
            terminal::say(step.name + QLatin1Char(':'));
            printDifference(step.changes);
        }
        for (const Change &change : step.changes) {
            if (change.changesType() && !session.arguments().has("force"))
                throw Failure{Exit::Usage,
                              QStringLiteral("%1: %2 would get a value of another kind; nothing was "
                                             "written. --force restores it all the same.")
                                  .arg(step.name, change.path)};
        }
    }
    if (steps.isEmpty())
        return session.report(QStringLiteral("Nothing differs."), {{"Written", names}});
    tellOrigin(session, files.value(QLatin1String(labelName)));
    session.confirm(QStringLiteral("Write this to the machine?"));
    write(steps);
    session.report(QStringLiteral("%1 documents restored and read back.").arg(names.size()),
                   {{"Written", names}});
}
} // namespace

QVector<Command> backupCommands()
{
    Command keep{"backup",
                 "DIR",
                 "Saves all parameter files and the temperature table.",
                 "",
                 {"backup printer-2024-05-01"},
                 {yesOption},
                 1,
                 1,
                 backup};
    Command back{
        "restore",
        "DIR",
        "Writes a backup to the machine, after showing what differs.",
        "Names and contents are checked before anything is written, and each file is read back. What the\n"
        "machine counts itself (UseInfo.json) is not written. A folder may hold some of the files only.",
        {"restore printer-2024-05-01", "restore printer-2024-05-01 --yes"},
        {yesOption, {"force", nullptr, "Also while the machine prints, and values of another kind."}},
        1,
        1,
        restore};
    keep.takesFiles = back.takesFiles = true;
    return {keep, back};
}
