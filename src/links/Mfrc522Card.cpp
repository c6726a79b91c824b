// The card behind the chip: the block protocol (ISO 14443-4) and the commands (ISO 7816-4) that fit one
// block.

#include "links/CardAuth.h"
#include "links/Mfrc522.h"
#include "platform/Clock.h"

#include <QDebug>

using namespace Mfrc522Reg;

namespace
{

constexpr unsigned selectAnswerMs = 3; // what the card and the chip need, in place of a poll
constexpr int blockHead = 2;           // PCB and CID
constexpr int statusSize = 2;
constexpr int longestChallenge = 16;

QByteArray status(const QByteArray &answer)
{
    return answer.size() < statusSize ? QByteArray(statusSize, '\0') : answer.right(statusSize);
}

bool accepted(const QByteArray &answer)
{
    return status(answer) == QByteArrayLiteral("\x90\x00");
}

QByteArray command(quint8 instruction, quint8 first, quint8 second, int length, const QByteArray &data = {})
{
    const char head[] = {0x00, char(instruction), char(first), char(second), char(length)};
    return QByteArray(head, int(sizeof head)) + data;
}

QByteArray hex(const QByteArray &bytes)
{
    return bytes.toHex(' ').toUpper();
}

} // namespace

QByteArray Mfrc522::requestAnswerToSelect()
{
    m_pcb ^= 1;
    startBlock(QByteArray(1, char(0xE0)) + char((m_cid & 0x0F) | 0x50)); // 0x50: answers of up to 64 bytes
    Sleep(selectAnswerMs);
    const quint8 count = read(FIFOLevelReg);
    qDebug("FIFOLevel %hhu\n", count);
    return readAnswer(count);
}

QByteArray Mfrc522::readAnswer(quint8 level)
{
    // More than the chip holds is the value of a level that could not be read: on a dead line each byte would
    // take its whole time-out.
    return level > fifoDepth ? QByteArray() : readFifo(level);
}

void Mfrc522::startBlock(const QByteArray &bytes)
{
    write(FIFOLevelReg, FlushBuffer);
    write(TxModeReg, CRCEn);
    write(RxModeReg, CRCEn);
    writeFifo(bytes);
    write(CommandReg, Transceive);
    write(BitFramingReg, StartSend);
}

QByteArray Mfrc522::sendBlock(const QByteArray &data, const Pace &pace)
{
    m_pcb ^= 1;
    qDebug("command send: PCB = %.2X, CID = %.2X, %s", m_pcb, m_cid, hex(data).constData());
    startBlock(QByteArray(1, char(m_pcb)) + char(m_cid) + data);
    Sleep(pace.sendMs);
    write(BitFramingReg, 0);
    if (pace.answerMs)
        Sleep(pace.answerMs);
    const QByteArray answer = readAnswer(read(FIFOLevelReg));
    qDebug("command recv: %s", hex(answer).constData());
    return answer;
}

QByteArray Mfrc522::exchange(const QByteArray &data, int capacity)
{
    const QByteArray answer = sendBlock(data, {30, 50});
    if (answer.size() > capacity + blockHead) {
        qDebug("FIFOLevel %u, pOutData len %u,  is too small\n", uint(answer.size()), uint(capacity));
        return {};
    }
    return answer.mid(blockHead);
}

void Mfrc522::selectByName(const QByteArray &name)
{
    exchange(command(0xA4, 0, 0, name.size(), name), fifoDepth); // the next command tells whether it worked
}

bool Mfrc522::selectFile(quint16 id, QByteArray *answer)
{
    const QByteArray name = QByteArray(1, char(id >> 8)) + char(id & 0xFF);
    *answer = exchange(command(0xA4, 0, 0, name.size(), name), fifoDepth);
    return accepted(*answer);
}

bool Mfrc522::readBinary(quint16 offset, quint8 length, QByteArray *answer)
{
    *answer =
        exchange(command(0xB0, quint8(offset >> 8), quint8(offset & 0xFF), length), length + statusSize);
    return accepted(*answer) && answer->size() == length + statusSize;
}

bool Mfrc522::updateBinary(quint16 offset, const QByteArray &data, QByteArray *answer)
{
    *answer =
        exchange(command(0xD6, quint8(offset >> 8), quint8(offset & 0xFF), data.size(), data), fifoDepth);
    return accepted(*answer);
}

bool Mfrc522::getChallenge()
{
    m_challenge.clear();
    const QByteArray answer = sendBlock(command(0x84, 0, 0, 4), {10, 0});
    if (answer.size() >= blockHead + statusSize && accepted(answer))
        m_challenge = answer.mid(blockHead, answer.size() - blockHead - statusSize);
    if (m_challenge.size() > longestChallenge)
        m_challenge.clear();
    return !m_challenge.isEmpty();
}

bool Mfrc522::CPUExternalAuth(quint8 keyId, const QByteArray &key, QByteArray *cardStatus)
{
    if (m_challenge.isEmpty()) {
        qDebug("CPUExternalAuth: ChallengeLen is 0\n");
        return false;
    }
    const QByteArray proof = CPU3DESencrypt(key, m_challenge, longestChallenge + 8);
    if (proof.isEmpty())
        return false;
    *cardStatus = status(exchange(command(0x82, 0, keyId, proof.size(), proof), fifoDepth));
    return true;
}
