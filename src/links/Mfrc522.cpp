// The chip itself: registers, preparation, one transfer to the card and back, the card's activation.

#include "links/Mfrc522.h"

#include "links/CardBus.h"
#include "platform/Clock.h"

#include <QDebug>

#include <algorithm>

using namespace Mfrc522Reg;

namespace
{

constexpr unsigned pollMs = 20;
constexpr int chipPolls = 100; // two seconds for a card that is absent
constexpr int crcPolls = 255;
constexpr unsigned settleMs = 500; // the card between the steps of its activation
constexpr int longestAnswer = 18;
constexpr int shortFrameBits = 7;

struct RegisterValue {
    quint8 address;
    quint8 value;
};

constexpr RegisterValue resetSteps[] = {
    {CommandReg, SoftReset}, {ControlReg, 0x10},   {CWGsPReg, 0x3F}, {TxModeReg, 0},
    {RxModeReg, 0},          {TxControlReg, 0x83}, {TxASKReg, 0x40},
};

// Receiver and timer as tuned for these cards and this antenna; the transmissions in between wake the field
// up.
constexpr RegisterValue tagSteps[] = {
    {ModeReg, 0x3D},     {TxModeReg, 0},           {RxModeReg, 0},        {TxSelReg, 0x15},
    {MfRxReg, 0},        {RxSelReg, 0x86},         {ModWidthReg, 0x26},   {RFCfgReg, 0x70},
    {GsNReg, 0x88},      {CWGsPReg, 0x3F},         {ModGsPReg, 0x20},     {TReloadRegL, 0x1E},
    {TReloadRegH, 0},    {TModeReg, 0x8D},         {TPrescalerReg, 0x3E}, {FIFOLevelReg, FlushBuffer},
    {FIFODataReg, 0x40}, {CommandReg, Transceive}, {TReloadRegL, 0x30},   {TReloadRegH, 0},
    {TModeReg, 0x8D},    {TPrescalerReg, 0x3E},    {TxASKReg, 0x40},      {FIFOLevelReg, FlushBuffer},
    {FIFODataReg, 0x40}, {CommandReg, Transceive},
};

// Which interrupts a command may raise and which of them mean that it is done.
struct CommandIrqs {
    quint8 command;
    quint8 enabled;
    quint8 waitMask;
};
constexpr CommandIrqs commandIrqs[] = {{Transceive, 0x77, 0x30}, {MFAuthent, 0x12, 0x10}};

quint8 checkByte(const QByteArray &uid)
{
    return quint8(uid[0] ^ uid[1] ^ uid[2] ^ uid[3]);
}

} // namespace

void Mfrc522::prepare(quint8 tagConfig)
{
    for (const RegisterValue &step : resetSteps)
        write(step.address, step.value);
    if (writeTagConfig(tagConfig) ==
        0) // the result is for the reader of the output: activation finds out anyway
        qDebug("%s,%d TagConfig OK\n", __func__, __LINE__);
    else
        qDebug("%s,%d TagConfig Err\n", __func__, __LINE__);
}

int Mfrc522::writeTagConfig(quint8 tagConfig)
{
    if (tagConfig == 1) {
        const bool written = std::all_of(std::begin(tagSteps), std::end(tagSteps), [this](const auto &step) {
            return write(step.address, step.value) == 0;
        });
        return written ? 0 : -2;
    }
    clearBits(Status2Reg, MFCrypto1On);
    write(ModeReg, 0x3D);
    return 0;
}

int Mfrc522::activate(quint8 requestCode)
{
    clearBits(Status2Reg, MFCrypto1On);
    write(BitFramingReg, shortFrameBits);
    setBits(TxControlReg, TxRFEn);
    int bits = 0;
    if (transceive(Transceive, QByteArray(1, char(requestCode)), &m_type, &bits) != Good || bits != 16)
        return NoAnswer;
    Sleep(settleMs);
    if (!readUid()) {
        qDebug("get uid error\n");
        return NoUid;
    }
    Sleep(settleMs);
    if (!select()) {
        qDebug("select card error\n");
        return NotSelected;
    }
    return Activated;
}

