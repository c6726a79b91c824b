#pragma once
// The print job with its head boards: print bar, pages, layers and passes.

#include "engine/PrintService.h"

#include <QImage>

class XdmControl : public PrintService
{
    Q_OBJECT
public:
    XdmControl();

    /// The remote test print: one sweep of the picture in memory from the end at which the carriage stands,
    /// with the caller's page start and Y offsets. 1 when a sweep was tried, else 0. Meant for an idle
    /// machine: a job's next pass is spoilt by it. Any thread.
    int printGraph(float startPos, float yOffset1, float yOffset2, float yOffset3);

    /// Homes the carriage, enters the heads and brings the bed to printing height; 0 or an event id. Service
    /// page's worker.
    int prepareDots();
    /// One reverse sweep from beyond the far end with the dots of one wax; 0 or an event id. Needs a loaded
    /// model and prepareDots(). Service page's worker.
    int printDots(bool support);

protected:
    // All that follows: job thread, service page's worker, or printGraph's caller.

    int printModel(bool clean, int passDelay) override;
    /// Enters the three heads in the bar and sets the dot clock. Errors are logged; the next transfer then
    /// fails.
    int configPrintBar(float dpi);
    /// The same with the heads at even steps of rows, for the test print.
    int configPrintBarTest(float dpi);
    /// Places the next page and sets its direction.
    bool configPage(bool forward);
    /// Prints one pass; 0, 23 after showing why, or an event id.
    int printImage(int phase, int firstRow);
    /// Goes to the next layer, or one back while layers are printed again.
    int RePrintLayer(float z, int *counter);
    /// The checks between layers.
    int checkLayerEnd();

private:
    struct LayerLoop;
    struct Transfer;
    struct BarPlace;

    int moveToStart(float z);
    int printLayer(LayerLoop &loop);
    /// Cleans the heads, levels what stands, and has the loop go back some layers.
    int cleanInMidJob(const LayerLoop &loop);
    int printPass(LayerLoop &loop, int pass);
    int stepZ(LayerLoop &loop);
    void countLayer(LayerLoop &loop, double layerStart);
    void waitInkDoorOrHeld();
    int configBar(float dpi, const BarPlace *places);
    Transfer sweep(int phase, int firstRow);
    Transfer transferPass();
    static void handOverPicture(int32_t, HibPackedImage *record, void *context);

    // A pass of the job against a remote test print: one sweep at a time. Taken before every other lock here.
    Mutex m_passMutex;
    QImage m_structurePicture; // of the pass in work: the library reads them until its transfer is complete,
    QImage m_supportPicture;   // on a thread of its own, while the pass holds m_passMutex
};

/// The process's one job object. Create it on the GUI thread. Any thread.
XdmControl *xdmControl();
