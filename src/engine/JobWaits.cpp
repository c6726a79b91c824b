// Messages of a job, and the points at which it holds: paused, short of ink, ahead of the slicer.

#include "engine/JobCodes.h"
#include "engine/HeadInk.h"
#include "engine/MachineServices.h"
#include "engine/PrintService.h"
#include "events/EventHandler.h"
#include "events/OperatorMessage.h"
#include "links/BoardCommands.h"
#include "platform/Clock.h"
#include "platform/Log.h"
#include "printdata/SliceToImage.h"

#include <QElapsedTimer>

namespace
{
/// Above this Z the bed is already clear of the heads, and near the end of its travel.
constexpr float liftLimit = 130000.0f;
constexpr float liftDistance = 15000.0f;
constexpr unsigned slicePollMs = 5000;
/// The slicer counts its layers only after some of them; with as few as this it has not begun.
constexpr int minSlicedTotal = 4;
} // namespace

void PrintService::showPrintMessage(quint32 code, const QString &text, int icon, int btn)
{
    emit MessageFormShowSig(messageTitle(code), text, icon, btn, objectName());
}

void PrintService::clearPrintMessage(int icon)
{
    emit MessageFormShowSig(QString(), QString(), icon, MessageButtons::dismiss, objectName());
}

void PrintService::stopPrint(quint32 code, const QString &text, int icon, int btn, bool moveZ, float z)
{
    if (moveZ && z < liftLimit)
        zMovePos(z + liftDistance, true);
    LOG_WARNING(QStringLiteral("print stop zpos=%1,msg=%2").arg(QString::number(z), text));
    showPrintMessage(code, text, icon, btn);
}

int PrintService::waitPaused(double *seconds)
{
    QElapsedTimer held;
    held.start();
    bool wasPaused = false;
    for (; getPrintStatus() == PrintStatusPaused; wasPaused = true)
        Sleep(500);
    if (seconds && wasPaused)
        *seconds += held.elapsed() / 1000.0;
    return getPrintStatus();
}

bool holdForHeadInk(const std::function<bool()> &isStopped)
{
    while (jobServices().checkHeadInkLevels()) {
        EventHandler::setEvent(JobCode::headInkFault, QString());
        Sleep(1000);
        if (isStopped())
            return false;
    }
    EventHandler::clearEvent(JobCode::headInkFault);
    return true;
}

bool PrintService::waitHeadInk()
{
    return holdForHeadInk([this] { return isStopped(); });
}

void PrintService::waitPreSlice()
{
    SliceToImage *slices = sliceToImage();
    while (slices->progress() < 1.0f || slices->sumLayer() <= minSlicedTotal) {
        if (isStopped()) {
            stopPrint(JobCode::stopped, EventHandler::eventMessage(JobCode::stopped), MessageIcon::critical,
                      MessageButtons::close, false, 0);
            return;
        }
        const QString text = tr(" 切片中请稍后 %1.%2..(%3)").arg(slices->progress()).arg(slices->sumLayer());
        emit MessageFormShowSig(QString(), text.arg(slices->usedMemoryText()), MessageIcon::information,
                                MessageButtons::close, objectName());
        Sleep(slicePollMs);
    }
    clearPrintMessage();
    LOG_WARNING(QStringLiteral("%1,%2").arg(slices->progress()).arg(slices->sumLayer()));
}

/// One round of waiting; -1 when the operator stopped the job.
int PrintService::holdForSlice(int layer, int waitNumber, float z)
{
    SliceToImage *slices = sliceToImage();
    if (isStopped()) {
        stopPrint(JobCode::stopped, EventHandler::eventMessage(JobCode::stopped), MessageIcon::critical,
                  MessageButtons::close, true, z);
        return JobCode::alreadyShown;
    }
    const QString text =
        tr(" 切片中请稍后 %1.%2..(%3)").arg(slices->hasSliceLayer(layer)).arg(slices->sumLayer());
    const QString memory = QStringLiteral("%1 %2").arg(slices->usedMemoryText()).arg(waitNumber);
    emit MessageFormShowSig(QString(), text.arg(memory), MessageIcon::information, MessageButtons::close,
                            objectName());
    Sleep(slicePollMs);
    return JobCode::done;
}

int PrintService::waitSlice(int layer, float z)
{
    SliceToImage *slices = sliceToImage();
    bool waited = false;
    while (slices->hasSliceLayer(layer) < layer) {
        if (holdForSlice(layer, 1, z) != JobCode::done)
            return JobCode::alreadyShown;
        waited = true;
    }
    while (!slices->getLayerImage(layer)) {
        if (holdForSlice(layer, 2, z) != JobCode::done)
            return JobCode::alreadyShown;
        waited = true;
    }
    if (waited)
        clearPrintMessage();
    return JobCode::done;
}
