#pragma once
// The machine's parameter files as documents: what a person reads and edits, without the keys of the messages
// that carry them and stay in the files.

#include <QJsonObject>
#include <QVector>

class Session;

struct ParameterFile {
    const char *name;  ///< on the command line
    const char *title; ///< on the wire
    const char *write; ///< the verb that writes; empty: read only
    bool hasIsSave;    ///< pushed to the boards at once, and kept only when told so
    const char *holds; ///< for the help

    /// Where a backup keeps it: "Sys.json", "MachineName.json".
    QString fileName() const;
    bool isReadOnly() const { return !*write; }
};

const QVector<ParameterFile> &parameterFiles();
/// By either name, with or without ".json"; throws a Failure when there is none.
const ParameterFile &parameterFile(const QString &name);

QJsonObject readParameters(Session &session, const ParameterFile &file);
/// Sends the whole document and reads it back. `keep` false: only to the boards, for trying values out.
void writeParameters(Session &session, const ParameterFile &file, const QJsonObject &document,
                     bool keep = true);
/// A JSON object out of text; throws a Failure that names `where`.
QJsonObject parsedObject(const QByteArray &text, const QString &where);
/// A document as the person's: message keys taken out.
QJsonObject withoutMessageKeys(QJsonObject document);
