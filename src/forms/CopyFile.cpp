#include "forms/CopyFile.h"

#include "events/OperatorMessage.h"
#include "forms/IMsgForm.h"
#include "platform/Log.h"
#include "platform/WriteThroughFile.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QFile>

namespace
{
constexpr int blockSize = 0x2000;
const QString hashSuffix = QStringLiteral(".md5");

bool open(QFile &file, QIODevice::OpenMode mode)
{
    if (file.open(mode))
        return true;
    LOG_WARNING(QStringLiteral("open file error: %1 <<%2>>").arg(file.errorString(), file.fileName()));
    return false;
}

/// One block; false when the copy must end.
bool copyBlock(QFile &from, QFile &to, QCryptographicHash &hash, qint64 *count)
{
    const QByteArray block = from.read(blockSize);
    if (block.isEmpty()) {
        LOG_WARNING(QStringLiteral(" fread file error:%1").arg(from.errorString()));
        return false;
    }
    hash.addData(block);
    const qint64 written = to.write(block);
    if (written < block.size()) {
        LOG_WARNING(QStringLiteral("fwrite error: fread=%1,fwrite=%2,error=%3")
                        .arg(block.size())
                        .arg(written)
                        .arg(to.errorString()));
        return false;
    }
    *count += written;
    return true;
}

void removeCopy(const QString &path)
{
    for (const QString &name : {path, path + hashSuffix}) {
        QFile file(name);
        if (!file.remove())
            LOG_WARNING(QStringLiteral("remove file Err:%1").arg(file.errorString()));
    }
}

void writeHash(const QString &path, const QByteArray &hex)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(hex) != hex.size() || !flushToDisk(file))
        LOG_WARNING(QStringLiteral("wirte md5f error:%1").arg(file.errorString()));
}
} // namespace

bool copyFile(IMsgForm *form, const QString &src, const QString &dst, bool keepAsIs)
{
    QFile from(src);
    QFile to(dst);
    // Unbuffered: what a full disk refuses is known at the block that it refuses.
    if (!open(from, QIODevice::ReadOnly) || !open(to, QIODevice::WriteOnly | QIODevice::Unbuffered))
        return false;
    const QString title = QCoreApplication::translate("FileForm", "文件拷贝中");
    const QString text = QCoreApplication::translate("FileForm", "从 %1 到 %2").arg(src, dst);
    const qint64 size = from.size();
    const bool shown = form->showProgress(title, text, 0, float(size));
    QCoreApplication::processEvents();
    QCryptographicHash hash(QCryptographicHash::Md5);
    qint64 count = 0;
    while (!from.atEnd() && copyBlock(from, to, hash, &count)) {
        if (shown)
            form->showProgress(title, text, float(count), float(size));
    }
    from.close();
    if (!flushToDisk(to)) // the operator pulls the disk, or an update restarts the computer
        LOG_WARNING(QStringLiteral("flush file error: %1").arg(dst));
    to.close();
    if (shown) // what came up after the operator closed it stays
        form->showMessageForm(QString(), MessageIcon::information, MessageButtons::dismiss, QString());
    if (keepAsIs)
        return true;
    if (count != size) {
        removeCopy(dst);
        return false;
    }
    writeHash(dst + hashSuffix, hash.result().toHex());
    return true;
}
