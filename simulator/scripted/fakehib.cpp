// A head library that notes what it is told. It lacks some functions, as an older version of the boards'
// would.

#include "fakehib.h"
#include "hibApi.h"

#include <map>
#include <mutex>
#include <sstream>
#include <string>
#include <vector>

namespace
{
std::mutex mutex; // the program's threads against the test's
std::string calls, answer, picture;
std::map<std::string, int> failures;
std::string maskCalls;
std::map<int, std::vector<int8_t>> norm; // by colour
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

/// The bytes of a plane's first row, one over the other.
int firstRow(const HibPackedImage &image, const unsigned char *plane)
{
    int bits = 0;
    for (int column = 0; column < int(image.widthPixels) / 8; ++column)
        bits |= plane[column];
    return bits;
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
        picture +=
            "," + joined(firstRow(record, record.supportPlane), firstRow(record, record.structurePlane));
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
const char *fakeHibTakeMasks()
{
    std::lock_guard<std::mutex> lock(mutex);
    answer.swap(maskCalls);
    maskCalls.clear();
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
int32_t hibSetAutofireMask(int32_t board, int32_t nozzle, int32_t on)
{
    std::lock_guard<std::mutex> lock(mutex);
    maskCalls += std::to_string(board) + ":" + std::to_string(nozzle) + "=" + std::to_string(on) + " ";
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
        knots[i] = {float(i), i == knotCount / 2 ? peakV : -5.0f, 10 + i, 20 + i, 1, 0, {}, 30 + i};
    return note(__func__, head, waveform);
}
int32_t hibSetWaveform(int32_t head, int32_t waveform, const HibWaveformKnot *knots)
{
    std::string text;
    for (int i = 0; i < knotCount; ++i) {
        const HibWaveformKnot &k = knots[i];
        text += " " + joined(k.time, k.voltage, k.drive, k.connect, int(k.scalable), int(k.reference),
                             k.normRegion);
    }
    return note(__func__, head, waveform, text);
}
int32_t hibWaveformMaxKnotCount(int32_t)
{
    return knotCount;
}
int32_t hibAdjustWaveformVoltage(int32_t head, int32_t waveform, float difference)
{
    return note(__func__, head, waveform, difference);
}
int32_t hibGetHeadMisc(int32_t board, int32_t head, HibHeadMisc *misc)
{
    *misc = {"../A 1", 2, 3};
    return note(__func__, board, head);
}
int32_t hibShowHeadHcd(int32_t board, int32_t head, const char *waveform)
{
    return note(__func__, board, head, waveform);
}
int32_t hibGetNormVals(int32_t board, int32_t color, int8_t *values, int32_t count)
{
    auto &kept = norm.insert({color, {-120, int8_t(color), 120}}).first->second;
    for (int i = 0; i < count; ++i)
        values[i] = kept.at(size_t(i));
    return note(__func__, board, color);
}
int32_t hibLoadNormVals(int32_t board, int32_t color, const int8_t *values, int32_t count)
{
    norm[color].assign(values, values + count);
    return note(__func__, board, color, int(values[0]), int(values[1]), int(values[2]));
}
}
