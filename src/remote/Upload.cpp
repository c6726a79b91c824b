#include "remote/Upload.h"

#include "platform/Log.h"
#include "printdata/PrintQueue.h"
#include "printdata/QueueNotice.h"

#include <QDir>
#include <QFileInfo>

namespace
{
const QString modelFolder = QStringLiteral("model/");

// Whether writing to the file would stay below the models' folder, links followed, and hit no pipe or
// device.
bool liesBelowModels(const QString &name)
{
    const QString models = QFileInfo(modelFolder).canonicalFilePath();
    const QFileInfo file(modelFolder + name);
    const QString folder = QFileInfo(file.path()).canonicalFilePath();
    const auto isBelow = [&](const QString &path) {
        return path == models || path.startsWith(models + QLatin1Char('/'));
    };
    if (models.isEmpty() || QDir::isAbsolutePath(name) || !isBelow(folder))
        return false;
    return file.isSymLink() || file.exists() ? file.isFile() && isBelow(file.canonicalFilePath()) : true;
}
} // namespace

bool Upload::open(const QString &name, quint64 size)
{
    m_file.close();
    m_fileName = name;
    m_fileSize = size;
    bool opened = liesBelowModels(name);
    if (opened) {
        m_file.setFileName(modelFolder + name);
        opened = m_file.open(QIODevice::WriteOnly | QIODevice::Truncate);
    }
    qDebug() << (opened ? "open file success" : "open file fail");
    return opened;
}

void Upload::write(const char *bytes, qint64 size)
{
    if (m_file.isOpen())
        m_file.write(bytes, size);
}

bool Upload::finish()
{
    if (!m_file.isOpen())
        return false;
    const bool complete =
        quint64(m_file.size()) == m_fileSize; // what is not yet on the disk is written first
    m_file.close();
    if (!complete) {
        qDebug() << "File Is Not Aviable";
        m_file.remove();
        return false;
    }
    addToQueue(m_fileName);
    refreshQueue(true);
    return true;
}
