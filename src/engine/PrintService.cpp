#include "engine/PrintService.h"

#include "engine/JobCodes.h"
#include "frame/Folders.h"
#include "links/BoardCommands.h"
#include "platform/Log.h"
#include "platform/ThreadName.h"
#include "printdata/ModelFile.h"
#include "printdata/SliceToImage.h"


/// Stack temperature while a model prints.
static constexpr quint8 printingStackTemp = 110;

PrintService::PrintService()
{
    setObjectName(QStringLiteral("PrintService")); // the key of its messages
    setPrintStatus(PrintStatusIdle);
    resetPrintState(0);
}

int PrintService::getPrintStatus() const
{
    return printStatus();
}

void PrintService::setPrintStatus(int status)
{
    printStatus() = status;
}

QJsonObject PrintService::printState() const
{
    QJsonObject state;
    {
        MutexLock lock(m_stateMutex);
        state = m_printState;
    }
    state.insert(QStringLiteral("PrintStatus"), getPrintStatus());
    return state;
}

void PrintService::setState(const QString &key, const QJsonValue &value)
{
    MutexLock lock(m_stateMutex);
    m_printState.insert(key, value);
}

void PrintService::resetPrintState(double leftTime)
{
    MutexLock lock(m_stateMutex);
    for (const char *key : {"StartTime", "EndTime", "Tips"})
        m_printState.insert(QLatin1String(key), QString());
    m_printState.insert(QStringLiteral("LeftTime"), leftTime);
    m_printState.insert(QStringLiteral("PrintLayer"), 0);
    m_printState.insert(QStringLiteral("SumLayer"), 0);
}

void PrintService::run()
{
    setThreadName("PrintService");
    beginJob();
    if (!startLeveller()) {
        emit stopPrintSignals(); // the job never started: no record, and the machine stays as it is
        return;
    }
    waitInkDoorClosed();
    clearPrintMessage();

    const QString model = sliceToImage()->fileName();
    markStarted(model);
    GetModelBmpAndIni(modelPath(model), nullptr);
    const ModelSettings settings(model);
    if (!acceptMachineType(settings.value(QStringLiteral("machineType")).toString()))
        return; // the Home page notices the thread's end and resets itself
    const int passDelay = settings.value(QStringLiteral("waitXTimeout")).toInt();
    LOG_WARNING(QStringLiteral("waitXTimeout = %1").arg(passDelay));
    setStackTemp(printingStackTemp);

    int code = heatUp();
    if (code == JobCode::done)
        code = checkConfiguration();
    if (code == JobCode::done)
        code = prepareMachine();
    if (code == JobCode::done)
        code = printModel(true, passDelay);
    showResult(code);
    standBy();
    finish(code);
}
