// The layer loop.

#include "engine/XdmControl.h"

#include "engine/Geometry.h"
#include "engine/HibLibrary.h"
#include "engine/JobCodes.h"
#include "events/EventHandler.h"
#include "events/OperatorMessage.h"
#include "frame/JsonConfig.h"
#include "frame/Singleton.h"
#include "links/BoardCommands.h"
#include "platform/Clock.h"
#include "platform/Log.h"
#include "printdata/SliceToImage.h"

#include <QDateTime>
#include <cmath>

namespace
{
/// Layers after the first that are printed at one height: the leveller shaves them to a flat base.
constexpr int holdLayers = 70;
/// Layers after the first whose time stands for all.
constexpr int timedLayers = 10;
/// Above this Z no cleaning takes place: the bed is near the end of its travel.
constexpr float cleanLimit = 130000;
/// Layers gone back after a cleaning, each shaved again by the leveller.
constexpr int reprintDepth = 20;
/// X speed of the empty sweeps after a cleaning.
constexpr int levellingSpeed = 800;
/// Fans follow the heads' temperature only once the part stands clear of the base.
constexpr int fanFromLayer = 40;
constexpr unsigned inkDoorPollMs = 5000;

double wallSeconds()
{
    return QDateTime::currentMSecsSinceEpoch() / 1000.0;
}

/// A wait that fails once is forgiven.
bool isXStuck()
{
    return waitXStop() != 0 && waitXStop() != 0;
}

/// Two empty sweeps there and back: the leveller smooths what it meets.
int sweepTwice()
{
    for (int sweep = 0; sweep < 4; ++sweep) {
        xStartMove();
        if (isXStuck())
            return JobCode::xStuck;
    }
    return JobCode::done;
}
} // namespace

/// What the loop carries from layer to layer.
struct XdmControl::LayerLoop {
    float z = 0; ///< micrometres
    float layerUm = 0;
    int startLayer = 0;
    double topMass = 0; ///< drop mass of a head that asks for cleaning; 0: never
    int passDelay = 0;  ///< ms
    bool clean = false; ///< cleanings take place
    double timed = 0;   ///< seconds of the timed layers
    double paused = 0;  ///< seconds held within the layer
    float lastY = 0;    ///< not rounded
};

XdmControl::XdmControl() = default;

XdmControl *xdmControl()
{
    return singleton<XdmControl>();
}

int XdmControl::moveToStart(float z)
{
    if (const int code = homeCarriage())
        return code;
    LOG_WARNING(QStringLiteral("clean end"));
    if (zMovePos(z, true))
        return JobCode::zStuck;
    configPrintBar(sliceToImage()->dpiX());
    setXSpeed(static_cast<int>(sysConfig()->getFloat(QStringLiteral("XMoveSpeed"))));
    xStartMove();
    return waitXStop() == 0 ? JobCode::done : JobCode::xStuck;
}

int XdmControl::printModel(bool clean, int passDelay)
{
    SliceToImage *slices = sliceToImage();
    if (!isKnownPassCount(slices->passCnt())) {
        LOG_WARNING(QStringLiteral("passCnt=%1 is not 4, 8 or 12").arg(slices->passCnt()));
        stopPrint(JobCode::failed, EventHandler::eventMessage(JobCode::failed), MessageIcon::critical,
                  MessageButtons::close, false, 0);
        return JobCode::alreadyShown;
    }
    LayerLoop loop;
    loop.z = sysConfig()->getFloat(QStringLiteral("ZStartPos"));
    loop.passDelay = passDelay;
    loop.clean = clean;
    if (const int code = clean ? cleanNozzle(true, 1) : JobCode::done)
        return code;
    if (const int code = moveToStart(loop.z))
        return code;
    loop.startLayer = static_cast<int>(sysConfig()->getFloat(QStringLiteral("StartLayer")));
    loop.topMass = static_cast<double>(sysConfig()->getFloat(QStringLiteral("TopDropMass")));
    LOG_WARNING(QStringLiteral("startLayer=%1,topMass=%2,zStartPos=%3,")
                    .arg(loop.startLayer)
                    .arg(loop.topMass)
                    .arg(loop.z));
    loop.layerUm = slices->layerHeightUm();
    m_reprintCounter = 0;
    waitPreSlice();
    m_printLayer = loop.startLayer;
    while (m_printLayer <= slices->sumLayer()) {
        if (const int code = printLayer(loop))
            return code;
    }
    stopPrint(JobCode::printed, EventHandler::eventMessage(JobCode::printed), MessageIcon::information,
              MessageButtons::close, true, loop.z);
    return JobCode::done;
}

int XdmControl::printLayer(LayerLoop &loop)
{
    SliceToImage *slices = sliceToImage();
    if (const int code = stepZ(loop))
        return code;
    const bool massLaid = slices->calcDotCount(loop.topMass); // counts the layer printed last
    if (massLaid && loop.clean && loop.z < cleanLimit) {
        if (const int code = cleanInMidJob(loop))
            return code;
    }
    if (waitSlice(m_printLayer, loop.z) != 0)
        return JobCode::alreadyShown;
    const double layerStart = wallSeconds();
    if (isStopped()) {
        stopPrint(JobCode::stopped, EventHandler::eventMessage(JobCode::stopped), MessageIcon::information,
                  MessageButtons::close, true, loop.z);
        return JobCode::alreadyShown;
    }
    for (int pass = 0; pass < passesPerLayer; ++pass) {
        if (const int code = printPass(loop, pass))
            return code;
    }
    countLayer(loop, layerStart);
    if (checkLayerEnd() != 0)
        return JobCode::alreadyShown;
    setState(QStringLiteral("PrintLayer"), m_printLayer.load());
    setState(QStringLiteral("SumLayer"), slices->sumLayer());
    int counter = m_reprintCounter;
    RePrintLayer(loop.z, &counter); // a failed move shows again at the next layer's own
    m_reprintCounter = counter;
    return JobCode::done;
}

