/* The head-interface board library: what this program uses of it. Boards and heads count from 1. Every
 * function returns 0 on success, else an error number, unless it says otherwise. Shared by the loader of the
 * program and by the library that stands in for the boards on a desk. Not safe for concurrent calls: callers
 * hold one lock. */
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

#define HIB_LIBRARY_NAME "hibApiDll64"

typedef struct HibDotClock {
    uint32_t boardCount;
    float frequencyHz;
    uint8_t enabled;
    uint8_t padding[3];
    float encoderDivider; /* encoder counts per inch times 0.25 */
    int32_t dpi;
    uint32_t mode; /* 0x10001 */
} HibDotClock;

/* One pass: rows of one bit a pixel, lowest bit first, rows padded to 32 bits. The library reads the planes
 * until the transfer is complete. */
typedef struct HibPackedImage {
    const uint8_t *supportPlane;
    const uint8_t *structurePlane;
    uint8_t reserved[16]; /* never written */
    uint32_t widthPixels;
    uint32_t heightRows;
    uint32_t imageCount;
    uint32_t value150;
    uint32_t dpi;
    uint8_t forward; /* 1 while the next pass is forward */
    uint8_t padding[3];
} HibPackedImage;

typedef struct HibWaveformKnot {
    float time;    /* microseconds */
    float voltage; /* volts */
    int32_t drive;
    int32_t connect;
    uint8_t scalable;  /* 0 or 1 */
    uint8_t reference; /* 0 or 1 */
    uint8_t padding[2];
    int32_t normRegion;
} HibWaveformKnot; /* 24 bytes */

/* What a head tells of itself. */
typedef struct HibHeadMisc {
    char serialNumber[16]; /* zero ends it, if it is shorter */
    int32_t colorCount;    /* colours count from 1: support, structure */
    int32_t nozzlesPerColor;
} HibHeadMisc;

typedef void (*HibPackedImageCallback)(int32_t ignored, HibPackedImage *record, void *context);
typedef void (*HibFreePackedMemoryCallback)(int32_t ignored, HibPackedImage *record, void *context);

int32_t hibInitAllBoards(int32_t *boardCount, int32_t flag);
int32_t hibGetHibLibVersion(int32_t *major, int32_t *minor, int32_t *revision, int32_t *build,
                            int32_t *variant);
int32_t hibGetMfgCode(int32_t board, float *code);
int32_t hibAddHeadToPrintBar(int32_t bar, int32_t head, int32_t board, int32_t connector, int32_t enabled,
                             int32_t flags);
int32_t hibConfigPrintBarHead(int32_t bar, int32_t head, int32_t firstRow, int32_t overlap, int32_t flags);
int32_t hibSetupAllDotclocks(const HibDotClock *clock);
int32_t hibConfigPage(int32_t board, float startUm, float offsetUm, int32_t widthPixels, int32_t flag);
int32_t hibSetupPackedImageTransfer(int32_t board, HibPackedImageCallback callback, void *context);
int32_t hibSetFreePackedMemoryCallback(int32_t board, HibFreePackedMemoryCallback callback, void *context);
int32_t hibEnablePrintingWDelay(int32_t delay, int32_t flags);
int32_t hibWaitForImageTransferCompleteWto(int32_t board, int32_t timeoutMs);
int32_t hibGetEncoderPos(int32_t board, int32_t *position);
int32_t hibSetEncoderPos(int32_t board, int32_t position);
int32_t hibSetAutofireMask(int32_t board, int32_t nozzle, int32_t flags);
int32_t hibAutofireStart(int32_t board, float frequencyHz, int32_t flags, int32_t mode, int32_t count);
int32_t hibAutofireStop(int32_t board);
int32_t hibGetHeadInkLevels(int32_t head, int32_t *support, int32_t *second, int32_t *structure,
                            int32_t *fourth);
int32_t hibGetHeaterTemp(int32_t head, int32_t sensor, float *degrees);
int32_t hibSetThermalSetpoint(int32_t head, int32_t one, int32_t sensor, float degrees);
int32_t hibGetWaveform(int32_t head, int32_t waveform, HibWaveformKnot *knots);
int32_t hibSetWaveform(int32_t head, int32_t waveform, const HibWaveformKnot *knots);
int32_t hibWaveformMaxKnotCount(int32_t head); /* returns the knot count */
int32_t hibAdjustWaveformVoltage(int32_t head, int32_t waveform, float differenceV);
int32_t hibGetHeadMisc(int32_t board, int32_t head, HibHeadMisc *misc);
int32_t hibShowHeadHcd(int32_t board, int32_t head, const char *waveform); /* shows a colour's drive data */
int32_t hibGetNormVals(int32_t board, int32_t color, int8_t *values, int32_t count);
int32_t hibLoadNormVals(int32_t board, int32_t color, const int8_t *values, int32_t count);

#ifdef __cplusplus
}
static_assert(sizeof(HibDotClock) == 24, "record of the boards' library");
static_assert(sizeof(HibWaveformKnot) == 24, "record of the boards' library");
static_assert(sizeof(HibHeadMisc) == 24, "record of the boards' library");
static_assert(sizeof(void *) != 8 || sizeof(HibPackedImage) == 56, "record of the boards' library");
#endif
