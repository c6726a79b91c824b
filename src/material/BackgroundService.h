#pragma once
// Keeps the machine usable for the life of the process: links, start state of the boards, supervision.

#include "engine/MachineServices.h"
#include "links/CardInfo.h"
#include "material/BusTest.h"
#include "material/InkLevels.h"
#include "platform/Mutex.h"

#include <QJsonObject>
#include <QThread>
#include <array>
#include <atomic>

/// What the pages and the record see of the bottles: a copy.
struct Bottles {
    std::array<CardInfo, 6> cards; ///< slots 2 and 3 support, 4 and 5 structure
    quint8 strUse = 5;
    quint8 supUse = 3;
};

class BackgroundService : public QThread, public MachineServices
{
    Q_OBJECT
public:
    /// Installs itself as the job's machine services.
    BackgroundService();
    // Any thread:
    float encoderResolution() const override;
    Bottles cards() const;
    /// Structure 4 or 5, support 2 or 3; anything else changes nothing.
    void setBottleInUse(quint8 strUse, quint8 supUse);
    bool checkHeadInkLevels() override;
    void getHeadInkLevels(QJsonObject &levels) const;
    bool isTempReady() const override;
    void setTemperatureMode(quint8 mode) override;
    QString structureBottleSerial() const override;
    QString supportBottleSerial() const override;
    /// True while the ink-box door is known to be closed.
    bool isInkDoorKnownClosed() const { return m_inkDoorClosed != 0; }

    // What the service's threads do, a pass at a time. None of them ends; each sleeps 500 ms between passes.
    /// Links and boards into their start state, before the first pass. Service thread.
    void startUp();
    /// Supervision. Service thread.
    void supervisionPass();
    /// Reads the levels of the heads. Each ink service's thread.
    void inkServicePass();
    /// Watches the ink-box door. Its own thread.
    void doorWatchPass();

signals:
    void MessageFormShowSig(QString title, QString prompt, int icon, int btn, QString key);

protected:
    void run() override;

private:
    void openLinks();
    void initEncoderResolution();
    void sendParameters();
    void setUpHeads();
    void testCan();
    void sendStartState();
    void startThread(const char *name, void (BackgroundService::*pass)());
    void refreshNozzleFull();
    void sampleAir();
    void showMessage(quint32 id, const QString &prompt, int icon, int btn);
    void showAlarm(quint32 id, const QString &prompt);

    mutable Mutex
        m_mutex; // the door watch and the ink services write the bottles that the pages and the job read
    std::array<CardInfo, 6> m_cards PELORA_GUARDED_BY(m_mutex);
    std::atomic<quint8> m_inkDoorClosed{0};
    std::atomic<quint8> m_strUse{5};
    std::atomic<quint8> m_supUse{3};
    std::atomic<float> m_fEncoderResolution{25400.0f}; // written at start, read by the job

    mutable Mutex m_fullMutex; // the service thread refreshes what the job and the ink services compare with
    QJsonObject m_nozzleFull PELORA_GUARDED_BY(m_fullMutex);

    std::atomic<bool> m_inkLow{false};
    std::array<std::atomic<unsigned>, InkLevels::heads> m_levelFailures = {}; // both ink services count
    BusTest m_busTest;
};

/// Create it on the GUI thread. Any thread.
BackgroundService *backgroundService();
