#include "frame/RotatingLog.h"

#include <QDateTime>

#include <cstdio>

namespace
{
QString generationPath(const QString &name, int generation)
{
    return logPath(QStringLiteral("%1%2").arg(name).arg(generation));
}
} // namespace

QString logPath(const QString &name)
{
    return QStringLiteral("../.PeloraTemp/log/") + name;
}

RotatingLog::RotatingLog(const char *name, int maxSize, int count)
    : m_fileName(QString::fromUtf8(name)), m_maxSize(maxSize), m_count(count)
{
}

void RotatingLog::writeLine(QString text)
{
    MutexLock lock(m_mutex);
    if (!m_file.isOpen()) {
        m_file.setFileName(logPath(m_fileName));
        if (!m_file.open(QIODevice::WriteOnly | QIODevice::Append))
            return;
        m_stream.setDevice(&m_file);
    }
    if (m_file.size() >= m_maxSize) {
        rotate();
        return;
    }
    m_stream << QDateTime::currentDateTime().toString(QStringLiteral("yy.MM.dd hh:mm:ss.z")) +
                    QLatin1Char(',')
             << text << QStringLiteral("\r\n");
    m_stream.flush();
}

void RotatingLog::rotate()
{
    m_stream.setDevice(nullptr);
    m_file.close();
    for (int generation = m_count; generation >= 2; --generation) {
        QFile::remove(generationPath(m_fileName, generation));
        QFile::rename(generationPath(m_fileName, generation - 1), generationPath(m_fileName, generation));
    }
    QFile::remove(generationPath(m_fileName, 1));
    QFile::rename(logPath(m_fileName), generationPath(m_fileName, 1));
    QFile::remove(logPath(m_fileName)); // in case the rename failed
}

// Never destroyed: threads log until the process is gone.

RotatingLog &peloraLog()
{
    static auto *log = new RotatingLog("pelora.log");
    return *log;
}

RotatingLog &tempLog()
{
    static auto *log = new RotatingLog("temp.csv");
    return *log;
}

RotatingLog &airLog()
{
    static auto *log = new RotatingLog("air.csv");
    return *log;
}

RotatingLog &ydataLog()
{
    static auto *log = new RotatingLog("ydata.csv");
    return *log;
}

void logMessageHandler(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    if (type != QtDebugMsg) {
        peloraLog().writeLine(message);
        return;
    }
    std::printf("%s\r\n", message.toUtf8().constData());
    std::fflush(stdout); // each line at once, also into a pipe
}
