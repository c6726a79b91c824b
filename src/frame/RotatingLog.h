#pragma once
// Size-limited text file with generations, in the program's log folder.

#include "platform/Mutex.h"

#include <QFile>
#include <QString>
#include <QTextStream>

/// "../.PeloraTemp/log/" + name.
QString logPath(const QString &name);

constexpr int logMaxSize = 0x1000000; ///< bytes at which each log rotates
constexpr int logGenerations = 4;

class RotatingLog
{
public:
    /// Opens nothing; the first line does.
    explicit RotatingLog(const char *name, int maxSize = logMaxSize, int count = logGenerations);
    /// Appends time, comma, `text`, CR LF, and flushes. The line that finds the file full rotates it and is
    /// itself not written. Failures are silent. Any thread.
    void writeLine(QString text);

private:
    void rotate() PELORA_REQUIRES(m_mutex);

    const QString m_fileName;
    const int m_maxSize;
    const int m_count;
    Mutex m_mutex; // every thread logs
    QFile m_file PELORA_GUARDED_BY(m_mutex);
    QTextStream m_stream PELORA_GUARDED_BY(m_mutex);
};

/// Where the program's logs go: pelora.log, temp.csv, air.csv, ydata.csv. Any thread.
RotatingLog &peloraLog();
RotatingLog &tempLog();
RotatingLog &airLog();
RotatingLog &ydataLog();

/// Qt's message handler: debug to standard output, everything else to pelora.log.
void logMessageHandler(QtMsgType type, const QMessageLogContext &context, const QString &message);
