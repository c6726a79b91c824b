#pragma once
// From the slicer to pass pictures: drives the external slicer and turns its layer files into what one sweep
// prints.

#include "platform/Mutex.h"
#include "printdata/LayerFile.h"

#include <QByteArray>
#include <QImage>
#include <QObject>
#include <QProcess>
#include <QString>
#include <atomic>

struct ModelInfo {
    float layerHeight = 0; ///< mm
    float dpiX = 0;
    float dpiY = 0;
    float width = 0; ///< pixelsX + 2 * extraBlankPixel
    float pixelsY = 0;
    float extraBlankPixel = 0;
    qint32 passCnt = 0;        ///< 4, 8 or 12
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
    /// 0; -1: the file cannot be read, or its picture is bigger than any that can be printed; -2: a job is
    /// running. `path` is "model/<name>".
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
    /// One layer file into a picture, top row first. False, with a log line and the picture empty, on damage.
    bool binary2Image(const QString &path, QImage *target);
    /// Fills both layer pictures; false when the layer is not to be had. A damaged layer may be printed as
    /// its predecessor, once in a hundred layers.
    bool getLayerImage(int layer);
    /// Cuts the rows of one pass. Both pictures share their memory with this object until they are assigned
    /// anew: give the same two each time, and nothing is copied.
    void getPassImage(QImage *structure, QImage *support, int phase, int firstRow, bool forward);
    /// Adds the layer in memory to the heads' drop masses; true when one has passed `topMass`.
    bool calcDotCount(double topMass);
    void resetHeadMass();

    // Test patterns, TestPatterns.cpp. While idle; any thread.
    /// Every byte of the support and of the structure picture, but for the blank columns at both sides. False
    /// when no model is loaded.
    bool getLineImage(quint8 supportByte, quint8 structureByte);
    /// A line along Y every `step` columns (0: 100), in the support picture when `which` is -1, else in the
    /// structure picture.
    void drawTestLines(int which, int unused, int step);

private slots:
    void processReadyRead();
    void processFinished(int exitCode, QProcess::ExitStatus exitStatus);

    void processStateChanged(QProcess::ProcessState state);

private:
    bool allocatePictures(const ModelInfo &info);
    // The slicer. GUI thread.
    void resetRun();
    void readLine(const QByteArray &line);
    // Pictures. Layer pictures stay as the files hold them, bottom row first; layerRow() turns them.
    bool decodeFile(const QString &path, QImage *target) PELORA_REQUIRES(m_pictureMutex);
    bool loadLayerPair(const QString &folder, int layer) PELORA_REQUIRES(m_pictureMutex);
    bool CheckDropMass(double dropMass, double topMass) PELORA_REQUIRES(m_pictureMutex);

    mutable Mutex m_modelMutex; // loading a model (GUI) against the getters of job and remote threads
    QString m_fileNmae PELORA_GUARDED_BY(m_modelMutex); ///< relative to model/; empty: no model
    ModelInfo m_info PELORA_GUARDED_BY(m_modelMutex);

    QProcess m_process;                      // GUI thread, as is
    QByteArray m_pendingLine;                // the start of a line whose end has not come yet
    std::atomic<bool> m_toolRunning{false};  // for the job thread, which may not touch m_process
    std::atomic<float> m_progress{0};        ///< of the tool's preparation, 0 to 1
    std::atomic<qint32> m_hasSliceLayer{-1}; ///< highest layer known to be finished
    std::atomic<qint32> m_SumSliceLayer{-1}; ///< layers as the tool counts them

    // The picture work of the job thread against loading a model (GUI) and test patterns (remote), which come
    // while idle: idle is said before the job thread has ended. Taken before m_modelMutex.
    Mutex m_pictureMutex;
    // Allocated once a model: a freshly mapped picture costs more in page faults than all the work on it.
    QImage m_supportLayer PELORA_GUARDED_BY(m_pictureMutex);
    QImage m_structureLayer PELORA_GUARDED_BY(m_pictureMutex);
    QImage m_supportPass PELORA_GUARDED_BY(m_pictureMutex);
    QImage m_structurePass PELORA_GUARDED_BY(m_pictureMutex);
    LayerFileReader m_layerFile PELORA_GUARDED_BY(m_pictureMutex);
    // Drop mass laid by each head since the last cleaning, in the unit of TopDropMass.
    double m_head1Mass PELORA_GUARDED_BY(m_pictureMutex) = 0;
    double m_head2Mass PELORA_GUARDED_BY(m_pictureMutex) = 0;
    double m_head3mass PELORA_GUARDED_BY(m_pictureMutex) = 0;
    /// Last layer for which a neighbour stood in.
    qint32 m_misLayer PELORA_GUARDED_BY(m_pictureMutex) = noLayerMissed;
    static constexpr qint32 noLayerMissed = -10000;
};

/// The process's one object; it belongs to the GUI thread whoever asks first. Any thread.
SliceToImage *sliceToImage();
