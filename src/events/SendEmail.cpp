#include "events/SendEmail.h"

#include "frame/JsonConfig.h"

JsonConfig *emailConfig()
{
    static auto *config = new JsonConfig(QStringLiteral("config/email.json"));
    return config;
}

QByteArray SendEmail(const QString &, const QString &body)
{
    return body.isEmpty() ? QByteArray() : QByteArrayLiteral("\n");
}
