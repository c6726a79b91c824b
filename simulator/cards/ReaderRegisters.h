#pragma once
// Registers of the reader chip by the names of its data sheet, with what they hold after a reset.

#include <cstdint>

namespace chip
{
enum Register {
    CommandReg = 0x01,
    ComIEnReg = 0x02,
    DivIEnReg = 0x03,
    ComIrqReg = 0x04,
    DivIrqReg = 0x05,
    ErrorReg = 0x06,
    Status1Reg = 0x07,
    Status2Reg = 0x08,
    FIFODataReg = 0x09,
    FIFOLevelReg = 0x0A,
    WaterLevelReg = 0x0B,
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
    RxThresholdReg = 0x18,
    DemodReg = 0x19,
    MfTxReg = 0x1C,
    MfRxReg = 0x1D,
    SerialSpeedReg = 0x1F,
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
    TCounterValRegH = 0x2E,
    TCounterValRegL = 0x2F,
    TestSel1Reg = 0x31,
    TestSel2Reg = 0x32,
    TestPinEnReg = 0x33,
    TestPinValueReg = 0x34,
    TestBusReg = 0x35,
    AutoTestReg = 0x36,
    VersionReg = 0x37,
    AnalogTestReg = 0x38,
    TestDAC1Reg = 0x39,
    TestDAC2Reg = 0x3A,
    TestADCReg = 0x3B,
};

struct RegisterSheet {
    Register address;
    uint8_t reset;
    bool writable;
};

constexpr RegisterSheet registerSheet[] = {
    {CommandReg, 0x20, true},      {ComIEnReg, 0x80, true},        {DivIEnReg, 0x00, true},
    {ComIrqReg, 0x14, true},       {DivIrqReg, 0x00, true},        {ErrorReg, 0x00, false},
    {Status1Reg, 0x21, false},     {Status2Reg, 0x00, true},       {FIFODataReg, 0x00, true},
    {FIFOLevelReg, 0x00, true},    {WaterLevelReg, 0x08, true},    {ControlReg, 0x10, true},
    {BitFramingReg, 0x00, true},   {CollReg, 0xA0, true},          {ModeReg, 0x3F, true},
    {TxModeReg, 0x00, true},       {RxModeReg, 0x00, true},        {TxControlReg, 0x80, true},
    {TxASKReg, 0x00, true},        {TxSelReg, 0x10, true},         {RxSelReg, 0x84, true},
    {RxThresholdReg, 0x84, true},  {DemodReg, 0x4D, true},         {MfTxReg, 0x62, true},
    {MfRxReg, 0x00, true},         {SerialSpeedReg, 0xEB, true},   {CRCResultRegH, 0xFF, false},
    {CRCResultRegL, 0xFF, false},  {ModWidthReg, 0x26, true},      {RFCfgReg, 0x48, true},
    {GsNReg, 0x88, true},          {CWGsPReg, 0x20, true},         {ModGsPReg, 0x20, true},
    {TModeReg, 0x00, true},        {TPrescalerReg, 0x00, true},    {TReloadRegH, 0x00, true},
    {TReloadRegL, 0x00, true},     {TCounterValRegH, 0x00, false}, {TCounterValRegL, 0x00, false},
    {TestSel1Reg, 0x00, true},     {TestSel2Reg, 0x00, true},      {TestPinEnReg, 0x80, true},
    {TestPinValueReg, 0x00, true}, {TestBusReg, 0x00, false},      {AutoTestReg, 0x40, true},
    {VersionReg, 0x92, false},     {AnalogTestReg, 0x00, true},    {TestDAC1Reg, 0x00, true},
    {TestDAC2Reg, 0x00, true},     {TestADCReg, 0x00, false},
};

inline const RegisterSheet *sheetOf(int address)
{
    for (const RegisterSheet &sheet : registerSheet) {
        if (sheet.address == address)
            return &sheet;
    }
    return nullptr;
}
} // namespace chip
