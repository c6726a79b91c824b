#include "CardLine.h"

#include <algorithm>
#include <chrono>

namespace
{
std::function<double()> scaledSeconds()
{
    const double scale = std::max(1.0, qEnvironmentVariable("PELORA_TIME_SCALE").toDouble());
    return [scale] {
        const auto real = std::chrono::steady_clock::now().time_since_epoch();
        return std::chrono::duration<double>(real).count() * scale;
    };
}
} // namespace

CardLine::CardLine()
    : m_station(m_rack, {[this](const char *name, const QString &detail) {
                             m_violations.append(QString("%1: %2").arg(name, detail));
                         },
                         scaledSeconds()})
{
    m_line.start([this](const QByteArray &bytes) { receive(bytes); });
}

QVector<CardLine::Piece> CardLine::takeTranscript()
{
    std::lock_guard<std::mutex> lock(m_mutex);
    QVector<Piece> taken;
    taken.swap(m_transcript);
    return taken;
}

void CardLine::setSilent(bool silent)
{
    std::lock_guard<std::mutex> lock(m_mutex);
    m_silent = silent;
}

QStringList CardLine::violations() const
{
    std::lock_guard<std::mutex> lock(m_mutex);
    return m_violations;
}

void CardLine::receive(const QByteArray &bytes)
{
    QByteArray toSend;
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        m_transcript.append({true, bytes});
        for (const QByteArray &answer : m_station.receive(bytes)) {
            if (m_silent)
                continue;
            m_transcript.append({false, answer});
            toSend += answer;
        }
    }
    m_line.send(toSend);
}
