#pragma once
// The bridge to the machine boards: one blocking request and answer at a time.

#include "links/CanMsg.h"
#include "links/RT_COM.h"
#include "platform/AutoResetEvent.h"
#include "platform/Mutex.h"

#include <QMap>

/// Results of SendMsg.
enum SendResult : int {
    SendWriteFailed = 0,
    SendOk = 1, ///< an answer came; it may be a mismatched one, see SendMsg
    SendBridgeChannel = 3,
    SendNoAnswer = 5,
    SendClosed = 6 ///< port not open, or the board filtered; `reply` untouched
};

class Usb2Can : public RT_COM
{
public:
    Usb2Can() = default;
    ~Usb2Can() override;

    /// One request, at most two waits of `timeoutMs` for its answer. `request` and `reply` may be the same
    /// record. Sent once, never again. When the second wait brings a mismatched answer too, the result is 1
    /// with that answer in `reply`: who cares compares data[0]. Any thread; callers are served one at a time.
    int SendMsg(const CanMsg *request, CanMsg *reply, quint32 timeoutMs, quint8 channel, quint8 dlc,
                quint8 reserved0, quint8 reserved1);
    /// With `filtered` set, messages to the board return 6 at once. Any thread.
    void SetFilter(quint8 boardId, bool filtered);

protected:
    /// Keeps a 16-byte frame in the slot of its kind, ignores all others. Reader thread.
    void OnFrame(const quint8 *frame, int length) override;
    /// Expected length of a frame of the bridge itself by its code; 0 when unknown.
    virtual int FrameLength(quint32 code) const;

private:
    CanMsg newestAnswer() const;

    Mutex m_mutex; // callers of every thread against each other and against the bus test's filter
    QMap<int, bool> m_filter PELORA_GUARDED_BY(m_mutex);
    AutoResetEvent m_bridgeEvent;
    AutoResetEvent m_answerEvent;
    mutable Mutex m_slotMutex; // the reader thread writes a slot while a caller copies it
    CanMsg m_bridgeFrame PELORA_GUARDED_BY(m_slotMutex);
    CanMsg m_answerFrame PELORA_GUARDED_BY(m_slotMutex);
};

/// The process's one bridge. Creating it does not open the port. Any thread.
Usb2Can *usb2Can();

/// SendMsg with the values of every ordinary command: 1000 ms, channel 0, dlc 8.
int sendCommand(const CanMsg &request, CanMsg *reply);
