#pragma once
// Keeps the machine usable for the life of the process: links, start state of the boards, supervision.

#include "engine/MachineServices.h"
#include "events/StatusMail.h"
#include "material/BottleAccount.h"
#include "material/BusTest.h"
#include "material/InkFeeding.h"

#include <QJsonObject>
#include <QThread>
#include <atomic>

class BackgroundService : public QThread, public MachineServices
{
    Q_OBJECT
public:
    /// Installs itself as the job's machine services.
    BackgroundService();
    // Any thread:
    float encoderResolution() const override;
    Bottles cards() const { return m_bottles.cards(); }
    /// Structure 4 or 5, support 2 or 3; anything else changes nothing.
    void setBottleInUse(quint8 strUse, quint8 supUse) { m_bottles.setBottleInUse(strUse, supUse); }
    bool checkHeadInkLevels() override;
    void getHeadInkLevels(QJsonObject &levels) const;
    bool isTempReady() const override;
    void setTemperatureMode(quint8 mode) override;
    QString structureBottleSerial() const override;
    QString supportBottleSerial() const override;
    /// True while the ink-box door is known to be closed.
    bool isInkDoorKnownClosed() const { return m_inkDoorClosed != 0; }

    // What the service's threads do, a pass at a time. None of them ends.
    /// Links and boards into their start state, before the first pass. False: there was new firmware for a
    /// board, and nothing runs until the machine has been switched off and on. Service thread.
    bool startUp();
    /// Supervision. Service thread.
    void supervisionPass();
    /// Levels and feeding of one wax. False: the next pass follows at once. That ink service's thread.
    bool inkServicePass(InkPath ink) { return m_feeding.pass(ink); }
    /// Watches the ink-box door, and reads the bottles' cards when it has been closed. Its own thread.
    void doorWatchPass();

signals:
    void MessageFormShowSig(QString title, QString prompt, int icon, int btn, QString key);

protected:
    void run() override;

private:
    void openLinks();
    bool updateFirmware();
    void initEncoderResolution();
    void sendParameters();
    void setUpHeads();
    void testCan();
    void sendStartState();
    void startThread(const char *name, void (BackgroundService::*body)());
    void strInkService();
    void supInkService();
    void inkService(InkPath ink);
    void doorWatch();
    void refreshNozzleFull();
    void sampleAir();
    RestWeights restWeights() const;
    void showMessage(quint32 id, const QString &prompt, int icon, int btn);

    std::atomic<quint8> m_inkDoorClosed{0};
    std::atomic<float> m_fEncoderResolution{25400.0f}; // written at start, read by the job
    const ServiceMessage m_show = [this](quint32 id, const QString &prompt, int icon, int btn) {
        showMessage(id, prompt, icon, btn);
    };
    BottleAccount m_bottles{m_show, m_inkDoorClosed};
    InkFeeding m_feeding{m_bottles, m_inkDoorClosed, m_show};
    StatusMail m_statusMail{[this] { return restWeights(); }};
    BusTest m_busTest;
};

/// Create it on the GUI thread. Any thread.
BackgroundService *backgroundService();
