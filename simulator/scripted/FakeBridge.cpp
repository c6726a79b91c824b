#include "FakeBridge.h"

#include <QtEndian>

namespace
{

bool matches(int wanted, int value)
{
    return wanted == FakeBridge::any || wanted == value;
}

// Undoes the escapes up to the end mark; the index behind it, -1 when the frame is not whole yet.
int unescape(const QByteArray &bytes, int from, QByteArray *payload)
{
    for (int i = from; i + 1 < bytes.size(); ++i) {
        const quint8 byte = quint8(bytes[i]);
        if (byte == 0x55 && quint8(bytes[i + 1]) == 0x55)
            return i + 2;
        if (byte == 0xA5)
            ++i;
        payload->append(bytes[i]);
    }
    return -1;
}

} // namespace

qint32 BoardRequest::value() const
{
    return qFromLittleEndian<qint32>(data.constData() + 4);
}

FakeBridge::FakeBridge()
{
    m_line.start([this](const QByteArray &bytes) { takeBytes(bytes); });
}

void FakeBridge::setHandler(int board, int command, Handler handler)
{
    std::lock_guard<std::mutex> lock(m_mutex);
    m_handlers[{board, command}] = std::move(handler);
}

void FakeBridge::setBytes(int board, int command, std::initializer_list<std::pair<int, int>> bytes)
{
    QByteArray fixed(8, '\0');
    for (const auto &[index, value] : bytes)
        fixed[index] = char(value);
    setHandler(board, command, [fixed](const BoardRequest &request) {
        QByteArray data = fixed;
        data[0] = request.data[0];
        return data;
    });
}

void FakeBridge::setValue(int board, int command, qint32 value)
{
    const quint32 bits = quint32(value);
    setBytes(board, command,
             {{4, bits & 0xFF}, {5, (bits >> 8) & 0xFF}, {6, (bits >> 16) & 0xFF}, {7, (bits >> 24) & 0xFF}});
}

void FakeBridge::fail(Failure failure, int board, int command, int times)
{
    std::lock_guard<std::mutex> lock(m_mutex);
    m_failures.append({failure, board, command, times});
}

void FakeBridge::reset()
{
    std::lock_guard<std::mutex> lock(m_mutex);
    m_handlers.clear();
    m_failures.clear();
    m_held.clear();
    m_requests.clear();
    m_received.clear();
    m_violations = 0;
}

void FakeBridge::sendAnswer(int board, const QByteArray &data, int channel)
{
    sendBytes(frame(record(board, data, channel)));
}

QVector<BoardRequest> FakeBridge::requests(int board, int command) const
{
    std::lock_guard<std::mutex> lock(m_mutex);
    QVector<BoardRequest> found;
    for (const BoardRequest &request : m_requests)
        if (matches(board, request.board) && matches(command, request.command()))
            found.append(request);
    return found;
}

QByteArray FakeBridge::received() const
{
    std::lock_guard<std::mutex> lock(m_mutex);
    return m_received;
}

void FakeBridge::clearRecord()
{
    std::lock_guard<std::mutex> lock(m_mutex);
    m_requests.clear();
    m_received.clear();
}

int FakeBridge::violations() const
{
    std::lock_guard<std::mutex> lock(m_mutex);
    return m_violations;
}

QByteArray FakeBridge::frame(const QByteArray &payload)
{
    quint8 sum = 0;
    for (char byte : payload)
        sum = quint8(sum + quint8(byte));
    QByteArray bytes("\xAA\xAA");
    for (char byte : payload + char(sum)) {
        if (byte == '\xA5' || byte == '\xAA' || byte == '\x55')
            bytes += '\xA5';
        bytes += byte;
    }
    return bytes + "\x55\x55";
}

QByteArray FakeBridge::record(int board, const QByteArray &data, int channel)
{
    QByteArray bytes(16, '\0');
    bytes[0] = char(board);
    bytes.replace(4, 8, data.leftJustified(8, '\0', true));
    bytes[12] = 8;
    bytes[13] = char(channel);
    return bytes;
}

void FakeBridge::takeBytes(const QByteArray &bytes)
{
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        m_received += bytes;
    }
    m_pending += bytes;
    for (;;) {
        const int start = m_pending.indexOf("\xAA\xAA");
        QByteArray payload;
        const int end = start < 0 ? -1 : unescape(m_pending, start + 2, &payload);
        if (end < 0)
            return;
        m_pending.remove(0, end);
        takePayload(payload);
    }
}

void FakeBridge::takePayload(const QByteArray &payload)
{
    quint8 sum = 0;
    for (int i = 0; i + 1 < payload.size(); ++i)
        sum = quint8(sum + quint8(payload[i]));
    const bool good = payload.size() == 17 && sum == quint8(payload[16]) && (payload[0] & 0x40) &&
                      payload[12] == 8 && !payload[13] && !payload[14] && !payload[15];
    if (!good) {
        std::lock_guard<std::mutex> lock(m_mutex);
        ++m_violations;
        return;
    }
    answer({payload[0] & ~0x40, payload.mid(4, 8), payload[12], payload[13]});
}

void FakeBridge::answer(const BoardRequest &request)
{
    const QByteArray data = makeAnswer(request);
    const int failure = takeFailure(request);
    QByteArray bytes = data.isEmpty() ? QByteArray() : frame(record(request.board, data));
    QByteArray held;
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        m_requests.append(request);
        held.swap(m_held);
        if (failure == Late)
            m_held = bytes;
    }
    if (failure == Silent || failure == Late || data.isEmpty())
        bytes.clear();
    else if (failure == WrongEcho)
        bytes = frame(record(request.board, char(request.data[0] ^ 0x3C) + data.mid(1)));
    else if (failure == Corrupt)
        bytes[5] = char(bytes[5] ^ 0x01);
    else if (failure == CutOff)
        bytes.truncate(bytes.size() / 2);
    else if (failure == Noise)
        bytes = QByteArray("\x12\x55\x55\xA5\x13\xAA\x07") + bytes + QByteArray("\x55\x33\xA5\xAA\x01");
    if (!held.isEmpty())
        sendBytes(held);
    if (!bytes.isEmpty())
        sendBytes(bytes);
}

QByteArray FakeBridge::makeAnswer(const BoardRequest &request) const
{
    Handler handler;
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        const std::pair<int, int> keys[] = {
            {request.board, request.command()}, {request.board, any}, {any, request.command()}, {any, any}};
        for (const auto &key : keys) {
            const auto found = m_handlers.find(key);
            if (found != m_handlers.end()) {
                handler = found->second;
                break;
            }
        }
    }
    return handler ? handler(request) : request.data;
}

int FakeBridge::takeFailure(const BoardRequest &request)
{
    std::lock_guard<std::mutex> lock(m_mutex);
    for (Script &script : m_failures) {
        if (script.times == 0 || !matches(script.board, request.board) ||
            !matches(script.command, request.command()))
            continue;
        if (script.times > 0)
            --script.times;
        return script.failure;
    }
    return any;
}
