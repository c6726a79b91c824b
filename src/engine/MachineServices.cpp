#include "engine/MachineServices.h"

#include "engine/Geometry.h"

#include <atomic>

namespace
{
class NoServices : public MachineServices
{
public:
    float encoderResolution() const override { return inchUm; }
    bool checkHeadInkLevels() override { return false; }
    bool isTempReady() const override { return true; }
    void setTemperatureMode(quint8) override {}
    QString structureBottleSerial() const override { return QString(); }
    QString supportBottleSerial() const override { return QString(); }
};

std::atomic<MachineServices *> services{nullptr};
} // namespace

void setMachineServices(MachineServices *machine)
{
    services = machine;
}

MachineServices *machineServices()
{
    return services;
}

MachineServices &jobServices()
{
    static NoServices none;
    MachineServices *machine = services;
    return machine ? *machine : none;
}
