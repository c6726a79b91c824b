#include "ReaderChip.h"

#include "ReaderRegisters.h"

using namespace chip;

namespace
{
enum Command : uint8_t {
    Idle = 0x0,
    CalcCRC = 0x3,
    NoCmdChange = 0x7,
    Transceive = 0xC,
    SoftReset = 0xF,
};
constexpr uint8_t commandMask = 0x0F;
constexpr size_t fifoSize = 64;

constexpr uint8_t setBits = 0x80; ///< ComIrqReg, DivIrqReg: whether a write sets or clears the marked bits
// ComIrqReg
constexpr uint8_t txIrq = 0x40, rxIrq = 0x20, idleIrq = 0x10, timerIrq = 0x01;
constexpr uint8_t crcIrq = 0x04; ///< DivIrqReg
// ErrorReg
constexpr uint8_t bufferOverflow = 0x10, crcError = 0x04;
// Status1Reg
constexpr uint8_t crcOk = 0x40, crcReady = 0x20, timerRuns = 0x08;
constexpr uint8_t crypto = 0x08; ///< Status2Reg: can only be cleared
constexpr uint8_t flush = 0x80;  ///< FIFOLevelReg
// ControlReg
constexpr uint8_t stopTimer = 0x80, startTimerNow = 0x40;
// BitFramingReg
constexpr uint8_t startSend = 0x80, lastBitsMask = 0x07;
constexpr uint8_t crcEnabled = 0x80;     ///< TxModeReg, RxModeReg
constexpr uint8_t antennaPins = 0x03;    ///< TxControlReg
constexpr uint8_t fullModulation = 0x40; ///< TxASKReg: type A is sent with all of the amplitude
constexpr uint8_t timerAuto = 0x80;      ///< TModeReg
constexpr double carrier = 13.56e6;
const uint16_t crcPresets[] = {0x0000, 0x6363, 0xA671, 0xFFFF}; ///< by the low bits of ModeReg
} // namespace

ReaderChip::ReaderChip(World world) : m_world(std::move(world))
{
    reset();
}

void ReaderChip::reset()
{
    for (const RegisterSheet &sheet : registerSheet)
        at(sheet.address) = sheet.reset;
    m_fifo.clear();
    m_timer = {};
    m_world.fieldOff();
}

uint8_t ReaderChip::read(int address)
{
    if (!sheetOf(address)) {
        violation(QString("no register 0x%1").arg(address, 2, 16, QChar('0')));
        return 0;
    }
    lookAtTimer();
    switch (address) {
    case FIFODataReg:
        return fifoOut();
    case FIFOLevelReg:
        return uint8_t(m_fifo.size());
    case Status1Reg:
        return uint8_t((at(Status1Reg) & ~timerRuns) | (m_timer.running ? timerRuns : 0));
    default:
        return at(address);
    }
}

void ReaderChip::write(int address, uint8_t value)
{
    const RegisterSheet *sheet = sheetOf(address);
    if (!sheet || !sheet->writable) {
        violation(QString("register 0x%1 is not to be written").arg(address, 2, 16, QChar('0')));
        return;
    }
    lookAtTimer();
    setRegister(address, value);
}

void ReaderChip::setRegister(int address, uint8_t value)
{
    switch (address) {
    case CommandReg:
        return command(value);
    case ComIrqReg:
    case DivIrqReg:
        return interrupts(address, value);
    case Status2Reg:
        at(Status2Reg) = uint8_t(value & (at(Status2Reg) | ~crypto));
        return;
    case FIFODataReg:
        return fifoIn(value);
    case FIFOLevelReg:
        return level(value);
    case ControlReg:
        return control(value);
    case BitFramingReg:
        return bitFraming(value);
    case TxControlReg:
        return antenna(value);
    default:
        at(address) = value;
    }
}

void ReaderChip::interrupts(int address, uint8_t value)
{
    const uint8_t marked = uint8_t(value & ~setBits);
    at(address) = uint8_t(value & setBits ? at(address) | marked : at(address) & ~marked);
}

void ReaderChip::level(uint8_t value)
{
    if (!(value & flush))
        return;
    m_fifo.clear();
    at(ErrorReg) = uint8_t(at(ErrorReg) & ~bufferOverflow);
}

void ReaderChip::fifoIn(uint8_t value)
{
    if (m_fifo.size() == fifoSize) {
        at(ErrorReg) |= bufferOverflow;
        violation("the FIFO overflows");
        return;
    }
    m_fifo.push_back(value);
    if ((at(CommandReg) & commandMask) == CalcCRC)
        calculate();
}

