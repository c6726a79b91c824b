#pragma once
// A card station with its bottles on a pseudo terminal of its own, for tests without a machine: give path()
// to the program as COM5. Its chips' time runs by PELORA_TIME_SCALE, as the program's sleeps do.

#include "SerialLine.h"
#include "cards/CardStation.h"

#include <QStringList>
#include <QVector>

class CardLine
{
public:
    struct Piece {
        bool fromProgram = false;
        QByteArray bytes; ///< as received in one go, or one answer
    };

    CardLine();
    QString path() const { return m_line.path(); }

    // All from here on: any thread.
    /// `work(BottleRack &)` while no byte is being served; gives back what it gives back.
    template <typename Work> auto withRack(Work work)
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        return work(m_rack);
    }
    /// What has been said since the last call.
    QVector<Piece> takeTranscript();
    /// Hears and obeys, but does not answer.
    void setSilent(bool silent);
    /// "name: detail"
    QStringList violations() const;

private:
    void receive(const QByteArray &bytes);

    mutable std::mutex m_mutex; // the test against the line's thread: all below but the line
    BottleRack m_rack;
    CardStation m_station;
    QVector<Piece> m_transcript;
    QStringList m_violations;
    bool m_silent = false;
    SerialLine m_line; // last, so that its thread ends before what it uses
};