/// The base stands still; above it Z goes a layer on, or a layer back while layers are printed again.
int XdmControl::stepZ(LayerLoop &loop)
{
    if (m_printLayer <= loop.startLayer + holdLayers)
        return JobCode::done;
    if (m_reprintCounter <= 0)
        loop.z += loop.layerUm;
    else if (loop.z > 0)
        loop.z -= loop.layerUm;
    return zMovePos(loop.z, true) ? JobCode::zStuck : JobCode::done;
}

int XdmControl::cleanInMidJob(const LayerLoop &loop)
{
    if (const int code = cleanNozzle(false, 1))
        return code;
    xStartMove();
    if (waitXStop() != 0)
        return JobCode::xStuck;
    if (yMovePos(loop.lastY, true) != 0)
        return JobCode::yStuck;
    if (zMovePos(loop.z, true))
        return JobCode::zStuck;
    setXSpeed(levellingSpeed);
    xStartMove();
    if (waitXStop() != 0)
        return JobCode::xStuck;
    if (const int code = sweepTwice())
        return code;
    setXSpeed(static_cast<int>(sysConfig()->getFloat(QStringLiteral("XMoveSpeed"))));
    m_reprintCounter = reprintDepth;
    return JobCode::done;
}

int XdmControl::printPass(LayerLoop &loop, int pass)
{
    SliceToImage *slices = sliceToImage();
    const int layer = m_printLayer;
    Sleep(static_cast<unsigned>(qMax(0, loop.passDelay))); // lets the carriage run out before Y moves
    setState(QStringLiteral("Tips"), QStringLiteral("%1-%2 %3").arg(layer).arg(pass).arg(slices->sumLayer()));
    const int phase = layerPhase(pass, layer, slices->passCnt());
    loop.lastY = passY(phase, layer, slices->passCnt());
    if (yMovePos(std::round(loop.lastY), true) != 0)
        return JobCode::yStuck;
    getYPos(true); // a difference goes into ydata.csv
    if (!configPage(pass & 1))
        LOG_WARNING(QStringLiteral("configPage error"));
    if (const int code = printImage(phase, nozzleShift(layer)))
        return code == JobCode::xStuck ? code : JobCode::alreadyShown;
    if (waitPaused(&loop.paused) == PrintStatusIdle) {
        stopPrint(JobCode::stopped, EventHandler::eventMessage(JobCode::stopped), MessageIcon::information,
                  MessageButtons::close, true, loop.z);
        return JobCode::stopped;
    }
    return waitHeadInk() ? JobCode::done : JobCode::stopped;
}

/// The machine's counters, and the time left from the average of the timed layers.
void XdmControl::countLayer(LayerLoop &loop, double layerStart)
{
    useInfoConfig()->addSync(QStringLiteral("PrintingTotalLayer"), 1);
    if (m_printLayer <= loop.startLayer + timedLayers) {
        loop.timed += wallSeconds() - layerStart - loop.paused;
        loop.paused = 0;
        return;
    }
    const double layerSeconds = loop.timed / timedLayers;
    setState(QStringLiteral("LeftTime"), (sliceToImage()->sumLayer() - m_printLayer) * layerSeconds);
    useInfoConfig()->addSync(QStringLiteral("PrintTotalTime"), layerSeconds / 60 / 60);
}

/// Printing waits for a closed ink box door; a job that is paused or stopped does not.
void XdmControl::waitInkDoorOrHeld()
{
    while (!isInkDoorClosed() && getPrintStatus() == PrintStatusPrinting) {
        showPrintMessage(JobCode::inkDoorOpen, EventHandler::eventMessage(JobCode::inkDoorOpen),
                         MessageIcon::information, MessageButtons::close);
        Sleep(inkDoorPollMs);
    }
}

int XdmControl::checkLayerEnd()
{
    int speed = 0;
    if (!isLevellerTurning(&speed)) {
        // The Home page's button would resume a job that is paused already, and start one that is stopped.
        if (getPrintStatus() == PrintStatusPrinting)
            emit pausePrintSingals();
        showPrintMessage(JobCode::levellerFault,
                         EventHandler::eventMessage(JobCode::levellerFault).arg(speed), MessageIcon::critical,
                         MessageButtons::close);
        return 0;
    }
    waitInkDoorOrHeld();
    if (!waitHeadInk())
        return 2;
    if (m_printLayer > fanFromLayer)
        updateFanSpeeds(3);
    return 0;
}

int XdmControl::RePrintLayer(float z, int *counter)
{
    if (*counter <= 0) {
        ++m_printLayer;
        return JobCode::done;
    }
    if (*counter >= 3) {
        --*counter;
        --m_printLayer;
        LOG_WARNING(QStringLiteral("m_printLayer = %1 reprintLayer= %2").arg(m_printLayer).arg(*counter));
        return JobCode::done;
    }
    // The last two heights are swept without printing. Z here is a copy: the loop goes on from its own. The
    // last pass may still be running out.
    if (isXStuck())
        return JobCode::xStuck;
    for (int height = 0; height < 2; ++height) {
        --*counter;
        --m_printLayer;
        z -= sliceToImage()->layerHeightUm();
        if (zMovePos(z, true))
            return JobCode::zStuck;
        if (const int code = sweepTwice())
            return code;
    }
    return JobCode::done;
}
