// The head boards' library on a desk: the same calls, answered by the simulated machine.

#include "hibApi.h"

#include "HeadLink.h"

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
    if (result == heads::Done && values.size() < 2 * heads::knotCount)
        result = heads::NoBoards;
    for (size_t i = 0; i < heads::knotCount; ++i) {
        knots[i] = HibWaveformKnot();
        if (result != heads::Done)
            continue;
        knots[i].timeUs = float(values[2 * i]);
        knots[i].voltageV = float(values[2 * i + 1]);
    }
    return result;
}

HIB_EXPORT int32_t hibWaveformMaxKnotCount(int32_t head)
{
    return boardsLink.connected() && head >= 1 && head <= boards ? heads::knotCount : 0;
}

HIB_EXPORT int32_t hibAdjustWaveformVoltage(int32_t head, int32_t waveform, float differenceV)
{
    return boardsLink.call(Op::AdjustVoltage, {double(head), double(waveform), double(differenceV)});
}
