#include "FaultRegister.h"

#include "Commands.h"

#include <QJsonArray>

namespace
{
const QStringList offWords{"off", "revive", "normal", "no", "none", "free", "tight"};
const QStringList amounts{"RATE", "AMOUNT"}; ///< 0 switches these off

/// Place of the word that switches a fault: the last one that may not be left out. -1 for a fault of the
/// moment.
int switchPlace(const Command &command)
{
    const QStringList fields = QString(command.arguments).split(' ', Qt::SkipEmptyParts);
    int place = fields.size() - 1;
    while (place >= 0 && fields[place].startsWith('['))
        --place;
    if (place < 0 || amounts.contains(fields[place]))
        return place;
    for (const QString &word : fields[place].split('|')) {
        if (offWords.contains(word))
            return place;
    }
    return -1;
}
} // namespace

void FaultRegister::follow(const QJsonObject &state)
{
    for (const QJsonValue &value : state["bottles"].toArray()) {
        const QJsonObject bottle = value.toObject();
        if (bottle["fault"].toString().isEmpty())
            m_active.remove(QStringLiteral("card %1").arg(bottle["position"].toInt()));
    }
}

void FaultRegister::note(const Command &command, const QStringList &words)
{
    const int place = command.fault ? switchPlace(command) : -1;
    if (place < 0 || words.size() < place + 2)
        return;
    const QString target = words.mid(0, place + 1).join(' ');
    const QString value = words[place + 1];
    bool number = false;
    const bool zero = value.toDouble(&number) == 0 && number;
    if (zero || offWords.contains(value))
        m_active.remove(target);
    else
        m_active[target] = words.join(' ');
}
