#include "ContactlessCard.h"

namespace
{
enum Request : uint8_t {
    Reqa = 0x26,
    Wupa = 0x52,
    Halt = 0x50,
    SelectLevel1 = 0x93,
    Rats = 0xE0,
};
constexpr int shortFrameBits = 7;
constexpr uint8_t wholeIdentity = 0x70; ///< second byte of a select: 7 bytes, no bits
constexpr uint8_t askIdentity = 0x20;
const Bytes answerToRequest = {0x04, 0x00}; ///< single-size identity, bit frame anticollision
constexpr uint8_t speaksBlocks = 0x20;      ///< SAK: complete identity, ISO 14443-4
/// Frames of 64 bytes; same speed in both directions only; frame waiting time 77 ms; a CID is understood.
const Bytes answerToSelect = {0x05, 0x75, 0x80, 0x81, 0x02};
const size_t frameSizes[] = {16, 24, 32, 40, 48, 64, 96, 128, 256};
constexpr size_t blockFrame = 4; ///< PCB, CID and the checksum

// Protocol control byte.
constexpr uint8_t informationMask = 0xC2, information = 0x02;
constexpr uint8_t supervisorMask = 0xC7, supervisor = 0xC2;
constexpr uint8_t chaining = 0x10, withCid = 0x08, withNode = 0x04, numberBit = 0x01;
constexpr uint8_t supervisorKind = 0x30;

QString hex(const Bytes &bytes)
{
    return QByteArray(reinterpret_cast<const char *>(bytes.data()), int(bytes.size())).toHex(' ');
}
} // namespace

ContactlessCard::ContactlessCard(Bottle &bottle, CardOs::Random random, Violation violation)
    : m_bottle(bottle), m_violation(std::move(violation)), m_os(bottle, std::move(random)),
      m_insertion(bottle.insertion)
{
}

void ContactlessCard::reset()
{
    m_state = State::Idle;
    m_insertion = m_bottle.insertion;
    m_os.reset();
}

Bytes ContactlessCard::receive(const AirFrame &frame)
{
    if (!m_bottle.cardInField() || m_insertion != m_bottle.insertion)
        reset();
    if (!m_bottle.cardInField() || frame.bytes.empty())
        return {};
    if (m_state != State::Protocol && frame.bytes.size() == 1 && frame.lastBits == shortFrameBits)
        return wake(frame);
    if (frame.lastBits != 0)
        return {};
    switch (m_state) {
    case State::Ready:
        return frame.bytes.size() == 2 ? pick(frame.bytes) : select(frame.bytes);
    case State::Active:
        return whenActive(frame.bytes);
    case State::Protocol:
        return block(frame.bytes);
    default:
        return {};
    }
}

Bytes ContactlessCard::wake(const AirFrame &frame)
{
    const bool called = (m_state == State::Idle && frame.bytes[0] == Reqa) || frame.bytes[0] == Wupa;
    // A card that is already on its way to being selected takes a request for an error and falls back.
    const bool resting = m_state == State::Idle || m_state == State::Halted;
    m_os.reset();
    if (!resting)
        m_state = State::Idle;
    if (!called || !resting)
        return {};
    m_state = State::Ready;
    return answerToRequest;
}

Bytes ContactlessCard::identity() const
{
    uint16_t mark = crcTypeA;
    for (const char letter : m_bottle.card.sn)
        mark = crcStep(mark, uint8_t(letter));
    // The first byte tells the maker; 0x88 there would announce a longer identity.
    Bytes bytes = {0x1D, 0x62, uint8_t(mark), uint8_t(mark >> 8)};
    bytes.push_back(uint8_t(bytes[0] ^ bytes[1] ^ bytes[2] ^ bytes[3]));
    return bytes;
}

Bytes ContactlessCard::pick(const Bytes &frame)
{
    if (frame[0] == SelectLevel1 && frame[1] == askIdentity)
        return identity();
    m_state = State::Idle;
    return {};
}

Bytes ContactlessCard::select(Bytes frame)
{
    m_state = State::Idle;
    const QString text = hex(frame);
    if (!takeCrc(&frame) || frame.size() != 7 || frame[0] != SelectLevel1 || frame[1] != wholeIdentity) {
        m_violation("card-frame", "no select, or a wrong checksum: " + text);
        return {};
    }
    const Bytes identity = this->identity();
    if ((frame[2] ^ frame[3] ^ frame[4] ^ frame[5]) != frame[6])
        m_violation("card-frame", "wrong check byte of the identity: " + text);
    if (Bytes(frame.begin() + 2, frame.end()) != identity)
        return {};
    m_state = State::Active;
    Bytes answer = {speaksBlocks};
    appendCrc(&answer);
    return answer;
}

Bytes ContactlessCard::whenActive(Bytes frame)
{
    const QString text = hex(frame);
    m_state = State::Idle;
    if (!takeCrc(&frame) || frame.size() != 2) {
        m_violation("card-frame", "neither halt nor RATS, or a wrong checksum: " + text);
        return {};
    }
    if (frame[0] == Rats)
        return enterProtocol(frame);
    if (frame[0] == Halt && frame[1] == 0)
        m_state = State::Halted;
    return {};
}

Bytes ContactlessCard::enterProtocol(const Bytes &frame)
{
    const size_t size = frame[1] >> 4;
    m_cid = frame[1] & 0x0F;
    if (size >= std::size(frameSizes) || m_cid == 0x0F) {
        m_violation("card-frame", "RATS with a reserved value: " + hex(frame));
        return {};
    }
    m_frameLimit = frameSizes[size];
    m_blockNumber = 0;
    m_state = State::Protocol;
    Bytes answer = answerToSelect;
    appendCrc(&answer);
    return answer;
}

Bytes ContactlessCard::block(Bytes frame)
{
    const QString text = hex(frame);
    if (!takeCrc(&frame) || frame.size() < 2) {
        m_violation("card-frame", "a block with a wrong checksum: " + text);
        return {};
    }
    const uint8_t control = frame[0];
    if ((control & informationMask) == information)
        return informationBlock(frame);
    const bool deselect = (control & supervisorMask) == supervisor && (control & supervisorKind) == 0;
    if (!deselect || !(control & withCid) || (frame[1] & 0x0F) != m_cid)
        return {}; // a halt among them: in blocks it means nothing
    m_state = State::Halted;
    m_os.reset();
    appendCrc(&frame);
    return frame;
}

Bytes ContactlessCard::informationBlock(const Bytes &frame)
{
    const uint8_t control = frame[0];
    const bool form = (control & withCid) && !(control & (chaining | withNode)) && !(control & 0x20);
    if (!form || (control & numberBit) != m_blockNumber || (frame[1] & 0x0F) != m_cid) {
        m_violation(
            "card-block",
            QString("block number %1, CID %2 expected: %3").arg(m_blockNumber).arg(m_cid).arg(hex(frame)));
        return {};
    }
    const Bytes data = m_os.answer(Bytes(frame.begin() + 2, frame.end()));
    if (data.empty())
        return {};
    if (data.size() + blockFrame > m_frameLimit) {
        m_violation("card-block", "the answer does not fit the reader's frame");
        return {};
    }
    m_blockNumber ^= 1;
    Bytes answer = {control, frame[1]};
    answer.insert(answer.end(), data.begin(), data.end());
    appendCrc(&answer);
    return answer;
}
