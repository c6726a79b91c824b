// Runs the fuzz target over every file of the folder given.

#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

int main(int, char **argv)
{
    int count = 0;
    for (QDirIterator files(QFileInfo(QString::fromLocal8Bit(argv[1])).absoluteFilePath(), QDir::Files);
         files.hasNext(); ++count) {
        QFile file(files.next());
        if (!file.open(QIODevice::ReadOnly))
            return 1;
        const QByteArray bytes = file.readAll();
        LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t *>(bytes.constData()), size_t(bytes.size()));
    }
    return count > 0 ? 0 : 1;
}
