#include "CommandWords.h"

#include "HeadArray.h"

#include <cmath>

const QString words::badArguments = QStringLiteral("wrong arguments");

bool words::readSwitch(const QString &word, const char *on, const char *off, bool *value)
{
    *value = word == QLatin1String(on);
    return *value || word == QLatin1String(off);
}

bool words::readMaterial(const QString &word, InkMaterial *material)
{
    bool support = false;
    const bool known = readSwitch(word, "support", "structure", &support);
    *material = support ? Support : Structure;
    return known;
}

bool words::readHead(const QString &word, int *head)
{
    *head = word.toInt();
    return HeadArray::exists(*head);
}

bool words::readAmount(const QString &word, double *amount)
{
    bool number = false;
    *amount = word.toDouble(&number);
    return number && *amount >= 0 && std::isfinite(*amount);
}