uint8_t ReaderChip::fifoOut()
{
    if (m_fifo.empty())
        return 0;
    const uint8_t value = m_fifo.front();
    m_fifo.pop_front();
    return value;
}

void ReaderChip::control(uint8_t value)
{
    if (value & stopTimer)
        m_timer.running = false;
    if (value & startTimerNow)
        startTimer();
}

void ReaderChip::antenna(uint8_t value)
{
    const bool wasOn = antennaOn();
    at(TxControlReg) = value;
    if (wasOn && !antennaOn())
        m_world.fieldOff();
}

bool ReaderChip::antennaOn() const
{
    return m_registers[TxControlReg] & antennaPins;
}

void ReaderChip::command(uint8_t value)
{
    const uint8_t code = value & commandMask;
    if (code == SoftReset)
        return reset();
    if (code == NoCmdChange) {
        at(CommandReg) = uint8_t((value & ~commandMask) | (at(CommandReg) & commandMask));
        return;
    }
    at(CommandReg) = value;
    at(ErrorReg) = 0;
    if (code == CalcCRC) {
        m_crc = crcPresets[at(ModeReg) & 0x03];
        at(Status1Reg) = uint8_t(at(Status1Reg) & ~(crcReady | crcOk));
        calculate();
    } else if (code != Idle && code != Transceive) {
        violation(QString("command 0x%1 is not for these cards").arg(code, 0, 16));
        at(CommandReg) = uint8_t(value & ~commandMask);
        at(ComIrqReg) |= idleIrq;
    }
}

/// The command goes on until another ends it, so that more bytes may follow.
void ReaderChip::calculate()
{
    while (!m_fifo.empty())
        m_crc = crcStep(m_crc, fifoOut());
    at(CRCResultRegL) = uint8_t(m_crc);
    at(CRCResultRegH) = uint8_t(m_crc >> 8);
    at(Status1Reg) |= uint8_t(crcReady | (m_crc == 0 ? crcOk : 0));
    at(DivIrqReg) |= crcIrq;
}

void ReaderChip::bitFraming(uint8_t value)
{
    at(BitFramingReg) = value;
    if (value & startSend)
        transmit();
}

void ReaderChip::transmit()
{
    if ((at(CommandReg) & commandMask) != Transceive)
        return violation("StartSend without the command Transceive");
    if (m_fifo.empty())
        return violation("StartSend with nothing in the FIFO");
    if (!antennaOn() || !(at(TxASKReg) & fullModulation))
        violation(antennaOn() ? "sent with half of the modulation" : "sent with the antenna off");
    AirFrame frame{Bytes(m_fifo.begin(), m_fifo.end()), at(BitFramingReg) & lastBitsMask};
    m_fifo.clear();
    if (at(TxModeReg) & crcEnabled)
        appendCrc(&frame.bytes);
    at(ErrorReg) = 0;
    at(ComIrqReg) |= txIrq;
    const bool heard = antennaOn() && (at(TxASKReg) & fullModulation);
    if (at(TModeReg) & timerAuto)
        startTimer();
    Bytes answer = heard ? m_world.exchange(frame) : Bytes();
    if (!answer.empty())
        receive(std::move(answer));
}

void ReaderChip::receive(Bytes answer)
{
    m_timer.running = false; // the first bits of an answer stop it
    if ((at(RxModeReg) & crcEnabled) && !takeCrc(&answer))
        at(ErrorReg) |= crcError;
    m_fifo.assign(answer.begin(), answer.end());
    at(ControlReg) = uint8_t(at(ControlReg) & ~lastBitsMask); // all answers are whole bytes
    at(ComIrqReg) |= rxIrq;
}

/// Each step of the counter lasts 2 x prescaler + 1 cycles of the carrier; one more step ends it.
void ReaderChip::startTimer()
{
    const int prescaler = (at(TModeReg) & 0x0F) << 8 | at(TPrescalerReg);
    const int reload = at(TReloadRegH) << 8 | at(TReloadRegL);
    m_timer = {true, m_world.seconds() + (reload + 1) * (2 * prescaler + 1) / carrier};
}

void ReaderChip::lookAtTimer()
{
    if (!m_timer.running || m_world.seconds() < m_timer.end)
        return;
    m_timer.running = false;
    at(ComIrqReg) |= timerIrq;
}
