#pragma once
// What the operator can do. Each takes the request's object and gives the answer's. GUI thread.
#include <QJsonObject>
#include <QString>

QJsonObject success(QJsonObject answer = {});
QJsonObject failure(const QString &why);

/// Every operation but "wait", which takes time and so belongs to the server.
QJsonObject runCommand(const QJsonObject &request);
/// What is wrong with a "wait" request; empty when nothing is.
QString badWait(const QJsonObject &request);
bool waitIsMet(const QJsonObject &request);
