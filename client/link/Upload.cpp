#include "link/Upload.h"

#include "link/Failure.h"
#include "link/Frame.h"
#include "link/MachineLink.h"

#include <QElapsedTimer>
#include <QtEndian>

namespace
{
constexpr quint8 uploadCommand = 2;
constexpr quint16 written = 0;
constexpr quint16 wrongSum = 1;
} // namespace

void Upload::announce(const QString &name, quint64 size)
{
    const QByteArray bytes = frame::binary(uploadCommand, 0, frame::announcement(size, name));
    const QByteArray answer = m_link.exchange(bytes, frame::announceAnswerSize);
    if (answer.at(6) != char(uploadCommand) || answer.at(7) != 0)
        throw Failure{Exit::Refused, QStringLiteral("The machine answers an upload with something else.")};
    if (answer.at(9) != 0)
        throw Failure{
            Exit::Refused,
            QStringLiteral("The machine can't open a file named \"%1\". Choose another name with --name.")
                .arg(name)};
}

bool Upload::sendBlock(quint32 number, const QByteArray &payload)
{
    const QByteArray answer = m_link.exchange(frame::block(number, payload), frame::blockAnswerSize);
    const quint32 answered = qFromLittleEndian<quint32>(answer.constData() + 6);
    const quint16 status = qFromLittleEndian<quint16>(answer.constData() + 10);
    if (answered != number || (status != written && status != wrongSum))
        throw Failure{Exit::Refused,
                      QStringLiteral("The machine's answer to block %1 makes no sense (block %2, "
                                     "status %3).")
                          .arg(number)
                          .arg(answered)
                          .arg(status)};
    return status == written;
}

UploadResult Upload::send(QIODevice &source, const Progress &progress)
{
    UploadResult result;
    QElapsedTimer clock;
    clock.start();
    for (quint32 number = 0; !source.atEnd(); ++number) {
        const QByteArray payload = source.read(m_blockSize);
        if (payload.isEmpty())
            throw Failure{Exit::Usage, QStringLiteral("The file can't be read: ") + source.errorString()};
        int attempt = 1;
        while (!sendBlock(number, payload)) {
            if (attempt++ == m_attempts)
                throw Failure{Exit::Refused,
                              QStringLiteral("The machine refused block %1 %2 times: it arrives "
                                             "damaged. Look after the network and try again.")
                                  .arg(number)
                                  .arg(m_attempts)};
            ++result.resent;
        }
        result.bytes += payload.size();
        result.seconds = double(clock.nsecsElapsed()) / 1e9;
        progress(result.bytes, double(result.bytes) / qMax(result.seconds, 1e-6));
    }
    return result;
}

void Upload::finish()
{
    m_link.exchange(frame::binary(uploadCommand, 1), frame::finishAnswerSize);
}
