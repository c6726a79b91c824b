#pragma once
// What a reply must be, where some of it differs between runs, and what stands for that in the document.
//
// In JSON a text "<int 5>", "<number 1.5>", "<bool true>" or "<text any>" asks for the type alone and is
// written as its example. The key "..." names a JSON file of the installation whose keys belong here, too. A
// key that ends with
// "?" may be absent and is not written. Bytes are hexadecimal: "4A" is that byte, "4A?" any one, written as
// 4A, and "00*9" nine of them.

#include <QByteArray>
#include <QJsonValue>
#include <QString>

/// What the value should have been, with the place in it; empty when it matches. `stable` becomes what the
/// document shows.
QString mismatch(const QJsonValue &pattern, const QJsonValue &value, QJsonValue *stable);
QString mismatch(const QString &bytePattern, const QByteArray &bytes, QByteArray *stable);
/// The bytes that the text stands for.
QByteArray bytesOf(const QString &bytePattern);
/// Puts the keys of the files in: the pattern of the reply as the installation stands now.
QJsonObject withFiles(QJsonObject pattern, const QString &installFolder);
