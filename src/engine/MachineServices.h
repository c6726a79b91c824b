#pragma once
// What a job needs of the material and climate services, which stand above this folder.

#include <QString>

class MachineServices
{
public:
    virtual ~MachineServices() = default;
    /// Encoder counts per inch of X.
    virtual float encoderResolution() const = 0;
    /// True while a head's tank is low.
    virtual bool checkHeadInkLevels() = 0;
    virtual bool isTempReady() const = 0;
    /// 0 start, 1 printing, 2 keep-warm. Sends the set-points.
    virtual void setTemperatureMode(quint8 mode) = 0;
    /// Serial numbers of the bottles in use.
    virtual QString structureBottleSerial() const = 0;
    virtual QString supportBottleSerial() const = 0;
};

/// Set once by the background service when it is created. The getter is safe on any thread; null before.
void setMachineServices(MachineServices *services);
MachineServices *machineServices();

/// The services, or what stands for them before they are created: no tank low, every zone warm, the usual
/// encoder.
MachineServices &jobServices();
