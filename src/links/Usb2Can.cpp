#include "links/Usb2Can.h"

#include "frame/Singleton.h"
#include "platform/Clock.h"
#include "platform/Log.h"

#include <cstring>

namespace
{

constexpr quint8 bridgeChannel = 0xFF; // a frame of the bridge itself, not of the bus
constexpr quint32 toBoard = 0x40;      // marks a board number on its way out
constexpr int answerWaits = 2;         // the second one skips a stale answer to an earlier request
constexpr quint32 commandTimeoutMs = 1000;
constexpr quint8 commandDlc = 8;

struct BridgeLength {
    quint32 first;
    quint32 last;
    int length;
};

constexpr BridgeLength bridgeLengths[] = {
    {0x1FFFEA0, 0x1FFFEA0, 1}, {0x1FFFEB0, 0x1FFFEB0, 1}, {0x1FFFED0, 0x1FFFED0, 4},
    {0x1FFFEFF, 0x1FFFEFF, 4}, {0x1FFFEE0, 0x1FFFEED, 8},
};

} // namespace

Usb2Can::~Usb2Can()
{
    ClosePort();
}

int Usb2Can::SendMsg(const CanMsg *request, CanMsg *reply, quint32 timeoutMs, quint8 channel, quint8 dlc,
                     quint8 reserved0, quint8 reserved1)
{
    if (!isOpen())
        return SendClosed;
    MutexLock lock(m_mutex);
    CanMsg message = *request;
    CanMsg answer;
    if (m_filter.value(int(message.id), false)) {
        LOG_WARNING(QStringLiteral("filter id=%1").arg(message.id));
        return SendClosed;
    }
    message.id |= toBoard;
    message.channel = channel;
    message.dlc = dlc;
    message.reserved0 = reserved0;
    message.reserved1 = reserved1;

    int result = SendNoAnswer;
    if (channel == bridgeChannel)
        result = SendBridgeChannel;
    else if (!SendFrame(reinterpret_cast<const quint8 *>(&message), sizeof message, timeoutMs))
        result = SendWriteFailed;
    if (result != SendNoAnswer) {
        LOG_WARNING(hexText(message, answer));
        *reply = answer;
        return result;
    }
    for (int i = 0; i < answerWaits; ++i) {
        std::memset(answer.data, 0, qMin<size_t>(dlc, sizeof answer.data));
        if (!m_answerEvent.wait(timeoutMs)) {
            result = SendNoAnswer;
            LOG_WARNING(hexText(message, answer));
            continue;
        }
        answer = newestAnswer();
        result = SendOk;
        if (answer.data[0] == message.data[0])
            break;
        LOG_WARNING(hexText(message, answer));
    }
    *reply = answer;
    return result;
}

void Usb2Can::SetFilter(quint8 boardId, bool filtered)
{
    MutexLock lock(m_mutex);
    m_filter[boardId] = filtered;
}

void Usb2Can::OnFrame(const quint8 *frame, int length)
{
    CanMsg message;
    if (length != int(sizeof message))
        return;
    std::memcpy(&message, frame, sizeof message);
    if (message.channel == bridgeChannel) {
        {
            MutexLock lock(m_slotMutex);
            m_bridgeFrame = message;
        }
        m_bridgeEvent.set();
        Sleep(1);
        return;
    }
    {
        MutexLock lock(m_slotMutex);
        m_answerFrame = message;
    }
    m_answerEvent.set();
    RT_COM::OnFrame(frame, length);
}

int Usb2Can::FrameLength(quint32 code) const
{
    for (const BridgeLength &row : bridgeLengths)
        if (code >= row.first && code <= row.last)
            return row.length;
    return 0;
}

CanMsg Usb2Can::newestAnswer() const
{
    MutexLock lock(m_slotMutex);
    return m_answerFrame;
}

Usb2Can *usb2Can()
{
    return singleton<Usb2Can>();
}

int sendCommand(const CanMsg &request, CanMsg *reply)
{
    return usb2Can()->SendMsg(&request, reply, commandTimeoutMs, 0, commandDlc, 0, 0);
}
