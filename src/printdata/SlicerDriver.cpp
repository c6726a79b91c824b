// The external slicer: started, followed by its output, ended.

#include "frame/Folders.h"
#include "platform/Log.h"
#include "platform/ToolProcesses.h"
#include "printdata/SliceToImage.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSettings>
#include <cctype>
#include <charconv>
#include <cmath>

namespace
{
constexpr int startLimitMs = 5000;
constexpr int endLimitMs = 30000;
constexpr int unknownTotal = 9999; // until the slicer says how many layers there are
constexpr int longestLine = 4096;  // of the slicer's output; what is longer is rubbish

QString slicerImage()
{
    return QStringLiteral("lamorel.exe");
}

/// Layers of an earlier print; entries without a digit in their name stay.
void clearSliceFolder(const QString &folder)
{
    static const QRegularExpression digit(QStringLiteral("[0-9]"));
    for (const QFileInfo &entry : QDir(folder).entryInfoList(QDir::Files | QDir::Hidden | QDir::System)) {
        if (!entry.fileName().contains(digit))
            continue;
        QFile::remove(entry.filePath());
        LOG_WARNING(entry.filePath());
    }
}

/// What follows a line's first word, read as numbers with a point whatever the language of the computer.
class LineNumbers
{
public:
    explicit LineNumbers(const QByteArray &line) : m_at(line.constData()), m_end(m_at + line.size())
    {
        skip([](unsigned char c) { return std::isspace(c) != 0; });
        skip([](unsigned char c) { return std::isspace(c) == 0; });
    }
    /// Leaves `value` as it is when no number stands next.
    template <class T> bool next(std::atomic<T> *value)
    {
        skip([](unsigned char c) { return std::isspace(c) != 0; });
        T number{};
        const auto result = std::from_chars(m_at, m_end, number);
        if (result.ec != std::errc() || !std::isfinite(static_cast<double>(number)))
            return false;
        m_at = result.ptr;
        *value = number;
        return true;
    }
    bool take(char expected) { return m_at != m_end && *m_at == expected && ++m_at; }

private:
    template <class Kind> void skip(Kind kind)
    {
        while (m_at != m_end && kind(static_cast<unsigned char>(*m_at)))
            ++m_at;
    }

    const char *m_at;
    const char *m_end;
};
} // namespace

bool SliceToImage::waitForStarted()
{
    resetRun();
    const QString name = fileName();
    if (name.isEmpty()) {
        LOG_WARNING(QStringLiteral("m_fileNmae is null"));
        return false;
    }
    const QString folder = sliceFolder(QFileInfo(name).fileName());
    const QSettings toolSettings(QStringLiteral("%1/%2.ini").arg(folder, QFileInfo(name).fileName()),
                                 QSettings::IniFormat);
    killImage(slicerImage()); // also one that an earlier run of this program has left
    QDir().mkpath(folder);
    clearSliceFolder(folder);
    LOG_WARNING(QStringLiteral("Lamorel/lamorel.exe -X \"model/%1\" -O  \"%2\"").arg(name, folder));

    m_process.disconnect(this);
    connect(&m_process, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this,
            &SliceToImage::processFinished, Qt::UniqueConnection);
    connect(&m_process, &QProcess::readyRead, this, &SliceToImage::processReadyRead, Qt::UniqueConnection);
    connect(&m_process, &QProcess::stateChanged, this, &SliceToImage::processStateChanged,
            Qt::UniqueConnection);
    if (m_process.state() != QProcess::NotRunning)
        return false; // the earlier one cannot be ended
    // As a list, since a double quote in a name would end the argument of a command line.
    m_process.start(QStringLiteral("Lamorel/lamorel.exe"),
                    {QStringLiteral("-X"), modelPath(name), QStringLiteral("-O"), folder},
                    QIODevice::ReadWrite);
    const bool started = m_process.waitForStarted(startLimitMs);
    if (!started)
        LOG_WARNING(m_process.errorString());
    return started;
}

/// Ends the earlier run and forgets all it said.
void SliceToImage::resetRun()
{
    closeProcess();
    m_pendingLine.clear();
    m_SumSliceLayer = unknownTotal;
    resetHeadMass();
    MutexLock lock(m_pictureMutex);
    m_misLayer = noLayerMissed;
}

bool SliceToImage::isRunning() const
{
    return m_process.state() == QProcess::Running;
}

void SliceToImage::closeProcess()
{
    if (m_process.state() != QProcess::NotRunning) {
        LOG_WARNING(QStringLiteral("QProcess runing!="));
        m_process.kill();
        // QProcess::close would wait without a limit for a process that cannot end.
        if (m_process.waitForFinished(endLimitMs))
            m_process.close();
        killImage(slicerImage());
    }
    m_progress = 0;
    m_hasSliceLayer = -1;
    m_SumSliceLayer = -1;
}

void SliceToImage::processStateChanged(QProcess::ProcessState state)
{
    m_toolRunning = state == QProcess::Running;
}

void SliceToImage::processReadyRead()
{
    const QByteArray output = m_process.readAll();
    if (output.isEmpty()) {
        LOG_WARNING(QString());
        return;
    }
    QList<QByteArray> lines = (m_pendingLine + output).split('\n');
    m_pendingLine = lines.takeLast(); // cut at the end of this output: a number in it may lack digits
    if (m_pendingLine.size() > longestLine)
        m_pendingLine.clear();
    for (const QByteArray &line : qAsConst(lines)) {
        readLine(line);
        if (line.contains("slice:"))
            break; // the rest of this output no longer matters
    }
}

/// "progress: 0.35" or "slice: 12/480"; everything else is ignored.
void SliceToImage::readLine(const QByteArray &line)
{
    if (line.contains("progress:"))
        LineNumbers(line).next(&m_progress);
    if (line.contains("slice:")) {
        LineNumbers numbers(line);
        if (numbers.next(&m_hasSliceLayer) && numbers.take('/'))
            numbers.next(&m_SumSliceLayer);
    }
}

void SliceToImage::processFinished(int exitCode, QProcess::ExitStatus exitStatus)
{
    readLine(m_pendingLine); // a last line without an end
    m_pendingLine.clear();
    const int ready = m_hasSliceLayer;
    const int total = m_SumSliceLayer;
    LOG_WARNING(QStringLiteral("slice %1 exitCode=%2,exitStatus=%3 m_hasSliceLayer=%4, m_SumSliceLayer=%5")
                    .arg(QLatin1String(total >= 0 && total == ready ? "success" : "error"))
                    .arg(exitCode)
                    .arg(exitStatus)
                    .arg(ready)
                    .arg(total));
}

int SliceToImage::hasSliceLayer(int layer)
{
    // After the slicer's end the print goes on as far as its files last.
    if (!m_toolRunning && layer > m_hasSliceLayer &&
        QFileInfo::exists(
            QStringLiteral("%1/slice_s%2").arg(sliceFolder(fileName()), QString::number(layer)))) {
        LOG_WARNING(QStringLiteral("get slice layer by qfileinfo"));
        return layer;
    }
    return m_hasSliceLayer;
}

QString SliceToImage::usedMemoryText()
{
    static const QRegularExpression kilobytes(QStringLiteral("(\\d+)(\\s)(K)"));
    constexpr double step = 0.0009765625; // 1 / 1024
    QString text = imageMemoryText(slicerImage());
    text.remove(QLatin1Char(','));
    const QRegularExpressionMatch match = kilobytes.match(text);
    if (match.hasMatch())
        text = QString::number(match.captured(1).toDouble() * step * step, 'f', 2) + QLatin1Char('G');
    return QStringLiteral("UsedMem:") + text;
}
