#pragma once
// The serial bridge and its boards, scripted, on a pseudo terminal: give path() to the program as COM16. It
// has its own small reading of the frames, so that a wrong one in the program is caught. Every board echoes
// each request until a handler or a failure says otherwise.

#include "SerialLine.h"

#include <QVector>

#include <functional>
#include <map>
#include <utility>

struct BoardRequest {
    int board = 0;
    QByteArray data; ///< 8 bytes
    int dlc = 0;
    int channel = 0;

    int command() const { return quint8(data[0]); }
    qint32 value() const; ///< data[4..7]
};

class FakeBridge
{
public:
    enum Failure {
        Silent,    ///< no answer
        Late,      ///< the answer comes when the next request does, before that one's own
        WrongEcho, ///< data[0] of the answer is another command's
        Corrupt,   ///< a byte of the answer is wrong, its sum is not
        CutOff,    ///< the answer's first half
        Noise,     ///< rubbish before and after a good answer
    };
    static constexpr int any = -1;
    static constexpr int always = -1;
    /// Makes the 8 answer bytes, none for no answer. Bridge thread: what it touches of the test must be
    /// atomic.
    using Handler = std::function<QByteArray(const BoardRequest &)>;

    FakeBridge();

    QString path() const { return m_line.path(); }

    // All from here on: any thread.
    void setHandler(int board, int command, Handler handler);
    /// A fixed answer: the command code, the given bytes as {index, value}, else 0.
    void setBytes(int board, int command, std::initializer_list<std::pair<int, int>> bytes);
    /// A fixed answer with a value in data[4..7].
    void setValue(int board, int command, qint32 value);
    /// The next `times` requests that match fail so.
    void fail(Failure failure, int board = any, int command = any, int times = always);
    /// Ends every failure, forgets held answers, handlers and what was recorded.
    void reset();
    /// An answer that nobody asked for.
    void sendAnswer(int board, const QByteArray &data, int channel = 0);
    void sendBytes(const QByteArray &bytes) { m_line.send(bytes); }
    /// The device goes away for good.
    void hangUp() { m_line.hangUp(); }

    QVector<BoardRequest> requests(int board = any, int command = any) const;
    int count(int board = any, int command = any) const { return int(requests(board, command).size()); }
    /// Raw bytes as they came in.
    QByteArray received() const;
    void clearRecord();
    /// Frames with a bad sum, a bad length or a field that no caller sets.
    int violations() const;

    /// A frame of these bytes.
    static QByteArray frame(const QByteArray &payload);
    /// The 16-byte record of an answer.
    static QByteArray record(int board, const QByteArray &data, int channel = 0);

private:
    struct Script {
        Failure failure;
        int board;
        int command;
        int times;
    };

    void takeBytes(const QByteArray &bytes);
    void takePayload(const QByteArray &payload);
    void answer(const BoardRequest &request);
    QByteArray makeAnswer(const BoardRequest &request) const;
    int takeFailure(const BoardRequest &request);

    mutable std::mutex m_mutex; // the test against the bridge thread: all below
    std::map<std::pair<int, int>, Handler> m_handlers;
    QVector<Script> m_failures;
    QVector<BoardRequest> m_requests;
    QByteArray m_held;
    QByteArray m_received;
    int m_violations = 0;
    QByteArray m_pending; // bridge thread: bytes of a frame that is not whole yet
    SerialLine m_line;    // last, so that its thread ends before what it uses
};
