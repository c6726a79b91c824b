#pragma once
// The bytes on the card line in words: each access to a register by its name in the MFRC522 data sheet, and
// what went through the chip to the card and back.

#include <QByteArray>
#include <QStringList>
#include <QVector>

class CardTraffic
{
public:
    /// `sent` by the program, `answered` by the line, which answers each command with three bytes.
    CardTraffic(const QByteArray &sent, const QByteArray &answered);

    /// "select channel 1", "write CommandReg 0F", "read ComIrqReg -> 14"; accesses to the FIFO in a row are
    /// one.
    QStringList accesses() const;
    /// "send 93 20", "recv 04 00", "crc 50 00": what the chip was told to do with its FIFO, and what was
    /// taken out.
    QStringList frames() const;
    /// What could not be read, empty when all of it could.
    QString fault() const { return m_fault; }

private:
    struct Access {
        enum Kind { Select, Read, Write } kind;
        int address; ///< or channel
        QByteArray values;
    };
    void take(Access access);

    QVector<Access> m_accesses;
    QString m_fault;
};
