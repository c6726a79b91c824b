// The external slicer: started, followed by its output, ended.

#include "frame/Folders.h"
#include "platform/Log.h"
#include "platform/ToolProcesses.h"
#include "printdata/SliceToImage.h"

#include <QDir>
#include <QFileInfo>
#include <QRegExp>
#include <QRegularExpression>
#include <QSettings>
#include <cstdio>

namespace
{
const QString slicerProgram = QStringLiteral("Lamorel/lamorel.exe");
const QString slicerImage = QStringLiteral("lamorel.exe");
constexpr int startLimitMs = 5000;
constexpr int endLimitMs = 30000;
constexpr int unknownTotal = 9999; // until the slicer says how many layers there are
constexpr int longestLine = 4096;  // of the slicer's output; what is longer is rubbish
} // namespace

bool SliceToImage::waitForStarted()
{
    resetCounters();
    closeProcess();
    m_SumSliceLayer = unknownTotal;
    resetHeadMass();
    const QString name = fileName();
    const QString folder = sliceFolder(name);
    const QSettings toolSettings(folder + QLatin1Char('/') + name + QStringLiteral(".ini"), QSettings::IniFormat);
    killImage(slicerImage); // also one that an earlier run of this program has left
    QDir().mkpath(folder);
    clearSliceFolder(folder);
    LOG_WARNING(
        QStringLiteral("Lamorel/lamorel.exe -X \"model/%1\" -O  \"%2\"").arg(name, folder));

    m_process.disconnect(this);
    m_pendingLine.clear();
    connect(&m_process, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this,
            &SliceToImage::processFinished, Qt::UniqueConnection);
    connect(&m_process, &QProcess::readyRead, this, &SliceToImage::processReadyRead, Qt::UniqueConnection);
    connect(&m_process, &QProcess::stateChanged, this,
            [this](QProcess::ProcessState state) { m_toolRunning = state == QProcess::Running; });
    m_process.start(slicerProgram, {QStringLiteral("-X"), modelPath(name), QStringLiteral("-O"), folder},
                    QIODevice::ReadWrite);
    return m_process.waitForStarted(startLimitMs);
}

void SliceToImage::resetCounters()
{
    m_progress = 0;
    m_hasSliceLayer = -1;
    m_SumSliceLayer = unknownTotal;
    m_misLayer = -10000;
}

/// Layers of an earlier print; entries without a digit in their name stay.
void SliceToImage::clearSliceFolder(const QString &folder) const
{
    const QRegExp digit(QStringLiteral("[0-9]"));
    for (const QFileInfo &entry : QDir(folder).entryInfoList(QDir::Files)) {
        if (!entry.fileName().contains(digit))
            continue;
        QFile::remove(entry.filePath());
        LOG_WARNING(entry.filePath());
    }
}

bool SliceToImage::isRunning() const
{
    return m_process.state() == QProcess::Running;
}

void SliceToImage::closeProcess()
{
    if (m_process.state() != QProcess::NotRunning) {
        LOG_WARNING(QStringLiteral("QProcess runing!="));
        m_process.close();
        m_process.waitForFinished(endLimitMs);
        killImage(slicerImage);
    }
    m_toolRunning = false;
    m_progress = 0;
    m_hasSliceLayer = -1;
    m_SumSliceLayer = -1;
}

void SliceToImage::processReadyRead()
{
    const QByteArray output = m_process.readAll();
    if (output.isEmpty()) {
        LOG_WARNING(QString::fromUtf8(output));
        return;
    }
    QList<QByteArray> lines = (m_pendingLine + output).split('\n');
    m_pendingLine = lines.takeLast(); // its end comes with the next output
    if (m_pendingLine.size() > longestLine)
        m_pendingLine.clear();
    bool slice = false; // lines behind the first slice line of an output do not matter
    for (const QByteArray &line : lines) {
        if (!slice)
            parseLine(line, &slice);
    }
}

/// "progress: 0.35" and "slice: 12/480"; a number that cannot be read leaves the earlier value.
void SliceToImage::parseLine(const QByteArray &line, bool *slice)
{
    const int progressAt = line.indexOf("progress:");
    if (progressAt >= 0) {
        float progress = m_progress;
        std::sscanf(line.constData() + progressAt, "%*s%f", &progress);
        m_progress = progress;
    }
    const int sliceAt = line.indexOf("slice:");
    if (sliceAt < 0)
        return;
    *slice = true;
    int layer = m_hasSliceLayer;
    int total = m_SumSliceLayer;
    std::sscanf(line.constData() + sliceAt, "%*s%d/%d", &layer, &total);
    m_hasSliceLayer = layer;
    m_SumSliceLayer = total;
}

void SliceToImage::processFinished(int exitCode, QProcess::ExitStatus exitStatus)
{
    const bool whole = m_SumSliceLayer >= 0 && m_SumSliceLayer == m_hasSliceLayer;
    LOG_WARNING(
        QStringLiteral("slice %1 exitCode=%2,exitStatus=%3 m_hasSliceLayer=%4, m_SumSliceLayer=%5")
            .arg(whole ? QStringLiteral("success") : QStringLiteral("error"))
            .arg(exitCode)
            .arg(exitStatus)
            .arg(m_hasSliceLayer)
            .arg(m_SumSliceLayer));
}

int SliceToImage::hasSliceLayer(int layer)
{
    // After the slicer's end the print goes on as far as its files last.
    if (!m_toolRunning && layer > m_hasSliceLayer && QFileInfo::exists(layerFile('s', layer))) {
        LOG_WARNING(QStringLiteral("get slice layer by qfileinfo"));
        return layer;
    }
    return m_hasSliceLayer;
}

QString SliceToImage::usedMemoryText()
{
    static const QRegularExpression kilobytes(QStringLiteral("(\\d+)(\\s)(K)"));
    constexpr double step = 0.0009765625; // 1 / 1024
    QString text = imageMemoryText(slicerImage);
    text.remove(QLatin1Char(','));
    const QRegularExpressionMatch match = kilobytes.match(text);
    if (match.hasMatch())
        text = QString::number(match.captured(1).toDouble() * step * step, 'f', 2) + QLatin1Char('G');
    return QStringLiteral("UsedMem:") + text;
}