bool Mfrc522::readUid()
{
    clearBits(Status2Reg, MFCrypto1On);
    write(BitFramingReg, 0);
    clearBits(CollReg, ValuesAfterColl);
    int bits = 0;
    QByteArray answer;
    int result = transceive(Transceive, QByteArrayLiteral("\x93\x20"), &answer, &bits);
    m_uid = answer.leftJustified(5, '\0', true);
    if (result == Good && checkByte(m_uid) != quint8(m_uid[4]))
        result = Failed;
    setBits(CollReg, ValuesAfterColl);
    return result == Good;
}

bool Mfrc522::select()
{
    const QByteArray frame = withCrc(QByteArrayLiteral("\x93\x70") + m_uid.left(4) + char(checkByte(m_uid)));
    clearBits(Status2Reg, MFCrypto1On);
    int bits = 0;
    QByteArray answer;
    const int result = transceive(Transceive, frame, &answer, &bits);
    if (result != Good || bits != 24)
        return false;
    m_sak = quint8(answer[0]);
    return true;
}

void Mfrc522::halt()
{
    int bits = 0;
    QByteArray answer; // a card that obeys does not answer
    transceive(Transceive, withCrc(QByteArray("\x50\x00", 2)), &answer, &bits);
}

int Mfrc522::transceive(quint8 command, const QByteArray &in, QByteArray *out, int *outBits)
{
    const auto *irqs = std::find_if(std::begin(commandIrqs), std::end(commandIrqs),
                                    [command](const CommandIrqs &row) { return row.command == command; });
    const CommandIrqs use = irqs == std::end(commandIrqs) ? CommandIrqs{command, 0, 0} : *irqs;
    write(ComIEnReg, use.enabled | IRqInv);
    clearBits(ComIrqReg, Set1);
    write(CommandReg, Idle);
    setBits(FIFOLevelReg, FlushBuffer);
    writeFifo(in);
    write(CommandReg, command);
    if (command == Transceive)
        setBits(BitFramingReg, StartSend);

    const int result = waitForChip(use.enabled, use.waitMask);
    if (result == Good && command == Transceive) {
        const int count = read(FIFOLevelReg);
        const int lastBits = read(ControlReg) & RxLastBits;
        *outBits = lastBits ? (count - 1) * 8 + lastBits : count * 8;
        *out = readFifo(qBound(1, count, longestAnswer));
    }
    setBits(ControlReg, TStopNow);
    write(CommandReg, Idle);
    return result;
}

int Mfrc522::waitForChip(quint8 enabled, quint8 waitMask)
{
    quint8 raised = 0;
    bool done = false;
    for (int i = 0; i < chipPolls && !done; ++i) {
        raised = read(ComIrqReg);
        Sleep(pollMs);
        done = raised & (TimerIRq | waitMask);
    }
    clearBits(BitFramingReg, StartSend);
    if (!done || (read(ErrorReg) & anyError))
        return Failed;
    return raised & enabled & TimerIRq ? TimedOut : Good;
}

QByteArray Mfrc522::withCrc(const QByteArray &bytes)
{
    clearBits(DivIrqReg, CRCIRq);
    write(CommandReg, Idle);
    setBits(FIFOLevelReg, FlushBuffer);
    writeFifo(bytes);
    write(CommandReg, CalcCRC);
    for (int i = 0; i < crcPolls; ++i) {
        if (read(DivIrqReg) & CRCIRq)
            break;
    }
    const char low = char(read(CRCResultRegL));
    const char high = char(read(CRCResultRegH));
    return bytes + low + high;
}

quint8 Mfrc522::read(quint8 address)
{
    return m_bus->readRegister(address, m_bridged);
}

int Mfrc522::write(quint8 address, quint8 value)
{
    return m_bus->writeRegister(address, value, m_bridged);
}

void Mfrc522::setBits(quint8 address, quint8 bits)
{
    write(address, read(address) | bits);
}

void Mfrc522::clearBits(quint8 address, quint8 bits)
{
    write(address, read(address) & quint8(~bits));
}

void Mfrc522::writeFifo(const QByteArray &bytes)
{
    for (char byte : bytes)
        write(FIFODataReg, quint8(byte));
}

QByteArray Mfrc522::readFifo(int count)
{
    QByteArray bytes;
    for (int i = 0; i < count; ++i)
        bytes += char(read(FIFODataReg));
    return bytes;
}
