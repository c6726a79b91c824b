#include "HeadServer.h"

#include "Machine.h"

#include <cmath>

using heads::Op;

namespace
{
constexpr double mfgCode = 88.51;
constexpr int heaterSensors = 3;
constexpr int nozzles = 880;
constexpr double waitGrainMs = 20; ///< how often a page that nobody knows the end of is looked at
constexpr double pictureValue = 150;
constexpr double clockMode = 0x10001;
constexpr size_t armArguments = 7;
} // namespace

HeadServer::HeadServer(Machine &machine, QObject *parent) : QObject(parent), m_machine(machine)
{
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    m_waitTimer.setSingleShot(true);
    m_waitTimer.setTimerType(Qt::PreciseTimer);
    connect(&m_waitTimer, &QTimer::timeout, this, &HeadServer::serveWaiters);
    connect(&m_server, &QLocalServer::newConnection, this, [this] {
        while (QLocalSocket *socket = m_server.nextPendingConnection()) {
            connect(socket, &QLocalSocket::readyRead, this, [this, socket] { onReadable(socket); });
            connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        }
    });
    addPageHandlers();
    addHeadHandlers();
}

bool HeadServer::listen(const QString &path, QString *error)
{
    QLocalServer::removeServer(path);
    if (m_server.listen(path))
        return true;
    *error = path + ": " + m_server.errorString();
    return false;
}

void HeadServer::addPageHandlers()
{
    HeadArray &array = m_machine.headArray();
    m_handlers[Op::Init] = {0, false, [&array](const Arguments &, Values *) {
                                array.initialised = true;
                                return heads::Done;
                            }};
    m_handlers[Op::AddHead] = {6, false, [&array](const Arguments &a, Values *) {
                                   if (a[0] != 1 || !HeadArray::exists(int(a[1])) || a[1] != a[2])
                                       return heads::BadArgument;
                                   array.head(int(a[1])).inBar = a[4] != 0;
                                   return heads::Done;
                               }};
    m_handlers[Op::PlaceHead] = {5, false, [&array](const Arguments &a, Values *) {
                                     if (a[0] != 1 || !HeadArray::exists(int(a[1])))
                                         return heads::BadArgument;
                                     array.head(int(a[1])).firstRow = int(a[2]);
                                     array.head(int(a[1])).overlap = int(a[3]);
                                     return heads::Done;
                                 }};
    m_handlers[Op::DotClocks] = {6, false, [&array](const Arguments &a, Values *) {
                                     if (a[0] != geometry::heads || a[2] != 1 || a[5] != clockMode ||
                                         a[3] <= 0)
                                         return heads::BadArgument;
                                     // Between jobs the clock is set before any picture has told its dpi.
                                     array.clock = {a[4] > 0, a[3], int(a[4])};
                                     return heads::Done;
                                 }};
    m_handlers[Op::Page] = {5, true, [&array](const Arguments &a, Values *) {
                                if (a[3] <= 0)
                                    return heads::BadArgument;
                                Head &head = array.head(int(a[0]));
                                head.pageExpected = a[4] == 0;
                                head.pageStart = a[1];
                                head.pageOffset = a[2];
                                head.pageWidth = int(a[3]);
                                return heads::Done;
                            }};
    m_handlers[Op::GetEncoder] = {1, true, [this](const Arguments &, Values *values) {
                                      *values = {double(m_machine.encoderPosition())};
                                      return heads::Done;
                                  }};
    m_handlers[Op::SetEncoder] = {2, true, [this](const Arguments &a, Values *) {
                                      m_machine.presetEncoder(int(a[1]));
                                      return heads::Done;
                                  }};
}

void HeadServer::addHeadHandlers()
{
    HeadArray &array = m_machine.headArray();
    const auto sensor = [](double number) { return number >= 1 && number <= heaterSensors; };
    m_handlers[Op::MfgCode] = {1, true, [](const Arguments &, Values *values) {
                                   *values = {mfgCode};
                                   return heads::Done;
                               }};
    m_handlers[Op::AutofireMask] = {3, true, [&array](const Arguments &a, Values *) {
                                        if (a[1] < 1 || a[1] > nozzles)
                                            return heads::BadArgument;
                                        array.head(int(a[0])).autofire.set(size_t(a[1]));
                                        return heads::Done;
                                    }};
    m_handlers[Op::AutofireStart] = {5, true, [&array](const Arguments &a, Values *) {
                                         array.head(int(a[0])).autofiring = a[1] > 0;
                                         return heads::Done;
                                     }};
    m_handlers[Op::AutofireStop] = {1, true, [&array](const Arguments &a, Values *) {
                                        array.head(int(a[0])).autofiring = false;
                                        return heads::Done;
                                    }};
    m_handlers[Op::InkLevels] = {1, true, [&array](const Arguments &a, Values *values) {
                                     const auto &levels = array.head(int(a[0])).levels;
                                     values->assign(levels.begin(), levels.end());
                                     return heads::Done;
                                 }};
    m_handlers[Op::HeaterTemp] = {
        2, true, [this, sensor](const Arguments &a, Values *values) {
            if (!sensor(a[1]))
                return heads::BadArgument;
            Climate &climate = m_machine.climate();
            *values = {climate.reading(climate.heater(int(a[0]), int(a[1])), m_machine.now())};
            return heads::Done;
        }};
    m_handlers[Op::ThermalSetpoint] = {
        3, true, [this, sensor](const Arguments &a, Values *) {
            if (!sensor(a[1]))
                return heads::BadArgument;
            m_machine.climate().heater(int(a[0]), int(a[1])).setTarget(a[2], m_machine.now());
            return heads::Done;
        }};
    m_handlers[Op::GetWaveform] = {2, true, [&array](const Arguments &a, Values *values) {
                                       for (const auto &knot : array.head(int(a[0])).waveform) {
                                           values->push_back(double(knot.first));
                                           values->push_back(double(knot.second));
                                       }
                                       return heads::Done;
                                   }};
    m_handlers[Op::AdjustVoltage] = {3, true, [&array](const Arguments &a, Values *) {
                                         array.adjustVoltage(int(a[0]), float(a[2]));
                                         return heads::Done;
                                     }};
}

