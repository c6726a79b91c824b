#include "links/FirmwareUpdate.h"

#include "events/OperatorMessage.h"
#include "links/Usb2Can.h"
#include "platform/Clock.h"
#include "platform/Log.h"

#include <QCoreApplication>
#include <QFile>

#include <cstring>

namespace
{

constexpr int firstBoard = 8;
constexpr int lastBoard = 2;
constexpr int blockSize = 6;
constexpr unsigned loaderStartMs = 2000; // a board from its program into its loader

// A message to a board's loader: data[0] and how it is sent. All other bytes are 0xFF.
struct Step {
    quint8 code;
    quint32 timeoutMs;
    int tries;
};
constexpr Step enterUpdateMode{2, 4000, 2};
constexpr Step secondModeStep{3, 2000, 2};
constexpr Step dataBlock{4, 2000, 1};
constexpr Step finish{5, 2000, 1};

QString text(const char *source)
{
    return QCoreApplication::translate("FirmwareUpdate", source);
}

CanMsg loaderMessage(int board, const Step &step)
{
    CanMsg message = canMessage(quint32(board), step.code);
    std::memset(message.data + 1, 0xFF, sizeof message.data - 1);
    return message;
}

int send(const CanMsg &request, const Step &step, CanMsg *reply)
{
    *reply = CanMsg();
    return usb2Can()->SendMsg(&request, reply, step.timeoutMs, 0, sizeof request.data, 0, 0);
}

/// The update of one board whose image is open.
class BoardUpdate
{
public:
    BoardUpdate(int board, QFile *image, const UpdateMessage &show)
        : m_board(board), m_image(image), m_show(show)
    {
    }

    void run();

private:
    bool takeStep(const Step &step, const QString &failure);
    bool sendImage();
    bool sendBlock(const QByteArray &bytes);

    const int m_board;
    QFile *const m_image;
    const UpdateMessage &m_show;
};

void BoardUpdate::run()
{
    m_show(text(QT_TRANSLATE_NOOP("FirmwareUpdate", "准备升级，请稍后")), MessageIcon::information,
           MessageButtons::none);
    const QString modeError = text(QT_TRANSLATE_NOOP("FirmwareUpdate", "模式切换错误，升级失败(%1!=%2)"));
    if (!takeStep(enterUpdateMode, modeError))
        return;
    Sleep(loaderStartMs);
    if (!takeStep(secondModeStep, text(QT_TRANSLATE_NOOP("FirmwareUpdate",
                                                         "升级模式切换错误，升级失败,请断电重启(%1 != %2)"))))
        return;
    if (!sendImage()) { // the image stays, so that the next start tries again
        m_show(text(QT_TRANSLATE_NOOP("FirmwareUpdate", "数据发送错误，升级失败重启后将重新升级")),
               MessageIcon::critical, MessageButtons::close);
        return;
    }
    m_image->close();
    if (!m_image->remove())
        LOG_WARNING(QStringLiteral("remove file error: %1").arg(m_image->errorString()));
    takeStep(finish, modeError);
}

bool BoardUpdate::takeStep(const Step &step, const QString &failure)
{
    const CanMsg request = loaderMessage(m_board, step);
    CanMsg reply;
    for (int i = 0; i < step.tries; ++i) {
        if (send(request, step, &reply) == SendOk && reply.data[0] == request.data[0])
            return true;
    }
    m_show(failure.arg(request.data[0]).arg(reply.data[0]), MessageIcon::critical, MessageButtons::close);
    return false;
}

bool BoardUpdate::sendImage()
{
    const qint64 total = m_image->size();
    const QString title = text(QT_TRANSLATE_NOOP("FirmwareUpdate", "%1#电路板升级中")).arg(m_board);
    for (qint64 sent = 0; sent < total;) {
        const QByteArray bytes = m_image->read(blockSize);
        if (bytes.isEmpty() || !sendBlock(bytes)) // nothing read before the end: the disk failed
            return false;
        sent += bytes.size();
        m_show(title + QStringLiteral(" %1/%2").arg(sent).arg(total), MessageIcon::warning,
               MessageButtons::none);
    }
    return true;
}

bool BoardUpdate::sendBlock(const QByteArray &bytes)
{
    CanMsg request = loaderMessage(m_board, dataBlock);
    std::memcpy(request.data + 1, bytes.constData(), size_t(bytes.size()));
    CanMsg reply;
    return send(request, dataBlock, &reply) == SendOk || reply.data[0] == request.data[0];
}

} // namespace

bool updateStm32(const UpdateMessage &show)
{
    bool found = false;
    for (int board = firstBoard; board >= lastBoard; --board) {
        QFile image(QStringLiteral("firmware/%1.bin").arg(board));
        if (!image.open(QIODevice::ReadOnly)) {
            LOG_WARNING(QStringLiteral("open file error: %1").arg(image.errorString()));
            continue;
        }
        found = true;
        BoardUpdate(board, &image, show).run();
    }
    if (found)
        show(text(QT_TRANSLATE_NOOP("FirmwareUpdate", "所有电路升级完成,请断电重启")),
             MessageIcon::information, MessageButtons::close);
    return found;
}
