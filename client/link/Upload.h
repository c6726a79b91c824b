#pragma once
// One model on its way to the machine: announce, blocks, finish, each acknowledged before the next.

#include <QIODevice>
#include <functional>

class MachineLink;

struct UploadResult {
    qint64 bytes = 0;
    int resent = 0; ///< blocks that the machine refused and got again
    double seconds = 0;
};

class Upload
{
public:
    using Progress = std::function<void(qint64 done, double bytesPerSecond)>;

    Upload(MachineLink &link, int blockSize, int attempts)
        : m_link(link), m_blockSize(blockSize), m_attempts(attempts)
    {
    }

    /// The machine empties a model of this name at once; throws when it can't open it.
    void announce(const QString &name, quint64 size);
    /// Sends the whole source in blocks. A block that is refused goes again.
    UploadResult send(QIODevice &source, const Progress &progress);
    /// The answer says nothing about success: the queue does.
    void finish();

private:
    /// True when the block was written, false when it was refused.
    bool sendBlock(quint32 number, const QByteArray &payload);

    MachineLink &m_link;
    int m_blockSize;
    int m_attempts;
};
