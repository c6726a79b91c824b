#include "engine/HibLibrary.h"

#include "platform/Log.h"

#include <QDir>
#include <QLibrary>
#include <QStringList>
#include <algorithm>

Mutex &hibMutex()
{
    static Mutex mutex; // job, service and network threads: the library takes one call at a time
    return mutex;
}

namespace
{
// Every function that this program calls. The list gives the table of pointers, and their names to look up.
#define HIB_FUNCTIONS(X)                                                                                     \
    X(hibInitAllBoards)                                                                                      \
    X(hibGetHibLibVersion)                                                                                   \
    X(hibGetMfgCode)                                                                                         \
    X(hibAddHeadToPrintBar)                                                                                  \
    X(hibConfigPrintBarHead)                                                                                 \
    X(hibSetupAllDotclocks)                                                                                  \
    X(hibConfigPage)                                                                                         \
    X(hibSetupPackedImageTransfer)                                                                           \
    X(hibSetFreePackedMemoryCallback)                                                                        \
    X(hibEnablePrintingWDelay)                                                                               \
    X(hibWaitForImageTransferCompleteWto)                                                                    \
    X(hibGetEncoderPos)                                                                                      \
    X(hibSetEncoderPos)                                                                                      \
    X(hibSetAutofireMask)                                                                                    \
    X(hibAutofireStart)                                                                                      \
    X(hibAutofireStop)                                                                                       \
    X(hibGetHeadInkLevels)                                                                                   \
    X(hibGetHeaterTemp)                                                                                      \
    X(hibSetThermalSetpoint)                                                                                 \
    X(hibGetWaveform)                                                                                        \
    X(hibSetWaveform)                                                                                        \
    X(hibWaveformMaxKnotCount)                                                                               \
    X(hibAdjustWaveformVoltage)                                                                              \
    X(hibGetHeadMisc)                                                                                        \
    X(hibShowHeadHcd)                                                                                        \
    X(hibGetNormVals)                                                                                        \
    X(hibLoadNormVals)

struct HibFunctions {
#define HIB_POINTER(name) decltype(&::name) name = nullptr;
    HIB_FUNCTIONS(HIB_POINTER)
#undef HIB_POINTER
};

bool loadLibrary(QLibrary &library)
{
    library.setFileName(QDir::current().absoluteFilePath(QStringLiteral(HIB_LIBRARY_NAME)));
    if (library.load())
        return true;
    library.setFileName(QStringLiteral(HIB_LIBRARY_NAME));
    return library.load();
}

HibFunctions loadFunctions()
{
    HibFunctions functions;
    QLibrary library;
    if (!loadLibrary(library)) {
        LOG_WARNING(QStringLiteral("head library %1 not loaded: %2")
                        .arg(QStringLiteral(HIB_LIBRARY_NAME), library.errorString()));
        return functions;
    }
    QStringList missing;
#define HIB_RESOLVE(name)                                                                                    \
    functions.name = reinterpret_cast<decltype(functions.name)>(library.resolve(#name));                     \
    if (!functions.name)                                                                                     \
        missing << QStringLiteral(#name);
    HIB_FUNCTIONS(HIB_RESOLVE)
#undef HIB_RESOLVE
    if (!missing.isEmpty())
        LOG_WARNING(QStringLiteral("head library %1 lacks: %2")
                        .arg(library.fileName(), missing.join(QLatin1Char(' '))));
    return functions;
}

/// Loaded by the first call, which holds the lock.
const HibFunctions &hib() PELORA_REQUIRES(hibMutex())
{
    static const HibFunctions functions = loadFunctions();
    return functions;
}

/// -1 when the library or the function is not there.
template <class Function, class... Arguments>
int call(Function HibFunctions::*function, Arguments... arguments) PELORA_REQUIRES(hibMutex())
{
    const Function target = hib().*function;
    return target ? target(arguments...) : -1;
}

template <class Function, class... Arguments>
int lockedCall(Function HibFunctions::*function, Arguments... arguments)
{
    MutexLock lock(hibMutex());
    return call(function, arguments...);
}

/// Outputs read 0 when the library has not filled them.
template <class... Outputs> void clear(Outputs *...outputs)
{
    ((*outputs = 0), ...);
}
} // namespace

int lockHibInitAllBoards(int *boardCount, int flag)
{
    clear(boardCount);
    return lockedCall(&HibFunctions::hibInitAllBoards, boardCount, flag);
}

int lockHibGetHibLibVersion(int *major, int *minor, int *revision, int *build, int *variant)
{
    clear(major, minor, revision, build, variant);
    return lockedCall(&HibFunctions::hibGetHibLibVersion, major, minor, revision, build, variant);
}

int lockHibGetMfgCode(int board, float *code)
{
    clear(code);
    return lockedCall(&HibFunctions::hibGetMfgCode, board, code);
}

int lockHibAddHeadToPrintBar(int bar, int head, int board, int connector, int enabled, int flags)
{
    return lockedCall(&HibFunctions::hibAddHeadToPrintBar, bar, head, board, connector, enabled, flags);
}

int lockHibConfigPrintBarHead(int bar, int head, int firstRow, int overlap, int flags)
{
    return lockedCall(&HibFunctions::hibConfigPrintBarHead, bar, head, firstRow, overlap, flags);
}

int lockHibSetupAllDotclocks(const HibDotClock *clock)
{
    return lockedCall(&HibFunctions::hibSetupAllDotclocks, clock);
}

int lockHibConfigPage(int board, float start, float offset, int width, int flag)
{
    return lockedCall(&HibFunctions::hibConfigPage, board, start, offset, width, flag);
}

int lockHibGetEncoderPos(int board, int *position)
{
    clear(position);
    return lockedCall(&HibFunctions::hibGetEncoderPos, board, position);
}

int lockHibSetEncoderPos(int board, int position)
{
    return lockedCall(&HibFunctions::hibSetEncoderPos, board, position);
}

int lockHibSetAutofireMask(int board, int nozzle, int flags)
{
    return lockedCall(&HibFunctions::hibSetAutofireMask, board, nozzle, flags);
}

int lockHibAutofireStart(int board, float frequency, int flags, int mode, int count)
{
    return lockedCall(&HibFunctions::hibAutofireStart, board, frequency, flags, mode, count);
}

int lockHibAutofireStop(int board)
{
    return lockedCall(&HibFunctions::hibAutofireStop, board);
}

int lockHibGetHeadInkLevels(int head, int *support, int *second, int *structure, int *fourth)
{
    clear(support, second, structure, fourth);
    return lockedCall(&HibFunctions::hibGetHeadInkLevels, head, support, second, structure, fourth);
}

int lockHibGetHeaterTemp(int head, int sensor, float *degrees)
{
    clear(degrees);
    return lockedCall(&HibFunctions::hibGetHeaterTemp, head, sensor, degrees);
}

int lockHibSetThermalSetpoint(int head, int one, int sensor, float degrees)
{
    return lockedCall(&HibFunctions::hibSetThermalSetpoint, head, one, sensor, degrees);
}

int lockHibGetWaveform(int head, int waveform, HibWaveformKnot *knots)
{
    return lockedCall(&HibFunctions::hibGetWaveform, head, waveform, knots);
}

int lockHibSetWaveform(int head, int waveform, const HibWaveformKnot *knots)
{
    return lockedCall(&HibFunctions::hibSetWaveform, head, waveform, knots);
}

int lockHibWaveformMaxKnotCount(int head)
{
    return lockedCall(&HibFunctions::hibWaveformMaxKnotCount, head);
}

int lockHibAdjustWaveformVoltage(int head, int waveform, float difference)
{
    return lockedCall(&HibFunctions::hibAdjustWaveformVoltage, head, waveform, difference);
}

int lockHibGetHeadMisc(int board, int head, HibHeadMisc *misc)
{
    *misc = {};
    return lockedCall(&HibFunctions::hibGetHeadMisc, board, head, misc);
}

int lockHibShowHeadHcd(int board, int head, const char *waveform)
{
    return lockedCall(&HibFunctions::hibShowHeadHcd, board, head, waveform);
}

int lockHibGetNormVals(int board, int color, qint8 *values, int count)
{
    std::fill_n(values, count, qint8(0));
    return lockedCall(&HibFunctions::hibGetNormVals, board, color, values, count);
}

int lockHibLoadNormVals(int board, int color, const qint8 *values, int count)
{
    return lockedCall(&HibFunctions::hibLoadNormVals, board, color, values, count);
}

int hibSetupTransfer(HibPackedImageCallback callback, void *context)
{
    return call(&HibFunctions::hibSetupPackedImageTransfer, 1, callback, context);
}

int hibSetFreeCallback(HibFreePackedMemoryCallback callback, void *context)
{
    return call(&HibFunctions::hibSetFreePackedMemoryCallback, 1, callback, context);
}

int hibEnablePrinting()
{
    return call(&HibFunctions::hibEnablePrintingWDelay, 0, 0);
}

int hibWaitTransferComplete(int board, int timeoutMs)
{
    return call(&HibFunctions::hibWaitForImageTransferCompleteWto, board, timeoutMs);
}
