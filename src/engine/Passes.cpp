// One sweep: the picture is cut, handed to the boards and fired.

#include "engine/AxisMoves.h"
#include "engine/Geometry.h"
#include "engine/HibLibrary.h"
#include "engine/JobCodes.h"
#include "engine/MachineServices.h"
#include "engine/XdmControl.h"
#include "events/EventHandler.h"
#include "events/OperatorMessage.h"
#include "links/BoardCommands.h"
#include "platform/Log.h"
#include "printdata/SliceToImage.h"

namespace
{
constexpr int boards = 3;
/// A board that has not taken its page by then never will.
constexpr int transferTimeoutMs = 10000;
/// Pictures of one transfer.
constexpr int imagesPerTransfer = 1;
/// X that parts the two ends of the sweep, for the test print; micrometres.
constexpr float testPrintMiddle = 50000.0f;
/// Pictures of the test lines, as SliceToImage::drawTestLines tells them apart.
constexpr int supportLines = -1;
constexpr int structureLines = 0;

int encoderPosition()
{
    int position = 0;
    return lockHibGetEncoderPos(1, &position) == 0 ? position : -1;
}

/// The pictures belong to the job object and are reused.
void releaseNothing(int32_t, HibPackedImage *, void *) {}
} // namespace

/// What came of one transfer.
struct XdmControl::Transfer {
    int code = JobCode::done; ///< not 0: the sweep was not started
    int results[boards] = {};
    int xBefore = 0; ///< X before the sweep

    bool complete() const { return results[0] == 0 && results[1] == 0 && results[2] == 0; }
};

void XdmControl::handOverPicture(int32_t, HibPackedImage *record, void *context)
{
    auto *self = static_cast<XdmControl *>(context);
    if (++self->m_imagesSent > imagesPerTransfer)
        return;
    MutexLock lock(self->m_recordMutex);
    self->m_packedImage.supportPlane = self->m_supportPicture.constBits();
    self->m_packedImage.structurePlane = self->m_structurePicture.constBits();
    *record = self->m_packedImage;
}

/// The whole block holds the library: nobody may talk to the boards between arming and the end of the page.
XdmControl::Transfer XdmControl::transferPass()
{
    Transfer transfer;
    MutexLock lock(hibMutex());
    m_imagesSent = 0; // a transfer that failed before has left its count
    if (const int error = hibSetupTransfer(&XdmControl::handOverPicture, this))
        LOG_WARNING(QStringLiteral("Error in hibSetupPackedImageTransfer() call. %1").arg(error));
    if (const int error = hibSetFreeCallback(&releaseNothing, this))
        LOG_WARNING(QStringLiteral("Error in hibSetFreePackedMemoryCallback() call. %1").arg(error));
    hibEnablePrinting();
    transfer.xBefore = getXPos();
    if (waitXStop() != 0) {
        transfer.code = JobCode::xStuck;
        return transfer;
    }
    xStartMove();
    for (int board = 1; board <= boards; ++board)
        transfer.results[board - 1] = hibWaitTransferComplete(board, transferTimeoutMs);
    return transfer;
}

XdmControl::Transfer XdmControl::sweep(int phase, int firstRow)
{
    MutexLock passLock(m_passMutex);
    SliceToImage *slices = sliceToImage();
    bool forward = false;
    {
        MutexLock lock(m_recordMutex);
        m_packedImage.imageCount = imagesPerTransfer;
        m_packedImage.widthPixels = static_cast<quint32>(slices->passWidth());
        m_packedImage.heightRows = static_cast<quint32>(slices->passHeight());
        forward = m_packedImage.forward;
    }
    slices->getPassImage(&m_structurePicture, &m_supportPicture, phase, firstRow, forward);
    return transferPass();
}

int XdmControl::printImage(int phase, int firstRow)
{
    const Transfer transfer = sweep(phase, firstRow);
    if (transfer.code != JobCode::done)
        return transfer.code;
    if (transfer.complete()) {
        m_imagesSent = 0;
        return 0;
    }
    const int x = getXPos();
    const int encoder = encoderPosition();
    const int *results = transfer.results;
    LOG_WARNING(QStringLiteral(
                    "hibWaitForImageTransferCompleteWto wait  hib1 = %1 hib2=%2 hib3=%3,xpos=%4,encoder=%5")
                    .arg(results[0])
                    .arg(results[1])
                    .arg(results[2])
                    .arg(x)
                    .arg(encoder));
    const QString details = QStringLiteral("xpos=%4 hib=%5 prexPos=%6   hib1err= %1 hib2err=%2 hib3err=%3 ")
                                .arg(results[0])
                                .arg(results[1])
                                .arg(results[2])
                                .arg(x)
                                .arg(encoder)
                                .arg(transfer.xBefore);
    stopPrint(JobCode::transferTimeout, EventHandler::eventMessage(JobCode::transferTimeout) + details,
              MessageIcon::critical, MessageButtons::close, false, 0);
    return JobCode::transferTimeout;
}

int XdmControl::printGraph(float startPos, float yOffset1, float yOffset2, float yOffset3)
{
    SliceToImage *slices = sliceToImage();
    const int position = encoderPosition();
    if (slices->dpiX() < 1.0f || slices->dpiY() < 1.0f)
        return 0;
    configPrintBarTest(slices->dpiX());
    if (position == -1) {
        LOG_WARNING(QStringLiteral("encoderPos = -1"));
        return 0;
    }
    const float middle = testPrintMiddle / (inchUm / jobServices().encoderResolution());
    if (static_cast<float>(position) == middle)
        return 0;
    {
        MutexLock lock(m_recordMutex);
        m_packedImage.forward = static_cast<float>(position) < middle;
    }
    const float offsets[boards] = {yOffset1, yOffset2, yOffset3};
    for (int board = 1; board <= boards; ++board)
        lockHibConfigPage(board, startPos, offsets[board - 1], slices->passWidth(), 0);
    printImage(0, 0);
    return 1;
}

int XdmControl::prepareDots()
{
    if (const int code = homeCarriage())
        return code;
    configPrintBar(sliceToImage()->dpiX());
    return moveZ(configuredPlace("ZStartPos"));
}

int XdmControl::printDots(bool support)
{
    setXSpeed(static_cast<int>(configuredPlace("XMoveSpeed")));
    sliceToImage()->drawTestLines(support ? supportLines : structureLines, 0, 0);
    configPage(false);
    if (const int code = printImage(0, 0))
        return code;
    return stopX(); // the carriage runs out before it is sent elsewhere
}
