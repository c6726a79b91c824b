// The head boards' library on a desk: the same calls, answered by the simulated machine.

#include "hibApi.h"

#include "HeadLink.h"

#include <algorithm>
#include <cstdio>
#include <string>

#define HIB_EXPORT extern "C" __attribute__((visibility("default")))

using heads::Op;

namespace
{
constexpr int versionNumbers[5] = {3, 8, 1, 0, 2};
constexpr int boards = 3;
constexpr int widthLimit = 65536;
constexpr int rowLimit = 65535;

HeadLink boardsLink;

struct Source {
    HibPackedImageCallback callback = nullptr;
    void *context = nullptr;
};
Source pictureSource;

/// Hands a call through and its answer's numbers out; outputs are 0 when the call fails.
template <typename T>
int query(Op op, std::initializer_list<double> arguments, std::initializer_list<T *> outputs)
{
    std::vector<double> values;
    int result = boardsLink.call(op, arguments, &values);
    if (result == heads::Done && values.size() < outputs.size())
        result = heads::NoBoards;
    size_t at = 0;
    for (T *output : outputs) {
        *output = result == heads::Done ? T(values[at]) : T(0);
        ++at;
    }
    return result;
}

int armPicture(const HibPackedImage &image)
{
    const bool readable = image.supportPlane && image.widthPixels > 0 && image.widthPixels <= widthLimit &&
                          image.heightRows > 0 && image.heightRows <= rowLimit;
    if (!readable)
        return heads::BadArgument;
    const int width = int(image.widthPixels), rows = int(image.heightRows);
    const int stride = (width + 31) / 32 * 4;
    const SparsePlane support = SparsePlane::pack(image.supportPlane, width, rows, stride);
    const SparsePlane structure = SparsePlane::pack(image.structurePlane, width, rows, stride);
    return boardsLink.arm({double(width), double(rows), double(image.dpi), double(image.forward),
                           double(image.value150), double(image.imageCount), double(support.bytes.size())},
                          support, structure);
}
} // namespace

HIB_EXPORT int32_t hibInitAllBoards(int32_t *boardCount, int32_t)
{
    *boardCount = 0;
    const int result = boardsLink.connect() ? boardsLink.call(Op::Init, {}) : int(heads::NoBoards);
    if (result == heads::Done)
        *boardCount = boards;
    return result;
}

HIB_EXPORT int32_t hibGetHibLibVersion(int32_t *major, int32_t *minor, int32_t *revision, int32_t *build,
                                       int32_t *variant)
{
    int32_t *const outputs[5] = {major, minor, revision, build, variant};
    for (int i = 0; i < 5; ++i)
        *outputs[i] = versionNumbers[i];
    return heads::Done;
}

HIB_EXPORT int32_t hibGetMfgCode(int32_t board, float *code)
{
    return query<float>(Op::MfgCode, {double(board)}, {code});
}

HIB_EXPORT int32_t hibAddHeadToPrintBar(int32_t bar, int32_t head, int32_t board, int32_t connector,
                                        int32_t enabled, int32_t flags)
{
    return boardsLink.call(Op::AddHead, {double(bar), double(head), double(board), double(connector),
                                         double(enabled), double(flags)});
}

HIB_EXPORT int32_t hibConfigPrintBarHead(int32_t bar, int32_t head, int32_t firstRow, int32_t overlap,
                                         int32_t flags)
{
    return boardsLink.call(Op::PlaceHead,
                           {double(bar), double(head), double(firstRow), double(overlap), double(flags)});
}

HIB_EXPORT int32_t hibSetupAllDotclocks(const HibDotClock *clock)
{
    return boardsLink.call(Op::DotClocks,
                           {double(clock->boardCount), double(clock->frequencyHz), double(clock->enabled),
                            double(clock->encoderDivider), double(clock->dpi), double(clock->mode)});
}

HIB_EXPORT int32_t hibConfigPage(int32_t board, float startUm, float offsetUm, int32_t widthPixels,
                                 int32_t flag)
{
    return boardsLink.call(
        Op::Page, {double(board), double(startUm), double(offsetUm), double(widthPixels), double(flag)});
}

HIB_EXPORT int32_t hibSetupPackedImageTransfer(int32_t, HibPackedImageCallback callback, void *context)
{
    pictureSource = {callback, context};
    if (!boardsLink.connected())
        return heads::NoBoards;
    return callback ? heads::Done : heads::BadArgument;
}

HIB_EXPORT int32_t hibSetFreePackedMemoryCallback(int32_t, HibFreePackedMemoryCallback, void *)
{
    return heads::Done; // planes are read before hibEnablePrintingWDelay returns: nothing is held that could
                        // be freed
}

/// Asks for pictures until the source has no more, and arms the boards with each.
HIB_EXPORT int32_t hibEnablePrintingWDelay(int32_t, int32_t)
{
    if (!boardsLink.connected() || !pictureSource.callback)
        return boardsLink.connected() ? heads::NoImage : heads::NoBoards;
    int32_t result = heads::NoImage;
    constexpr int pictureLimit = 16; // a source that never ends
    for (int i = 0; i < pictureLimit; ++i) {
        HibPackedImage image = {};
        pictureSource.callback(i, &image, pictureSource.context);
        if (!image.structurePlane)
            return result;
        result = armPicture(image);
        if (result != heads::Done)
            return result;
    }
    return heads::BadArgument;
}

