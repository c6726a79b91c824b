#include "material/TempCtl.h"

#include "engine/HibLibrary.h"
#include "events/EventHandler.h"
#include "frame/RotatingLog.h"
#include "frame/Singleton.h"
#include "links/Usb2Can.h"
#include "platform/Log.h"

#include <algorithm>

namespace
{
const QLatin1String tempFile("config/temp.bin");

constexpr int zoneTolerance = 15;         ///< degrees
constexpr int headTolerance = 5;          ///< degrees
constexpr quint32 headEventId = 0xffff00; ///< plus the head's number
constexpr qint64 samplePeriodMs = 60000;
constexpr qint64 minuteMs = 60000;

// What a print and the feeding depend on. The second structure tube (0x33105) and the structure output valve
// (0x33205) are left out by design: they never hold up a print.
constexpr quint32 printEvents[] = {
    0x33101, 0x33102, 0x33103, 0x33104, 0x33106, 0x33201, 0x33202, 0x33203,  0x33204,  0x33301,
    0x33302, 0x33303, 0x33304, 0x33305, 0x64102, 0x64103, 0x64104, 0xffff01, 0xffff02, 0xffff03,
};

/// A reading cut to whole degrees; 0 for what no sensor of a wax machine can mean.
quint8 wholeDegrees(float reading)
{
    return reading >= 0.0f && reading < 256.0f ? quint8(reading) : quint8(0);
}
} // namespace

TempCtl *tempCtl()
{
    return singleton<TempCtl>();
}

TempCtl::TempCtl()
{
    getTempFile();
    {
        MutexLock lock(m_mutex);
        fixTempGroups(m_table);
    }
    m_clock.start();
    writeCsvHeader();
}

void TempCtl::writeCsvHeader() const
{
    const TempTable table = tableCopy();
    QString line;
    for (int group = 0; group < tempGroups; ++group) {
        const QString column =
            QString::number(table.groups[group][tempMeasuredRow].data[0], 16) + QLatin1String(",,");
        line += column.repeated(tempZonesPerGroup);
    }
    tempLog().writeLine(line);
}

TempTable TempCtl::tableCopy() const
{
    MutexLock lock(m_mutex);
    return m_table;
}

quint8 TempCtl::mode() const
{
    MutexLock lock(m_mutex);
    return m_mode;
}

void TempCtl::setMode(quint8 mode)
{
    if (mode >= tempModes) {
        LOG_WARNING(QStringLiteral("no temperature mode %1").arg(mode));
        return;
    }
    emit tempStatus(mode);
    TempTable table;
    {
        MutexLock lock(m_mutex);
        m_mode = mode;
        table = m_table;
    }
    for (int head = 1; head <= tempHeads; ++head) {
        for (int sensor = 1; sensor <= tempSensorsPerHead; ++sensor)
            lockHibSetThermalSetpoint(head, 1, sensor, table.head(mode, head, sensor));
    }
    // One silent board costs two seconds a message, so its other groups are passed over.
    quint32 failedBoard = 0;
    for (int group = 0; group < tempGroups; ++group) {
        const CanMsg &message = table.groups[group][mode];
        CanMsg reply;
        if (message.id != failedBoard && sendCommand(message, &reply) != SendOk)
            failedBoard = message.id;
    }
}

void TempCtl::periodic()
{
    periodicAt(m_clock.elapsed());
}

void TempCtl::periodicAt(qint64 nowMs)
{
    const QString line = readGroups();
    if (sampleDue(nowMs) && !line.isEmpty())
        tempLog().writeLine(line);
    refreshHeadTemps();
    const TempTable table = tableCopy();
    const quint8 now = mode();
    for (int head = 1; head <= tempHeads; ++head) {
        EventHandler::checkEventRange(table.head(tempMeasuredRow, head, 1), table.head(now, head, 1),
                                      headEventId + quint32(head), headTolerance);
    }
    if (now == 0)
        leaveStartMode(nowMs);
}

bool TempCtl::sampleDue(qint64 nowMs)
{
    if (m_firstRoundMs < 0)
        m_firstRoundMs = m_lastSampleMs = nowMs;
    if (nowMs - m_lastSampleMs <= samplePeriodMs)
        return false;
    m_lastSampleMs = nowMs;
    return true;
}

