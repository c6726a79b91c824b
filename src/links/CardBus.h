#pragma once
// The serial line to the reader chips: the bytes, the multiplexer's commands and the access to one register.
// Who uses it serialises.

#include "platform/SerialPort.h"

#include <array>

class CardBus
{
public:
    static constexpr quint8 readFailed = 0xF7; ///< value of a register that could not be read

    bool open(int portNumber, int baud) { return m_port.open(portNumber, baud); }
    /// Leads the line to the chip at a position. 0, or -1.
    int selectChannel(quint8 channel);

    /// A register of the selected chip; `readFailed`, which may also be data, when no good answer came.
    /// `bridged` 1 goes through the multiplexer, 0 to a bare chip on the line.
    quint8 readRegister(quint8 address, quint8 bridged);
    /// 0, or -9 when the write was not confirmed.
    int writeRegister(quint8 address, quint8 value, quint8 bridged);

private:
    using Triple = std::array<quint8, 3>;

    bool send(std::initializer_list<quint8> bytes);
    /// False when one of the bytes did not come in time.
    bool receive(quint8 *bytes, int count);
    /// Takes answers until one is `good`; false when a byte did not come. Five at most: then `answer` is the
    /// last.
    template <typename Good> bool receiveTriple(Triple *answer, Good good);
    bool readBridged(quint8 address, quint8 *value);
    bool writeBridged(quint8 address, quint8 value, quint8 *confirmed);

    SerialPort m_port;
};
