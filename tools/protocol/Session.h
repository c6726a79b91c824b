#pragma once
// A session of the remote protocol as data: what a client sends and what must come back.
//
// A session file is an array of steps. A step with a "name" is shown in the document under it. What is sent
// is one of
//   "request"   a JSON object                           "text"      the payload of a JSON frame as it stands
//   "binary"    command bytes, with "payload" bytes     "bytes"     bytes as they stand
//   "announce"  {"name", "size"}                        "block"     {"number", "data", "spoilt"}
//   "scan"      {"port"}: a datagram of "text" behind six bytes, or of "bytes"
// and what must come back is "reply": null for nothing, or an object with "head" ("echo" or "own"), "tail"
// (FF FF unless told) and one of
//   "object"    the keys, as a pattern                  "adds"      the request with these keys
//   "payload"   bytes, as a pattern                     "same"      the request's payload, byte for byte
//   "bytes"     the whole reply, as a byte pattern; no head, no tail
// "until": true asks again until it is so. "then" is a list of what must hold afterwards, each with "is":
//   "file"      is "request", "indented" (the request as the program writes JSON), or "before"
//   "exists"    a path below the installation
//   "state"     a path in the simulated machine's state; instead of "is", one of them may have "grows", a
//   number "log"       this text is in the program's log
// "show": "bytes" has the document show whole frames.

#include <QJsonObject>
#include <QString>
#include <QVector>

struct SessionStep {
    QString place; ///< file and number, for messages
    QJsonObject data;

    QString name() const { return data["name"].toString(); }
    /// What goes out, without what a frame adds.
    QByteArray payload() const;
    /// What goes out.
    QByteArray bytes() const;
    /// Whether the reply is JSON, whatever it is.
    bool repliesJson() const;
    /// The reply's keys. The files in it are read now.
    QJsonObject wantedKeys(const QString &installFolder) const;
};

/// The two bytes that requests of a session start with.
QByteArray sessionStart();

/// The steps of a file; empty, with a message, when it cannot be read.
QVector<SessionStep> readSession(const QString &file, QString *error);
