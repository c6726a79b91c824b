#pragma once
// The head library behind one process-wide lock. Loaded at first use by its name from the working directory,
// then from the system's search path. Without it every wrapper returns -1 with its outputs set to 0.

#include "hibApi.h"
#include "platform/Mutex.h"

#include <QtGlobal>

/// The waveform that heads print with.
constexpr int mainWaveform = 1;
/// A waveform with fewer knots has no peak, and no shape to show.
constexpr int minWaveformKnots = 3;
/// No board holds more; a larger count is a fault of the library and must not size a buffer.
constexpr int maxWaveformKnots = 4096;

/// The one lock around every call into the library; held across a whole pass transfer, up to 30 s.
Mutex &hibMutex();

// Each takes the lock for its one call. Any thread.
int lockHibInitAllBoards(int *boardCount, int flag);
int lockHibGetHibLibVersion(int *major, int *minor, int *revision, int *build, int *variant);
int lockHibGetMfgCode(int board, float *code);
int lockHibAddHeadToPrintBar(int bar, int head, int board, int connector, int enabled, int flags);
int lockHibConfigPrintBarHead(int bar, int head, int firstRow, int overlap, int flags);
int lockHibSetupAllDotclocks(const HibDotClock *clock);
int lockHibConfigPage(int board, float start, float offset, int width, int flag);
int lockHibGetEncoderPos(int board, int *position);
int lockHibSetEncoderPos(int board, int position);
int lockHibSetAutofireMask(int board, int nozzle, int flags);
int lockHibAutofireStart(int board, float frequency, int flags, int mode, int count);
int lockHibAutofireStop(int board);
int lockHibGetHeadInkLevels(int head, int *support, int *second, int *structure, int *fourth);
int lockHibGetHeaterTemp(int head, int sensor, float *degrees);
int lockHibSetThermalSetpoint(int head, int one, int sensor, float degrees);
int lockHibGetWaveform(int head, int waveform, HibWaveformKnot *knots);
int lockHibSetWaveform(int head, int waveform, const HibWaveformKnot *knots);
int lockHibWaveformMaxKnotCount(int head);
int lockHibAdjustWaveformVoltage(int head, int waveform, float difference);
int lockHibGetHeadMisc(int board, int head, HibHeadMisc *misc);
int lockHibShowHeadHcd(int board, int head, const char *waveform);
int lockHibGetNormVals(int board, int color, qint8 *values, int count);
int lockHibLoadNormVals(int board, int color, const qint8 *values, int count);

// For the pass transfer, which holds hibMutex() itself across all of them.
int hibSetupTransfer(HibPackedImageCallback callback, void *context) PELORA_REQUIRES(hibMutex());
int hibSetFreeCallback(HibFreePackedMemoryCallback callback, void *context) PELORA_REQUIRES(hibMutex());
int hibEnablePrinting() PELORA_REQUIRES(hibMutex());
int hibWaitTransferComplete(int board, int timeoutMs) PELORA_REQUIRES(hibMutex());

/// Brings the drive voltage of the three heads to the wanted values; false when a head refuses. Any thread.
bool setWaveformVoltage(float v1, float v2, float v3);
