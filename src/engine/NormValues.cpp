#include "engine/NormValues.h"

#include "engine/HibLibrary.h"
#include "platform/Log.h"

#include <QFile>
#include <QString>
#include <algorithm>
#include <limits>
#include <vector>

namespace
{
constexpr int failed = -1;
constexpr int supportColor = 1;
constexpr int structureColor = 2;
constexpr int headOfBoard = 1; ///< a board has one head
/// No head has more; a larger count is a fault of the library and must not size a buffer.
constexpr int maxNozzles = 65536;
/// A line of a file: sign, three digits, line end, and what an editor may add.
constexpr int lineLimit = 16;
constexpr int smallest = std::numeric_limits<qint8>::min();
constexpr int largest = std::numeric_limits<qint8>::max();

using NormValues = std::vector<qint8>;

/// One colour of a head, and the text of what went wrong with it.
struct HeadColor {
    int board;
    int color;
    HibHeadMisc misc{};
    QString error;

    const char *waveform() const { return color == supportColor ? "wave1" : "wave2"; }
    QString fileName(const char *kind) const;
};

/// The head's own number makes the name, so a head that is exchanged keeps its file; only what no file system
/// minds.
QString HeadColor::fileName(const char *kind) const
{
    QString serial =
        QString::fromLatin1(misc.serialNumber, int(qstrnlen(misc.serialNumber, sizeof misc.serialNumber)));
    for (QChar &letter : serial) {
        if (letter.unicode() >= 128 || !letter.isLetterOrNumber())
            letter = QLatin1Char('_');
    }
    if (serial.isEmpty())
        serial = QStringLiteral("head%1").arg(board);
    return QStringLiteral("%1_%2_%3.norm").arg(serial, QLatin1String(waveform()), QLatin1String(kind));
}

int describe(HeadColor &head)
{
    const int result = lockHibGetHeadMisc(head.board, headOfBoard, &head.misc);
    const int nozzles = head.misc.nozzlesPerColor;
    if (result != 0 || nozzles < 1 || nozzles > maxNozzles) {
        head.error = QStringLiteral("hibGetHeadMisc() failed, aborting...");
        return result != 0 ? result : failed;
    }
    if (head.color < 1 || head.color > head.misc.colorCount) {
        head.error = QStringLiteral(
            "testMethodforAlteringNormValues() failed, invalid color encountered, aborting...");
        return failed;
    }
    return lockHibShowHeadHcd(head.board, headOfBoard, head.waveform()), 0;
}

int readHead(HeadColor &head, NormValues *values)
{
    values->resize(size_t(head.misc.nozzlesPerColor));
    const int result = lockHibGetNormVals(head.board, head.color, values->data(), int(values->size()));
    if (result != 0)
        head.error = QStringLiteral("hibGetNormVals() failed, aborting...");
    return result;
}

int writeValues(HeadColor &head, const NormValues &values, const QString &name)
{
    QByteArray text;
    for (const qint8 value : values)
        text += QByteArray::number(int(value)) + '\n';
    QFile file(name);
    if (file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.flush())
        return 0;
    head.error = QStringLiteral("Error creating file: %1 ,%2").arg(name, file.errorString());
    return failed;
}

/// As many values as the head has nozzles, each on a line.
int readValues(HeadColor &head, NormValues *values, const QString &name)
{
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly)) {
        head.error = QStringLiteral("Error opening file: %1 ,%2").arg(name, file.errorString());
        return failed;
    }
    for (qint8 &value : *values) {
        bool isNumber = false;
        const int number = file.readLine(lineLimit).trimmed().toInt(&isNumber);
        if (!isNumber || number < smallest || number > largest) {
            head.error = QStringLiteral("%1 does not hold %2 norm values").arg(name).arg(values->size());
            return failed;
        }
        value = qint8(number);
    }
    return 0;
}

int edit(HeadColor &head, NormValues values, int offset)
{
    for (qint8 &value : values)
        value = qint8(std::clamp<qint64>(qint64(value) + offset, smallest, largest));
    return writeValues(head, values, head.fileName("edited"));
}

int load(HeadColor &head, NormValues values, const char *kind)
{
    if (const int result = readValues(head, &values, head.fileName(kind)))
        return result;
    const int result = lockHibLoadNormVals(head.board, head.color, values.data(), int(values.size()));
    if (result != 0)
        head.error = QStringLiteral("hibLoadNormVals() failed");
    lockHibShowHeadHcd(head.board, headOfBoard, head.waveform());
    return result;
}

int work(HeadColor &head, NormOperation operation, int offset)
{
    if (const int result = describe(head))
        return result;
    NormValues values;
    if (const int result = readHead(head, &values))
        return result;
    // What was found at first is what a head can always go back to, so it is never overwritten.
    const QString original = head.fileName("original");
    if (!QFile::exists(original)) {
        if (const int result = writeValues(head, values, original))
            return result;
    }
    switch (operation) {
    case NormOperation::Edit:
        return edit(head, values, offset);
    case NormOperation::LoadOriginal:
        return load(head, values, "original");
    case NormOperation::LoadEdited:
        return load(head, values, "edited");
    default:
        head.error = QStringLiteral("default norm click");
        return failed;
    }
}
} // namespace

int testMethodforAlteringNormValues(int board, int color, NormOperation operation, int offset)
{
    static Mutex mutex; // service page and remote link work on the same files
    MutexLock lock(mutex);
    HeadColor head{board, color, {}, {}};
    const int result = work(head, operation, offset);
    if (!head.error.isEmpty())
        LOG_WARNING(head.error);
    return result;
}

int alterNormValues(int board, int supportOffset, int structureOffset, bool factory)
{
    const int offsets[][2] = {{supportColor, supportOffset}, {structureColor, structureOffset}};
    for (const auto &[color, offset] : offsets) {
        int result = 0;
        if (factory) {
            result = testMethodforAlteringNormValues(board, color, NormOperation::LoadOriginal);
        } else {
            result = testMethodforAlteringNormValues(board, color, NormOperation::Edit, offset);
            if (result == 0)
                result = testMethodforAlteringNormValues(board, color, NormOperation::LoadEdited);
        }
        if (result != 0)
            return result;
    }
    return 0;
}
