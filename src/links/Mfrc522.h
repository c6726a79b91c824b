#pragma once
// A reader chip for the length of one operation: its registers, the card in its field, the card's commands.
// Made afresh for each operation on a line that already leads to the chip.

#include "links/Mfrc522Registers.h"

#include <QByteArray>

#include <array>

class CardBus;

class Mfrc522
{
public:
    /// Results of activate().
    enum Activation : int { Activated = 0, NoAnswer = -4, NoUid = -5, NotSelected = -6 };
    static constexpr quint8 wakeUpAll = 0x52;

    /// `bridged` 1: the registers are reached through the multiplexer.
    Mfrc522(CardBus *bus, quint8 bridged) : m_bus(bus), m_bridged(bridged) {}

    /// Resets the chip, switches its field on and sets it up for these cards.
    void prepare(quint8 tagConfig);
    /// Wakes a card up and selects it. An `Activation`.
    int activate(quint8 requestCode);
    /// Sends the card to sleep.
    void halt();
    /// The card's answer to the wake-up, 2 bytes, and its UID with the check byte, 5 bytes.
    QByteArray typeBytes() const { return m_type; }
    QByteArray uidBytes() const { return m_uid; }

    /// Enters the block protocol. The card's answer, empty when it did not activate.
    QByteArray requestAnswerToSelect();
    /// Each command of the card: its answer in `answer` with the status word, true for 90 00.
    void selectByName(const QByteArray &name);
    bool selectFile(quint16 id, QByteArray *answer);
    /// True only when all `length` bytes came.
    bool readBinary(quint16 offset, quint8 length, QByteArray *answer);
    bool updateBinary(quint16 offset, const QByteArray &data, QByteArray *answer);
    /// Keeps the challenge for the next CPUExternalAuth.
    bool getChallenge();
    /// Answers the challenge. False for a local reason alone: a card that refuses says so in `status`, two
    /// bytes, and at its next command.
    bool CPUExternalAuth(quint8 keyId, const QByteArray &key, QByteArray *status);

private:
    /// What transceive() returns besides 0.
    enum ChipResult : int { Good = 0, Failed = 0xFE, TimedOut = 0xFF };
    /// How long the chip and the card are given for a block.
    struct Pace {
        unsigned sendMs;
        unsigned answerMs;
    };

    quint8 read(quint8 address);
    int write(quint8 address, quint8 value);
    void setBits(quint8 address, quint8 bits);
    void clearBits(quint8 address, quint8 bits);
    void writeFifo(const QByteArray &bytes);
    QByteArray readFifo(int count);

    int writeTagConfig(quint8 tagConfig);
    int transceive(quint8 command, const QByteArray &in, QByteArray *out, int *outBits);
    int waitForChip(quint8 enabled, quint8 waitMask);
    QByteArray withCrc(const QByteArray &bytes);
    bool readUid();
    bool select();

    QByteArray readAnswer(quint8 level);
    void startBlock(const QByteArray &bytes);
    /// An I-block and the whole answer block, PCB and CID first.
    QByteArray sendBlock(const QByteArray &data, const Pace &pace);
    /// The answer without PCB and CID; empty when it is longer than `capacity`.
    QByteArray exchange(const QByteArray &data, int capacity);

    CardBus *m_bus;
    quint8 m_bridged;
    QByteArray m_challenge;
    quint8 m_pcb = 0x0A; // I-block with a CID; bit 0 is the block number
    quint8 m_cid = 1;
    QByteArray m_type = QByteArray(2, '\0');
    QByteArray m_uid = QByteArray(5, '\0');
    quint8 m_sak = 0;
};