QString TempCtl::readGroups()
{
    QString line;
    TempTable table = tableCopy();
    for (int group = 0; group < tempGroups; ++group) {
        const CanMsg &read = table.groups[group][tempMeasuredRow];
        CanMsg reply;
        if (sendCommand(canMessage(read.id, read.data[0]), &reply) != SendOk)
            continue; // keeps its old readings; nothing is compared
        quint8 now;
        {
            MutexLock lock(m_mutex);
            CanMsg &measured = m_table.groups[group][tempMeasuredRow];
            std::copy(reply.data + 1, reply.data + 1 + tempZonesPerGroup, measured.data + 1);
            table = m_table;
            now = m_mode;
        }
        line += compareGroup(group, table, now);
    }
    return line;
}

QString TempCtl::compareGroup(int group, const TempTable &table, int mode) const
{
    QString columns;
    for (int zone = 1; zone <= tempZonesPerGroup; ++zone) {
        const int actual = table.zone(tempMeasuredRow, group, zone);
        const int set = table.zone(mode, group, zone);
        columns += QStringLiteral("%1,%2,").arg(actual).arg(set);
        EventHandler::checkEventRange(actual, set, zoneEventId(table, group, zone), zoneTolerance);
    }
    return columns;
}

void TempCtl::refreshHeadTemps()
{
    quint8 measured[tempHeadBytes];
    quint8 *next = measured;
    for (int head = 1; head <= tempHeads; ++head) {
        for (int sensor = 1; sensor <= tempSensorsPerHead; ++sensor) {
            float degrees = 0.0f;
            lockHibGetHeaterTemp(head, sensor, &degrees);
            *next++ = wholeDegrees(degrees);
        }
    }
    MutexLock lock(m_mutex);
    std::copy(std::begin(measured), std::end(measured), m_table.headTemps[tempMeasuredRow]);
}

// The set-points of the start hold for one round; from then on the machine keeps warm until a print begins.
void TempCtl::leaveStartMode(qint64 nowMs)
{
    setMode(2);
    if (!isTempReady())
        return;
    m_minutesToReady = (nowMs - m_firstRoundMs) / minuteMs;
    if (m_minutesToReady >= 1)
        setMode(2);
}

bool TempCtl::isTempReady() const
{
    return std::none_of(std::begin(printEvents), std::end(printEvents), &EventHandler::isEventActive);
}

void TempCtl::getTable(TempProfile &out)
{
    refreshHeadTemps();
    if (out.row >= tempRows) {
        LOG_WARNING(QStringLiteral("no temperature row %1").arg(out.row));
        out = TempProfile();
        return;
    }
    const TempTable table = tableCopy();
    std::copy(std::begin(table.headTemps[out.row]), std::end(table.headTemps[out.row]), out.heads.begin());
    for (int group = 0; group < tempGroups; ++group) {
        const CanMsg &message = table.groups[group][out.row];
        TempProfile::Group &entry = out.groups[size_t(group)];
        entry.board = quint8(message.id);
        entry.command = message.data[0];
        std::copy(message.data + 1, message.data + 1 + tempZonesPerGroup, entry.degrees.begin());
    }
}

void TempCtl::setTable(const TempProfile &in)
{
    if (in.row >= tempModes) {
        LOG_WARNING(QStringLiteral("no temperature mode %1").arg(in.row));
        return;
    }
    bool inForce;
    {
        MutexLock lock(m_mutex);
        std::copy(in.heads.begin(), in.heads.end(), m_table.headTemps[in.row]);
        for (int group = 0; group < tempGroups; ++group) {
            const TempProfile::Group &entry = in.groups[size_t(group)];
            std::copy(entry.degrees.begin(), entry.degrees.end(), m_table.groups[group][in.row].data + 1);
        }
        inForce = in.row == m_mode;
    }
    saveTempFile();
    if (inForce)
        setMode(in.row);
}

bool TempCtl::getTempFile()
{
    TempTable table;
    if (!readTempTable(tempFile, table))
        return true;
    fixTempGroups(table);
    MutexLock lock(m_mutex);
    m_table = table;
    return false;
}

bool TempCtl::saveTempFile() const
{
    return !writeTempTable(tempFile, tableCopy());
}
