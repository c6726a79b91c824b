#include "CardTraffic.h"

#include <QMap>

namespace
{

// From the data sheet, apart from the program's own list.
const QMap<int, const char *> registerNames = {
    {0x01, "CommandReg"},       {0x02, "ComIEnReg"},     {0x04, "ComIrqReg"},    {0x05, "DivIrqReg"},
    {0x06, "ErrorReg"},         {0x08, "Status2Reg"},    {0x09, "FIFODataReg"},  {0x0A, "FIFOLevelReg"},
    {0x0C, "ControlReg"},       {0x0D, "BitFramingReg"}, {0x0E, "CollReg"},      {0x11, "ModeReg"},
    {0x12, "TxModeReg"},        {0x13, "RxModeReg"},     {0x14, "TxControlReg"}, {0x15, "TxASKReg"},
    {0x16, "TxSelReg"},         {0x17, "RxSelReg"},      {0x1D, "MfRxReg"},      {0x21, "CRCResultReg high"},
    {0x22, "CRCResultReg low"}, {0x24, "ModWidthReg"},   {0x26, "RFCfgReg"},     {0x27, "GsNReg"},
    {0x28, "CWGsPReg"},         {0x29, "ModGsPReg"},     {0x2A, "TModeReg"},     {0x2B, "TPrescalerReg"},
    {0x2C, "TReloadReg high"},  {0x2D, "TReloadReg low"}};

constexpr int commandReg = 0x01, fifoData = 0x09, fifoLevel = 0x0A;

QString hex(const QByteArray &bytes)
{
    return QString::fromLatin1(bytes.toHex(' ').toUpper());
}

} // namespace

CardTraffic::CardTraffic(const QByteArray &sent, const QByteArray &answered)
{
    int answer = 0;
    for (int at = 0; at + 2 < sent.size() && m_fault.isEmpty(); answer += 3) {
        const QByteArray command = sent.mid(at, 4), back = answered.mid(answer, 3);
        const int address = command[2] & 0x3F;
        const bool select = command.startsWith("\x01\x01"), write = command.startsWith("\x02\x02");
        const bool read = command.startsWith("\x02\x01") && (command[2] & 0x80);
        if (back.size() < 3 || !(select || read || write) || (!read && back[2] != command[2]) ||
            (!select && (!registerNames.contains(address) || !back.startsWith("\x02\x01"))))
            m_fault = QString("sent %1, answered %2").arg(hex(command), hex(back));
        else if (select)
            take({Access::Select, command[2], {}});
        else
            take({read ? Access::Read : Access::Write, address, read ? back.mid(2) : command.mid(3)});
        at += write ? 4 : 3;
    }
}

void CardTraffic::take(Access access)
{
    const bool more = access.address == fifoData && !m_accesses.isEmpty() &&
                      m_accesses.last().address == fifoData && m_accesses.last().kind == access.kind;
    if (more)
        m_accesses.last().values += access.values;
    else
        m_accesses.append(access);
}

QStringList CardTraffic::accesses() const
{
    const QString forms[] = {"select channel %1", "read %1 -> %2", "write %1 %2"};
    QStringList lines;
    for (const Access &access : m_accesses)
        lines << (access.kind == Access::Select
                      ? forms[access.kind].arg(access.address)
                      : forms[access.kind].arg(registerNames[access.address], hex(access.values)));
    return lines;
}

QStringList CardTraffic::frames() const
{
    QStringList lines;
    QByteArray fifo;
    for (const Access &access : m_accesses) {
        if (access.kind == Access::Read && access.address == fifoData)
            lines << "recv " + hex(access.values);
        if (access.kind != Access::Write)
            continue;
        if (access.address == fifoData)
            fifo += access.values;
        else if (access.address == fifoLevel)
            fifo.clear();
        else if (access.address == commandReg && access.values == "\x0C")
            lines << "send " + hex(fifo);
        else if (access.address == commandReg && access.values == "\x03")
            lines << "crc " + hex(fifo);
    }
    return lines;
}
