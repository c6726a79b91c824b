#include "links/CardBus.h"

#include "platform/Clock.h"

#include <QDebug>
#include <QElapsedTimer>

namespace
{

constexpr unsigned lineTimeoutMs = 1500; // real time: the chip's and the multiplexer's longest answer
constexpr unsigned selectMs = 10;        // pacing of the multiplexer, from its maker
constexpr unsigned registerMs = 20;
constexpr int answerTries = 5;
constexpr quint8 addressBits = 0x3F;
constexpr quint8 readBit = 0x80; // the chip's mark of a read, in the address byte

constexpr int mismatched = -1;
constexpr int notConfirmed = -9;

} // namespace

int CardBus::selectChannel(quint8 channel)
{
    if (!send({0x01, 0x01, channel})) {
        qDebug("write uart error\n");
        return mismatched;
    }
    Sleep(selectMs);
    Triple answer{};
    if (!receive(answer.data(), int(answer.size()))) {
        qDebug("uart recv error\n");
        return mismatched;
    }
    if (answer[2] == channel)
        return 0;
    qDebug("error: source value %02x but return value %02x\n", channel, answer[2]);
    return mismatched;
}

quint8 CardBus::readRegister(quint8 address, quint8 bridged)
{
    const quint8 marked = quint8((address & addressBits) | readBit);
    quint8 value = 0;
    if (bridged ? readBridged(marked, &value) : send({marked}) && receive(&value, 1))
        return value;
    qDebug("error: uart recv addr error\n");
    return readFailed;
}

int CardBus::writeRegister(quint8 address, quint8 value, quint8 bridged)
{
    address &= addressBits;
    quint8 echo[2] = {};
    if (bridged ? writeBridged(address, value, echo) : send({address, value}) && receive(echo, 2)) {
        if (echo[0] == address)
            return 0;
    }
    qDebug("error: source addr %02x but return addr %02x\n", address, echo[0]);
    return notConfirmed;
}

bool CardBus::readBridged(quint8 address, quint8 *value)
{
    const auto good = [](const Triple &answer) { return answer[0] == 0x02 && answer[1] == 0x01; };
    Triple answer{};
    if (!send({0x02, 0x01, address}))
        return false;
    Sleep(registerMs);
    const bool whole = receiveTriple(&answer, good);
    *value = answer[2];
    return whole && good(answer);
}

bool CardBus::writeBridged(quint8 address, quint8 value, quint8 *confirmed)
{
    Triple answer{};
    if (!send({0x02, 0x02, address, value}))
        return false;
    Sleep(registerMs);
    const bool whole = receiveTriple(&answer, [address](const Triple &triple) {
        return triple[0] == 0x02 && triple[1] == 0x01 && triple[2] == address;
    });
    *confirmed = answer[2]; // of the last answer the address alone decides
    return whole;
}

template <typename Good> bool CardBus::receiveTriple(Triple *answer, Good good)
{
    for (int i = 0; i < answerTries; ++i) {
        if (!receive(answer->data(), int(answer->size())))
            return false;
        if (good(*answer))
            break;
    }
    return true;
}

bool CardBus::send(std::initializer_list<quint8> bytes)
{
    const quint8 *next = bytes.begin();
    while (next != bytes.end()) {
        const int written = m_port.write(next, int(bytes.end() - next), lineTimeoutMs);
        if (written <= 0)
            return false;
        next += written;
    }
    m_port.flush(lineTimeoutMs);
    return true;
}

bool CardBus::receive(quint8 *bytes, int count)
{
    for (int done = 0; done < count; ++done) {
        QElapsedTimer timer;
        timer.start();
        int got = 0;
        while (got == 0 && !timer.hasExpired(lineTimeoutMs))
            got = m_port.read(bytes + done, 1);
        if (got <= 0)
            return false;
    }
    return true;
}
