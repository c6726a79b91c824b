#pragma once
// Keeps the machine usable for the life of the process: links, start state of the boards, supervision.

#include "engine/MachineServices.h"
#include "links/CardInfo.h"

#include <QJsonObject>
#include <QThread>
#include <array>

/// What the pages and the record see of the bottles: a copy.
struct Bottles
{
    std::array<CardInfo, 6> cards; ///< slots 2 and 3 support, 4 and 5 structure
    quint8 strUse = 5;
    quint8 supUse = 3;
};

class BackgroundService : public QThread, public MachineServices
{
    Q_OBJECT
public:
    BackgroundService();
    float encoderResolution() const override;
    Bottles cards() const;
    void setBottleInUse(quint8 strUse, quint8 supUse);
    bool checkHeadInkLevels() override;
    void getHeadInkLevels(QJsonObject &levels) const;
    bool isTempReady() const override;
    void setTemperatureMode(quint8 mode) override;
    QString structureBottleSerial() const override;
    QString supportBottleSerial() const override;

signals:
    void MessageFormShowSig(QString title, QString prompt, int icon, int btn, QString key);

protected:
    void run() override;
};

/// Create it on the GUI thread. Any thread.
BackgroundService *backgroundService();
