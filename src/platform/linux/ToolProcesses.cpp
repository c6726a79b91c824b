#include "platform/ToolProcesses.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QStandardPaths>
#include <QVector>

#include <csignal>
#include <unistd.h>

namespace
{
constexpr qint64 maxCommandLine = 1 << 20;
constexpr int maxFirstLine = 256; // the kernel reads no more of a script's first line either

QByteArray readHead(const QString &path, qint64 limit)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.read(limit) : QByteArray();
}

QString linkTarget(const QString &path)
{
    QString target = QFile::symLinkTarget(path);
    const QLatin1String gone(" (deleted)"); // what the kernel appends when the file was replaced
    if (target.endsWith(gone))
        target.chop(gone.size());
    return target;
}

/// The interpreter that a script's first line names, as the file that really runs; empty for no script.
QString interpreterOf(const QString &script)
{
    const QByteArray line = readHead(script, maxFirstLine).split('\n').first();
    if (!line.startsWith("#!"))
        return QString();
    const QStringList words = QString::fromLocal8Bit(line.mid(2)).simplified().split(QLatin1Char(' '));
    const bool throughEnv = QFileInfo(words.first()).fileName() == QLatin1String("env") && words.size() > 1;
    const QString program = throughEnv ? QStandardPaths::findExecutable(words.at(1)) : words.first();
    return QFileInfo(program).canonicalFilePath();
}

/// The file name by which a process counts: that of the script which it runs, else of its executable. A
/// program that merely has a script's name among its arguments (an editor, a viewer) is not taken for the
/// script.
QString imageOf(const QString &proc)
{
    const QString executable = linkTarget(proc + QLatin1String("/exe"));
    const QList<QByteArray> arguments =
        readHead(proc + QLatin1String("/cmdline"), maxCommandLine).split('\0');
    for (int i = 1; i < arguments.size() && i <= 2; ++i) {
        const QString script = QFile::decodeName(arguments.at(i));
        if (script.isEmpty() || script.startsWith(QLatin1Char('-')))
            continue; // an option that the first line gives to its interpreter
        if (QFileInfo(script).isFile() && interpreterOf(script) == executable)
            return QFileInfo(script).fileName();
        break;
    }
    return QFileInfo(executable).fileName();
}

/// This installation's processes of that image. Their working directory is ours, so relative names fit as
/// well.
QVector<pid_t> processesOf(const QString &image)
{
    QVector<pid_t> found;
    const QString installation = QDir::current().canonicalPath();
    for (const QString &entry : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        bool isProcess = false;
        const pid_t pid = entry.toInt(&isProcess);
        if (!isProcess || pid == getpid())
            continue;
        const QString proc = QLatin1String("/proc/") + entry;
        if (QFile::symLinkTarget(proc + QLatin1String("/cwd")) == installation && imageOf(proc) == image)
            found.append(pid);
    }
    return found;
}

qint64 residentKilobytes(pid_t pid)
{
    const QList<QByteArray> pages =
        readHead(QStringLiteral("/proc/%1/statm").arg(pid), maxFirstLine).split(' ');
    return pages.size() > 1 ? pages.at(1).toLongLong() * sysconf(_SC_PAGESIZE) / 1024 : 0;
}
} // namespace

int killImage(const QString &image)
{
    int count = 0;
    for (const pid_t pid : processesOf(image)) {
        if (::kill(pid, SIGKILL) == 0)
            ++count;
    }
    return count;
}

QString imageMemoryText(const QString &image)
{
    QStringList lines;
    const QLocale grouped(QLocale::English, QLocale::UnitedStates);
    for (const pid_t pid : processesOf(image)) {
        lines.append(QStringLiteral("%1 %2 Console 1 %3 K")
                         .arg(image)
                         .arg(pid)
                         .arg(grouped.toString(residentKilobytes(pid))));
    }
    return lines.join(QLatin1String("\r\n"));
}
