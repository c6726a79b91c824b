#include "Bridge.h"

#include "Machine.h"

#include <QTimer>

namespace
{
constexpr int bridgeChannel = 0xFF;
constexpr int dataLength = 8;
} // namespace

Bridge::Bridge(Machine &machine, QObject *parent)
    : QObject(parent), m_machine(machine), m_boards(makeBoards(machine))
{
    m_reader.onFrame = [this](const frame::Record &request) { onRequest(request); };
    m_reader.onError = [this](const char *name, const QString &detail) { m_machine.violation(name, detail); };
}

void Bridge::onRequest(const frame::Record &request)
{
    ++m_requests;
    if (request.channel == bridgeChannel)
        return;
    if (!(request.id & frame::requestBit) || request.length != dataLength || request.channel != 0)
        m_machine.violation("request-form", QString("id 0x%1, length %2, channel %3")
                                                .arg(request.id, 0, 16)
                                                .arg(request.length)
                                                .arg(request.channel));
    const int number = int(request.id & ~frame::requestBit);
    for (const auto &board : m_boards) {
        if (board->number() != number || faults.dead.contains(number))
            continue;
        frame::Record answer;
        answer.id = uint32_t(number);
        const std::optional<frame::Data> data = board->answer(request.data);
        if (!data || faults.silent.contains(number))
            continue;
        answer.data = *data;
        reply(answer);
    }
}

bool Bridge::happens(double rate)
{
    return rate > 0 && std::uniform_real_distribution<double>(0, 1)(m_random) < rate;
}

void Bridge::reply(const frame::Record &answer)
{
    QByteArray line = frame::encode(answer);
    if (happens(faults.drop))
        return;
    if (happens(faults.corrupt)) {
        const int at = 2 + int(m_random() % unsigned(line.size() - 4));
        line[at] = char(line[at] ^ (1 << m_random() % 8));
    }
    if (happens(faults.late))
        QTimer::singleShot(faults.lateMs, this, [this, line] { emit send(line); });
    else
        emit send(line);
}
