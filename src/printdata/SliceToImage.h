#pragma once
// From the slicer to pass pictures: drives the external slicer and turns its layer files into what one sweep prints.

#include <QImage>
#include <QObject>
#include <QProcess>
#include <QString>
#include <atomic>

struct ModelInfo
{
    float layerHeight = 0; ///< mm
    float dpiX = 0;
    float dpiY = 0;
    float width = 0;       ///< pixelsX + 2 * extraBlankPixel
    float pixelsY = 0;
    float extraBlankPixel = 0;
    qint32 passCnt = 0;    ///< 4, 8 or 12
    float modelMaterial = 0;   ///< grams
    float supportMaterial = 0; ///< grams
};

/// Rows of a pass picture: the print bar's nozzle rows.
constexpr int passRows = 1320;

class SliceToImage : public QObject
{
    Q_OBJECT
public:
    SliceToImage();

    // The model. GUI thread, while idle; the getters any thread.
    /// 0; -1: the file cannot be read; -2: a job is running.
    int loadModelInfo(const QString &path);
    ModelInfo modelInfo() const;
    float layerHeightUm() const;
    int passCnt() const;
    int sumLayer() const;
    float dpiX() const;
    float dpiY() const;
    /// File name of the loaded model, empty when none is.
    QString fileName() const;
    int passWidth() const;
    int passHeight() const;

    // The slicer, SlicerDriver.cpp.
    /// Stops an earlier run, clears the folder, starts the tool; true when it started within 5 s. GUI thread.
    bool waitForStarted();
    /// True while the tool's process runs. GUI thread.
    bool isRunning() const;
    /// Ends the tool if it runs. GUI thread.
    void closeProcess();
    /// Highest layer known to be ready, given the layer wanted. Job thread.
    int hasSliceLayer(int layer);
    /// "UsedMem:" and the tool's memory. Job thread; takes as long as the look-up.
    QString usedMemoryText();
    float progress() const { return m_progress; }

    // Pictures, LayerImages.cpp. Job thread.
    bool binary2Image(const QString &path, QImage *target);
    bool getLayerImage(int layer);
    void getPassImage(QImage *structure, QImage *support, int phase, int firstRow, bool forward);
    /// Adds the layer in memory to the heads' drop masses; true when one has passed `topMass`.
    bool calcDotCount(double topMass);
    void resetHeadMass();

    // Test patterns, TestPatterns.cpp. While idle.
    bool getLineImage(quint8 supportByte, quint8 structureByte);
    void drawTestLines(int which, int unused, int step);

private slots:
    void processReadyRead();
    void processFinished(int exitCode, QProcess::ExitStatus exitStatus);
};

SliceToImage *sliceToImage();
