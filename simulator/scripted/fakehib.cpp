// A head library that notes what it is told. It lacks some functions, as an older version of the boards'
// would.

#include "fakehib.h"
#include "hibApi.h"

#include <map>
#include <mutex>
#include <sstream>
#include <string>

namespace
{
std::mutex mutex; // the program's threads against the test's
std::string calls, answer, picture;
std::map<std::string, int> failures;
int masks = 0, knotCount = 3, encoder = 0;
float peakV = 0;
HibPackedImageCallback transfer = nullptr;
void *transferContext = nullptr;

template <class... Values> std::string joined(Values... values)
{
    std::ostringstream text;
    const char *separator = "";
    ((text << separator << values, separator = ","), ...);
    return text.str();
}

template <class... Values> int note(const char *name, Values... values)
{
    std::lock_guard<std::mutex> lock(mutex);
    calls += std::string(name) + "(" + joined(values...) + ")\n";
    const auto failure = failures.find(name);
    return failure == failures.end() ? 0 : failure->second;
}

/// Asks twice, as boards do that look for a second picture of the transfer.
void takePicture()
{
    HibPackedImage record{}, second{};
    transfer(0, &record, transferContext);
    transfer(0, &second, transferContext);
    std::lock_guard<std::mutex> lock(mutex);
    picture = joined(record.widthPixels, record.heightRows, record.imageCount, record.value150, record.dpi,
                     int(record.forward));
    if (record.supportPlane && record.structurePlane)
        picture += "," + joined(int(record.supportPlane[0]), int(record.structurePlane[0]));
    if (second.widthPixels)
        picture += ",second";
}
} // namespace

extern "C" {
const char *fakeHibTakeCalls()
{
    std::lock_guard<std::mutex> lock(mutex);
    answer = calls + (masks ? "masks=" + std::to_string(masks) : "");
    calls.clear();
    masks = 0;
    return answer.c_str();
}
void fakeHibFail(const char *function, int code)
{
    std::lock_guard<std::mutex> lock(mutex);
    failures[function] = code;
}
void fakeHibSet(int knots, float peak, int position)
{
    knotCount = knots;
    peakV = peak;
    encoder = position;
}
const char *fakeHibPicture()
{
    return picture.c_str();
}

int32_t hibAddHeadToPrintBar(int32_t bar, int32_t head, int32_t board, int32_t connector, int32_t on,
                             int32_t flags)
{
    return note(__func__, bar, head, board, connector, on, flags);
}
int32_t hibConfigPrintBarHead(int32_t bar, int32_t head, int32_t firstRow, int32_t overlap, int32_t flags)
{
    return note(__func__, bar, head, firstRow, overlap, flags);
}
int32_t hibSetupAllDotclocks(const HibDotClock *c)
{
    return note(__func__, c->boardCount, c->frequencyHz, int(c->enabled), c->encoderDivider, c->dpi, c->mode);
}
int32_t hibConfigPage(int32_t board, float start, float offset, int32_t width, int32_t flag)
{
    return note(__func__, board, start, offset, width, flag);
}
int32_t hibSetupPackedImageTransfer(int32_t board, HibPackedImageCallback callback, void *context)
{
    transfer = callback;
    transferContext = context;
    return note(__func__, board);
}
int32_t hibSetFreePackedMemoryCallback(int32_t board, HibFreePackedMemoryCallback callback, void *context)
{
    callback(0, nullptr, context);
    return note(__func__, board);
}
int32_t hibEnablePrintingWDelay(int32_t delay, int32_t flags)
{
    return note(__func__, delay, flags);
}
int32_t hibWaitForImageTransferCompleteWto(int32_t board, int32_t timeoutMs)
{
    if (board == 1)
        takePicture();
    return note(__func__, board, timeoutMs);
}
int32_t hibGetEncoderPos(int32_t board, int32_t *position)
{
    *position = encoder;
    return note(__func__, board);
}
int32_t hibSetEncoderPos(int32_t board, int32_t position)
{
    return note(__func__, board, position);
}
int32_t hibSetAutofireMask(int32_t, int32_t, int32_t)
{
    std::lock_guard<std::mutex> lock(mutex);
    return ++masks, 0;
}
int32_t hibAutofireStart(int32_t board, float frequency, int32_t flags, int32_t mode, int32_t count)
{
    return note(__func__, board, frequency, flags, mode, count);
}
int32_t hibAutofireStop(int32_t board)
{
    return note(__func__, board);
}
int32_t hibGetWaveform(int32_t head, int32_t waveform, HibWaveformKnot *knots)
{
    for (int i = 0; i < knotCount; ++i)
        knots[i].voltageV = i == knotCount / 2 ? peakV : -5.0f;
    return note(__func__, head, waveform);
}
int32_t hibWaveformMaxKnotCount(int32_t)
{
    return knotCount;
}
int32_t hibAdjustWaveformVoltage(int32_t head, int32_t waveform, float difference)
{
    return note(__func__, head, waveform, difference);
}
}
