#pragma once
// From the slicer to pass pictures: drives the external slicer and turns its layer files into what one sweep prints.

#include "platform/Mutex.h"

#include <QByteArray>
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

private:
    // Layer pictures stay as the files hold them, bottom row first; layerRow() turns them.
    const uchar *layerRow(const QImage &layer, int row) const;
    void readSettings(const QString &iniPath);
    void allocatePictures();
    void resetCounters();
    void clearSliceFolder(const QString &folder) const;
    void parseLine(const QByteArray &line, bool *slice);
    bool decodeFile(const QString &path, uchar *bits, qint64 bytes);
    bool loadLayerPair(int layer);
    QString layerFile(char kind, int layer) const;
    void cutPass(const QImage &layer, QImage *pass, int phase, int firstRow, bool forward) const;

    mutable Mutex m_modelMutex; // the GUI thread loads a model while job and remote threads read name and settings
    QString m_fileNmae PELORA_GUARDED_BY(m_modelMutex);
    ModelInfo m_info PELORA_GUARDED_BY(m_modelMutex);

    QProcess m_process; // GUI thread
    QByteArray m_pendingLine; // start of a line whose end has not arrived
    std::atomic<bool> m_toolRunning{false};
    std::atomic<float> m_progress{0};
    std::atomic<qint32> m_hasSliceLayer{-1};
    std::atomic<qint32> m_SumSliceLayer{-1};

    // Allocated once a model: a freshly mapped picture costs more in page faults than all the work on it.
    QImage m_supportLayer;
    QImage m_structureLayer;
    QImage m_supportPass;
    QImage m_structurePass;
    QByteArray m_compressed; // buffers of decodeFile, grown only
    QByteArray m_inner;
    // Drop mass laid by each head since the last cleaning, in the unit of TopDropMass.
    std::atomic<double> m_head1Mass{0};
    std::atomic<double> m_head2Mass{0};
    std::atomic<double> m_head3mass{0};
    std::atomic<qint32> m_misLayer{-10000}; // last layer for which a neighbour stood in
};

SliceToImage *sliceToImage();
