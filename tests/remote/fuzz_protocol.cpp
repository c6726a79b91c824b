// Fuzz target of framing and dispatch: whatever a client sends, in whatever segments. Without a fuzzer's own
// main() the target is run over the files given (replay.cpp).
//
// Input: parts of a u16 length, little-endian, and as many bytes, each a segment; the last may be short.

#include "remote/NetWorkProtocol.h"
#include "remote/RemoteCall.h"
#include "support/TestInstall.h"

#include <QDir>
#include <QtEndian>

namespace
{
/// Uses every kind of reply; the families' own work is beyond framing and dispatch.
const QVector<RemoteCommand> commands = {
    {"Echo", [](const RemoteCall &call) { call.reply(call.request(), ReplyHead::Echo); }},
    {"Key", [](const RemoteCall &call) { call.replyWith("Key", call["Key"].toInt(), ReplyHead::Own); }},
    {"Text", [](const RemoteCall &call) { call.replyText(call.text(), ReplyHead::Own); }},
};

struct Target : NetWorkProtocol {
    Target() : NetWorkProtocol(commands) {}
    void take(const QByteArray &bytes) { takeBytes(m_client, bytes); }
};

/// Models that pile up would slow the runs down.
void prepare()
{
    constexpr int runsPerFolder = 20000;
    static TestInstall install;
    static int runs = 0;
    if (runs++ % runsPerFolder)
        return;
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    QDir("model").removeRecursively();
    QDir().mkpath("model/sub");
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    prepare();
    Target target;
    for (size_t at = 0; at + 2 <= size;) {
        const size_t length = std::min<size_t>(qFromLittleEndian<quint16>(data + at), size - at - 2);
        target.take(QByteArray(reinterpret_cast<const char *>(data) + at + 2, int(length)));
        at += 2 + length;
    }
    return 0;
}
