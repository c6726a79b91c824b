#pragma once
// Registers, commands and bits of the MFRC522 reader chip, named as in its data sheet.

#include <QtGlobal>

namespace Mfrc522Reg
{
enum Register : quint8 {
    CommandReg = 0x01,
    ComIEnReg = 0x02,
    ComIrqReg = 0x04,
    DivIrqReg = 0x05,
    ErrorReg = 0x06,
    Status2Reg = 0x08,
    FIFODataReg = 0x09,
    FIFOLevelReg = 0x0A,
    ControlReg = 0x0C,
    BitFramingReg = 0x0D,
    CollReg = 0x0E,
    ModeReg = 0x11,
    TxModeReg = 0x12,
    RxModeReg = 0x13,
    TxControlReg = 0x14,
    TxASKReg = 0x15,
    TxSelReg = 0x16,
    RxSelReg = 0x17,
    MfRxReg = 0x1D,
    CRCResultRegH = 0x21,
    CRCResultRegL = 0x22,
    ModWidthReg = 0x24,
    RFCfgReg = 0x26,
    GsNReg = 0x27,
    CWGsPReg = 0x28,
    ModGsPReg = 0x29,
    TModeReg = 0x2A,
    TPrescalerReg = 0x2B,
    TReloadRegH = 0x2C,
    TReloadRegL = 0x2D,
};

/// What CommandReg is told.
enum Command : quint8 {
    Idle = 0x00,
    CalcCRC = 0x03,
    Transceive = 0x0C,
    MFAuthent = 0x0E,
    SoftReset = 0x0F,
};

constexpr quint8 Set1 = 0x80;        ///< ComIrqReg: written as 0, the other ones of the byte clear their bits
constexpr quint8 IRqInv = 0x80;      ///< ComIEnReg
constexpr quint8 TimerIRq = 0x01;    ///< ComIrqReg
constexpr quint8 CRCIRq = 0x04;      ///< DivIrqReg
constexpr quint8 anyError = 0x1B;    ///< ErrorReg: buffer overflow, collision, parity, protocol
constexpr quint8 MFCrypto1On = 0x08; ///< Status2Reg
constexpr quint8 FlushBuffer = 0x80; ///< FIFOLevelReg
constexpr quint8 TStopNow = 0x80;    ///< ControlReg
constexpr quint8 RxLastBits = 0x07;  ///< ControlReg
constexpr quint8 StartSend = 0x80;   ///< BitFramingReg
constexpr quint8 ValuesAfterColl = 0x80; ///< CollReg
constexpr quint8 TxRFEn = 0x03;          ///< TxControlReg: both antenna drivers
constexpr quint8 CRCEn = 0x80;           ///< TxModeReg, RxModeReg
constexpr int fifoDepth = 64;
} // namespace Mfrc522Reg