HIB_EXPORT int32_t hibWaitForImageTransferCompleteWto(int32_t board, int32_t timeoutMs)
{
    return boardsLink.call(Op::WaitComplete, {double(board)}, nullptr, timeoutMs);
}

HIB_EXPORT int32_t hibGetEncoderPos(int32_t board, int32_t *position)
{
    return query<int32_t>(Op::GetEncoder, {double(board)}, {position});
}

HIB_EXPORT int32_t hibSetEncoderPos(int32_t board, int32_t position)
{
    return boardsLink.call(Op::SetEncoder, {double(board), double(position)});
}

HIB_EXPORT int32_t hibSetAutofireMask(int32_t board, int32_t nozzle, int32_t flags)
{
    return boardsLink.post(Op::AutofireMask, {double(board), double(nozzle), double(flags)});
}

HIB_EXPORT int32_t hibAutofireStart(int32_t board, float frequencyHz, int32_t flags, int32_t mode,
                                    int32_t count)
{
    return boardsLink.call(Op::AutofireStart,
                           {double(board), double(frequencyHz), double(flags), double(mode), double(count)});
}

HIB_EXPORT int32_t hibAutofireStop(int32_t board)
{
    return boardsLink.call(Op::AutofireStop, {double(board)});
}

HIB_EXPORT int32_t hibGetHeadInkLevels(int32_t head, int32_t *support, int32_t *second, int32_t *structure,
                                       int32_t *fourth)
{
    return query<int32_t>(Op::InkLevels, {double(head)}, {support, second, structure, fourth});
}

HIB_EXPORT int32_t hibGetHeaterTemp(int32_t head, int32_t sensor, float *degrees)
{
    return query<float>(Op::HeaterTemp, {double(head), double(sensor)}, {degrees});
}

HIB_EXPORT int32_t hibSetThermalSetpoint(int32_t head, int32_t, int32_t sensor, float degrees)
{
    return boardsLink.call(Op::ThermalSetpoint, {double(head), double(sensor), double(degrees)});
}

HIB_EXPORT int32_t hibGetWaveform(int32_t head, int32_t waveform, HibWaveformKnot *knots)
{
    std::vector<double> values;
    int result = boardsLink.call(Op::GetWaveform, {double(head), double(waveform)}, &values);
    if (result == heads::Done && values.size() < heads::knotNumbers * heads::knotCount)
        result = heads::NoBoards;
    for (size_t i = 0; i < heads::knotCount; ++i) {
        knots[i] = HibWaveformKnot();
        if (result != heads::Done)
            continue;
        const double *v = &values[heads::knotNumbers * i];
        knots[i] = {float(v[0]),   float(v[1]), int32_t(v[2]), int32_t(v[3]), uint8_t(v[4]),
                    uint8_t(v[5]), {},          int32_t(v[6])};
    }
    return result;
}

HIB_EXPORT int32_t hibSetWaveform(int32_t head, int32_t waveform, const HibWaveformKnot *knots)
{
    std::vector<double> values = {double(head), double(waveform)};
    for (int i = 0; i < heads::knotCount; ++i) {
        const HibWaveformKnot &knot = knots[i];
        for (const double value :
             {double(knot.time), double(knot.voltage), double(knot.drive), double(knot.connect),
              double(knot.scalable), double(knot.reference), double(knot.normRegion)})
            values.push_back(value);
    }
    return boardsLink.call(Op::SetWaveform, values);
}

HIB_EXPORT int32_t hibWaveformMaxKnotCount(int32_t head)
{
    return boardsLink.connected() && head >= 1 && head <= boards ? heads::knotCount : 0;
}

HIB_EXPORT int32_t hibAdjustWaveformVoltage(int32_t head, int32_t waveform, float differenceV)
{
    return boardsLink.call(Op::AdjustVoltage, {double(head), double(waveform), double(differenceV)});
}

HIB_EXPORT int32_t hibGetHeadMisc(int32_t board, int32_t head, HibHeadMisc *misc)
{
    int32_t serial = 0;
    *misc = HibHeadMisc();
    const int result = query<int32_t>(Op::HeadMisc, {double(board), double(head)},
                                      {&serial, &misc->colorCount, &misc->nozzlesPerColor});
    if (result == heads::Done)
        std::snprintf(misc->serialNumber, sizeof misc->serialNumber, "SN%d", int(serial));
    return result;
}

HIB_EXPORT int32_t hibShowHeadHcd(int32_t board, int32_t head, const char *waveform)
{
    const std::string name = waveform ? waveform : "";
    const double number = name == "wave1" ? 1 : name == "wave2" ? 2 : 0;
    return boardsLink.call(Op::ShowHcd, {double(board), double(head), number});
}

HIB_EXPORT int32_t hibGetNormVals(int32_t board, int32_t color, int8_t *values, int32_t count)
{
    std::vector<double> answer;
    const int result = boardsLink.call(Op::GetNorm, {double(board), double(color)}, &answer);
    if (result != heads::Done)
        return result;
    if (size_t(std::max(count, 0)) != answer.size())
        return heads::BadArgument;
    std::transform(answer.begin(), answer.end(), values, [](double value) { return int8_t(value); });
    return heads::Done;
}

HIB_EXPORT int32_t hibLoadNormVals(int32_t board, int32_t color, const int8_t *values, int32_t count)
{
    if (count != heads::colorNozzles)
        return heads::BadArgument;
    std::vector<double> arguments = {double(board), double(color)};
    arguments.insert(arguments.end(), values, values + count);
    return boardsLink.call(Op::LoadNorm, arguments);
}