void HeadServer::onReadable(QLocalSocket *socket)
{
    for (;;) {
        heads::RequestHead head = {};
        if (socket->peek(reinterpret_cast<char *>(&head), sizeof head) < qint64(sizeof head))
            return;
        if (head.size > heads::requestLimit || head.size < head.argCount * sizeof(double)) {
            m_machine.violation("head-request", QString("request of %1 bytes").arg(head.size));
            socket->abort();
            return;
        }
        if (socket->bytesAvailable() < qint64(sizeof head + head.size))
            return;
        socket->skip(sizeof head);
        onRequest(socket, head, socket->read(head.size));
    }
}

void HeadServer::onRequest(QLocalSocket *socket, const heads::RequestHead &head, const QByteArray &body)
{
    m_machine.settle();
    Arguments arguments(head.argCount);
    if (head.argCount)
        std::memcpy(arguments.data(), body.constData(), head.argCount * sizeof(double));
    const Op op = Op(head.op);
    if (op == Op::WaitComplete) {
        m_waiters.push_back({socket, head.sequence});
        serveWaiters();
        return;
    }
    Values values;
    const int planesAt = int(head.argCount * sizeof(double));
    const auto planes = QByteArray::fromRawData(body.constData() + planesAt, body.size() - planesAt);
    const int result = op == Op::Arm ? arm(arguments, planes) : run(op, arguments, &values);
    if (result != heads::Done)
        m_machine.violation("head-call", QString("call %1 is refused with %2").arg(head.op).arg(result));
    if (!heads::noReply(op))
        reply(socket, head.sequence, result, values);
}

int HeadServer::run(Op op, const Arguments &arguments, Values *values)
{
    const auto handler = m_handlers.find(op);
    if (handler == m_handlers.end() || handler->second.argCount != arguments.size())
        return heads::BadArgument;
    if (op != Op::Init && !m_machine.headArray().initialised)
        return heads::NoBoards;
    if (handler->second.first && !HeadArray::exists(int(arguments[0])))
        return heads::BadArgument;
    return handler->second.run(arguments, values);
}

int HeadServer::arm(const Arguments &a, const QByteArray &planes)
{
    if (a.size() != armArguments || a[4] != pictureValue || a[5] != 1 || a[6] < 0 || a[6] > planes.size())
        return heads::BadArgument;
    Picture picture;
    picture.width = int(a[0]);
    picture.rows = int(a[1]);
    picture.dpi = int(a[2]);
    picture.forward = a[3] != 0;
    const auto at = planes.begin() + int(a[6]);
    picture.support.bytes.assign(planes.begin(), at);
    picture.structure.bytes.assign(at, planes.end());
    if (!picture.support.valid(picture.width, picture.rows) ||
        !picture.structure.valid(picture.width, picture.rows))
        return heads::BadArgument;
    m_machine.arm(std::move(picture));
    return heads::Done;
}

void HeadServer::reply(QLocalSocket *socket, uint32_t sequence, int result, const Values &values)
{
    const heads::ReplyHead head = {uint32_t(values.size() * sizeof(double)), result, sequence};
    socket->write(reinterpret_cast<const char *>(&head), sizeof head);
    if (!values.empty())
        socket->write(reinterpret_cast<const char *>(values.data()), qint64(head.size));
    socket->flush();
}

/// Answers who waits for the page when it is complete, else comes back when it will be.
void HeadServer::serveWaiters()
{
    if (m_waiters.empty())
        return;
    if (m_machine.transferComplete()) {
        for (const Waiter &waiter : m_waiters) {
            if (waiter.socket)
                reply(waiter.socket, waiter.sequence, heads::Done, {});
        }
        m_waiters.clear();
        m_machine.recorder().noteComplete(m_machine.clock().wall());
        return;
    }
    const double wallMs = (m_machine.completionTime() - m_machine.now()) / m_machine.clock().scale() * 1000;
    m_waitTimer.start(int(std::ceil(std::max(0.0, std::min(wallMs, waitGrainMs)))));
}
