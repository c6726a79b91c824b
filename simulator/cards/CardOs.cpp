#include "CardOs.h"

#include <algorithm>
#include <memory>
#include <openssl/evp.h>

namespace
{
enum Status : uint16_t {
    Good = 0x9000,
    NotAuthenticated = 0x6300,
    MemoryFailure = 0x6581,
    WrongLength = 0x6700,
    SecurityNotSatisfied = 0x6982,
    ConditionsNotSatisfied = 0x6985,
    NoCurrentFile = 0x6986,
    FileNotFound = 0x6A82,
    NoSuchKey = 0x6A88,
    WrongOffset = 0x6B00,
    UnknownInstruction = 0x6D00,
    UnknownClass = 0x6E00,
};
enum Instruction : uint8_t {
    ExternalAuthenticate = 0x82,
    GetChallenge = 0x84,
    Select = 0xA4,
    ReadBinary = 0xB0,
    UpdateBinary = 0xD6,
};
constexpr int masterFile = 0x3F00;
constexpr int baseInfoFile = 0x0101;
constexpr int weightFile = 0x0102;
constexpr size_t header = 5; ///< CLA INS P1 P2 and one length
constexpr size_t block = 8;

Bytes status(uint16_t word)
{
    return {uint8_t(word >> 8), uint8_t(word)};
}

Bytes good(Bytes data)
{
    data.push_back(uint8_t(Good >> 8));
    data.push_back(uint8_t(Good & 0xFF));
    return data;
}

int parameter(const Bytes &command)
{
    return command[2] << 8 | command[3];
}

/// Whether the data are as long as the length byte says.
bool wellFormed(const Bytes &command)
{
    return command.size() == header + command[4];
}

void putNumber(Bytes *bytes, uint32_t value)
{
    for (int shift = 0; shift < 32; shift += 8)
        bytes->push_back(uint8_t(value >> shift));
}

void putText(Bytes *bytes, const std::string &text, size_t length)
{
    for (size_t i = 0; i < length; ++i)
        bytes->push_back(i < text.size() ? uint8_t(text[i]) : 0);
}

/// Whole blocks, two-key triple DES, each block for itself. Empty when the computer's library refuses.
Bytes encrypted(const Bytes &plain, const std::array<uint8_t, 16> &key)
{
    const std::unique_ptr<EVP_CIPHER_CTX, void (*)(EVP_CIPHER_CTX *)> context(EVP_CIPHER_CTX_new(),
                                                                              EVP_CIPHER_CTX_free);
    Bytes out(plain.size() + block);
    int length = 0;
    if (!EVP_EncryptInit_ex(context.get(), EVP_des_ede_ecb(), nullptr, key.data(), nullptr) ||
        !EVP_CIPHER_CTX_set_padding(context.get(), 0) ||
        !EVP_EncryptUpdate(context.get(), out.data(), &length, plain.data(), int(plain.size())))
        return {};
    out.resize(size_t(length));
    return out;
}
} // namespace

void CardOs::reset()
{
    m_file = 0;
    m_challenge.clear();
    m_authenticated = false;
}

Bytes CardOs::answer(const Bytes &command)
{
    static const struct {
        Instruction instruction;
        Bytes (CardOs::*run)(const Bytes &command);
    } instructions[] = {
        {Select, &CardOs::select},
        {GetChallenge, &CardOs::getChallenge},
        {ExternalAuthenticate, &CardOs::authenticate},
        {ReadBinary, &CardOs::readBinary},
        {UpdateBinary, &CardOs::updateBinary},
    };
    if (command.size() < header)
        return status(WrongLength);
    if (command[0] != 0)
        return status(UnknownClass);
    if (command[1] != ExternalAuthenticate)
        m_challenge.clear(); // good for the very next command only
    for (const auto &entry : instructions) {
        if (command[1] == entry.instruction)
            return (this->*entry.run)(command);
    }
    return status(UnknownInstruction);
}

Bytes CardOs::select(const Bytes &command)
{
    if (!wellFormed(command) || command[4] != 2)
        return status(WrongLength);
    const int id = command[5] << 8 | command[6];
    if (parameter(command) != 0 || (id != masterFile && id != baseInfoFile && id != weightFile))
        return status(FileNotFound);
    if (id == masterFile)
        m_authenticated = false;
    m_file = id;
    return status(Good);
}

Bytes CardOs::getChallenge(const Bytes &command)
{
    const size_t length = command[4];
    if (command.size() != header || (length != 4 && length != 8))
        return status(WrongLength);
    std::generate_n(std::back_inserter(m_challenge), length, m_random);
    return good(m_challenge);
}

Bytes CardOs::authenticate(const Bytes &command)
{
    Bytes plain;
    plain.swap(m_challenge);
    m_authenticated = false;
    if (!wellFormed(command))
        return status(WrongLength);
    if (parameter(command) != 0)
        return status(NoSuchKey);
    if (plain.empty())
        return status(ConditionsNotSatisfied);
    plain.resize((plain.size() & ~(block - 1)) + block);
    const Bytes right = encrypted(plain, m_bottle.card.key);
    m_authenticated = !right.empty() && Bytes(command.begin() + header, command.end()) == right;
    return status(m_authenticated ? Good : NotAuthenticated);
}

uint16_t CardOs::checkAccess(const Bytes &command, size_t length) const
{
    if (m_file != baseInfoFile && m_file != weightFile)
        return NoCurrentFile;
    if (!m_authenticated)
        return SecurityNotSatisfied;
    const size_t size = file().size();
    const size_t offset = size_t(parameter(command));
    if (offset >= size)
        return WrongOffset;
    if (length == 0 || offset + length > size)
        return WrongLength;
    return m_bottle.card.unreadable ? MemoryFailure : 0;
}

Bytes CardOs::file() const
{
    const SmartCard &card = m_bottle.card;
    Bytes bytes;
    if (m_file == baseInfoFile) {
        putText(&bytes, card.type, 8);
        putNumber(&bytes, card.weight);
        putText(&bytes, card.sn, 15);
        bytes.push_back(0);
        putNumber(&bytes, card.date);
    } else {
        putNumber(&bytes, card.rest);
    }
    return bytes;
}

Bytes CardOs::readBinary(const Bytes &command)
{
    const size_t length = command[4];
    const uint16_t refused = command.size() == header ? checkAccess(command, length) : uint16_t(WrongLength);
    if (refused)
        return status(refused);
    const Bytes content = file();
    const auto from = content.begin() + parameter(command);
    return good(Bytes(from, from + long(length)));
}

/// Only the weight is ever written; the issuer has locked the other file.
Bytes CardOs::updateBinary(const Bytes &command)
{
    const uint16_t refused = wellFormed(command) ? checkAccess(command, command[4]) : uint16_t(WrongLength);
    if (refused)
        return status(refused);
    if (m_file != weightFile)
        return status(SecurityNotSatisfied);
    if (m_bottle.fault == CardFault::PullOnWrite) {
        m_bottle.fault = CardFault::None;
        m_bottle.present = false;
        return {};
    }
    SmartCard &card = m_bottle.card;
    if (card.refusedWrites > 0) {
        if (--card.refusedWrites == 0)
            m_bottle.fault = CardFault::None;
        return status(MemoryFailure);
    }
    Bytes content = file();
    std::copy(command.begin() + header, command.end(), content.begin() + parameter(command));
    card.rest = 0;
    for (size_t i = 0; i < content.size(); ++i)
        card.rest |= uint32_t(content[i]) << 8 * i;
    return status(Good);
}
