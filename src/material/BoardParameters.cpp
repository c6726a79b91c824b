#include "material/BoardParameters.h"

#include "links/BoardCommands.h"
#include "links/Usb2Can.h"
#include "platform/Log.h"

#include <vector>

namespace
{
enum Layout {
    Byte,         ///< one byte
    Word,         ///< low byte first
    WordHighFirst ///< high byte first: only the positive pressure, whose board reads it so
};

struct Field {
    const char *key;
    int at; ///< index in the message's data
    Layout layout;
};

struct Step {
    quint8 board;
    quint8 command;
    bool failureLogged;
    std::vector<Field> fields;
};

CanMsg message(const Step &step, const QJsonObject &values)
{
    CanMsg result = canMessage(step.board, step.command);
    for (const Field &field : step.fields) {
        // A key that is absent or no whole number reads as 0; what the field cannot hold is cut off.
        const int value = values.value(QLatin1String(field.key)).toInt();
        if (field.layout == Byte) {
            result.data[field.at] = quint8(value);
        } else if (field.layout == Word) {
            setValue16(result, field.at, quint16(value));
        } else {
            result.data[field.at] = quint8(quint32(value) >> 8);
            result.data[field.at + 1] = quint8(value);
        }
    }
    return result;
}

void send(const CanMsg &request, bool failureLogged)
{
    CanMsg reply;
    const int result = sendCommand(request, &reply);
    LOG_WARNING(hexText(request, reply));
    if (failureLogged && result != SendOk)
        LOG_WARNING(QStringLiteral("neg press error \r\n"));
}
} // namespace

int setAirPressurePara(QJsonObject air)
{
    static const Step steps[] = {
        {boardAir, 0x46, false, {{"PosPressure", 1, WordHighFirst}}},
        {boardAir,
         0x44,
         true,
         {{"Nozzle1Str1", 2, Word}, {"Nozzle1Str2", 4, Word}, {"Nozzle1Str3", 6, Word}}},
        {boardAir,
         0x45,
         false,
         {{"Nozzle1Sup1", 2, Word}, {"Nozzle1Sup2", 4, Word}, {"Nozzle1Sup3", 6, Word}}},
        {boardAir,
         0x48,
         false,
         {{"NegPumpSpeed1", 1, Byte},
          {"NegPumpSpeed2", 2, Byte},
          {"NegPumpSpeed3", 3, Byte},
          {"NegPumpSpeed4", 4, Byte},
          {"NegPumpSpeed5", 5, Byte},
          {"NegPumpSpeed6", 6, Byte}}},
        {boardInk, 0x46, false, {{"SupValve", 1, Byte}, {"StrValve", 2, Byte}}},
        {boardAir, 0x73, false, {{"NegSorce", 2, Word}, {"NegSorceOffset", 4, Byte}}},
    };
    for (const Step &step : steps)
        send(message(step, air), step.failureLogged);
    return 0;
}

void setInkFeedingPara(QJsonObject ink)
{
    static const Step steps[] = {
        {boardInk, 0x44, true, {{"SupFeedingTime", 1, Byte}}},
        {boardInk, 0x45, true, {{"StrFeedingTime", 1, Byte}}},
        {boardInk, 0xFE, true, {{"SupValveInhaleTime", 1, Byte}, {"StrValveInhaleTime", 2, Byte}}},
    };
    for (const Step &step : steps)
        send(message(step, ink), step.failureLogged);

    static const Step pressing = {boardAir, 0x70, true, {{"PressTime", 7, Byte}}};
    const CanMsg request = message(pressing, ink);
    if (request.data[7] != 0)
        send(request, pressing.failureLogged);
}
