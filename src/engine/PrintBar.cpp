// Print bar and pages of the head boards.

#include "engine/HibLibrary.h"
#include "engine/XdmControl.h"
#include "frame/JsonConfig.h"
#include "platform/Log.h"
#include "printdata/SliceToImage.h"

/// Where a head stands on the bar's rows.
struct XdmControl::BarPlace {
    int firstRow;
    int count;
};

namespace
{
constexpr int headCount = 3;
constexpr int printBar = 1;
/// The boards' clock while a model prints.
constexpr float printingFrequency = 5000.0f;
/// A word of the picture record whose meaning is the boards' own.
constexpr quint32 recordWord = 150;
} // namespace

int XdmControl::configBar(float dpi, const BarPlace *places)
{
    HibDotClock clock;
    {
        MutexLock lock(m_recordMutex);
        m_packedImage.value150 = recordWord;
        m_packedImage.dpi = static_cast<quint32>(dpi);
        clock = dotClockRecord(headCount, printingFrequency);
    }
    for (int head = 1; head <= headCount; ++head) {
        if (const int error = lockHibAddHeadToPrintBar(printBar, head, head, 1, 1, 0))
            LOG_WARNING(QStringLiteral("Error in lockHibAddHeadToPrintBar() call. %1").arg(error));
        const BarPlace &place = places[head - 1];
        if (const int error = lockHibConfigPrintBarHead(printBar, head, place.firstRow, place.count, 0))
            LOG_WARNING(QStringLiteral("Error in lockHibConfigPrintBarHead() call. %1").arg(error));
    }
    if (const int error = lockHibSetupAllDotclocks(&clock))
        LOG_WARNING(QStringLiteral("Error in hibSetupAllDotclocks() call. %1").arg(error));
    return 0;
}

int XdmControl::configPrintBar(float dpi)
{
    static constexpr BarPlace places[headCount] = {{1, 1}, {443, 5}, {881, 5}};
    return configBar(dpi, places);
}

int XdmControl::configPrintBarTest(float dpi)
{
    static constexpr BarPlace places[headCount] = {{1, 1}, {438, 1}, {876, 1}};
    return configBar(dpi, places);
}

bool XdmControl::configPage(bool forward)
{
    {
        MutexLock lock(m_recordMutex);
        m_packedImage.forward = forward;
    }
    const QString direction = forward ? QStringLiteral("Forward") : QStringLiteral("Reverse");
    const float start = sysConfig()->getFloat(direction + QStringLiteral("StartPos"));
    const int width = sliceToImage()->passWidth();
    for (int head = 1; head <= headCount; ++head) {
        const float offset = sysConfig()->getFloat(QStringLiteral("%1YOffset%2").arg(direction).arg(head));
        lockHibConfigPage(head, start, offset, width, 0);
    }
    return true;
}
