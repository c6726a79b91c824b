#include "material/BusTest.h"

#include "links/BoardCommands.h"
#include "links/Usb2Can.h"
#include "platform/Log.h"

#include <QStringList>

namespace
{
constexpr unsigned callsPerTest = 120; // a call each 500 ms pass
constexpr quint8 probeData[] = {0x01, 0x04, 0x04, 0x01};
} // namespace

QString BusTest::testCan()
{
    return m_calls++ % callsPerTest == 0 ? probeAll() : QString();
}

QString BusTest::probeAll()
{
    QStringList failed;
    for (const int board : {boardMotion, boardInk, boardAir, boardHead}) {
        usb2Can()->SetFilter(quint8(board), false);
        if (probe(quint8(board)))
            continue;
        failed << QString::number(board);
        usb2Can()->SetFilter(quint8(board), true);
    }
    m_recorded = true;
    return failed.join(QLatin1Char(','));
}

// Fails only when result and echo agree that it did: the echo alone is not enough to condemn a board, and
// with the port closed the answer is still the request.
bool BusTest::probe(quint8 board) const
{
    CanMsg request;
    request.id = board;
    std::copy(std::begin(probeData), std::end(probeData), request.data);
    CanMsg answer = request;
    const int result = sendCommand(answer, &answer);
    if (!m_recorded)
        LOG_WARNING(hexText(request, answer));
    return result == SendOk || answer.data[0] == request.data[0];
}
