#pragma once
// Where this machine's ports, sockets and media lie, and how the program's installation learns of it.

#include <QJsonObject>
#include <QString>
#include <QStringList>

struct Site {
    QString install;
    QString folder; ///< <install>/../.PeloraTemp/machine
    QString bridge; ///< link to the pseudo terminal of the bridge
    QString cards;  ///< link to that of the card reader
    QString heads;
    QString control;
    QString media; ///< volumes appear here
    QString note;  ///< what is not as usual

    /// Makes the folders. Paths given by the caller stand, the others are filled in.
    bool prepare(QString *error);
    /// Writes the paths into config/Platform.json and leaves its other keys alone.
    bool tellProgram(QString *error) const;
    QJsonObject toJson() const;

    bool plug(const QString &folderOfVolume, const QString &name, QString *error) const;
    bool unplug(const QString &name, QString *error) const;

private:
    QString socketPath(const QString &name);
};
