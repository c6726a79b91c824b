#include "JobHands.h"

int passes(PrinterRig &rig)
{
    return rig.machine({"state"})["state"].toObject()["passes"].toInt();
}

bool atLayer(PrinterRig &rig, int layer)
{
    return rig.waitFor([&] { return passes(rig) >= 4 * (layer - 1); }, waitLimitMs);
}

bool machine(PrinterRig &rig, const QStringList &command)
{
    return rig.machine(command)["ok"].toBool();
}

bool pressStop(PrinterRig &rig)
{
    const auto asked = [&] {
        const QString shown = rig.message()["text"].toString();
        if (shown.contains("是否中止打印"))
            return true;
        if (!shown.isEmpty())
            rig.answer("close");
        rig.click("pushButton_printStop");
        return false;
    };
    return rig.waitFor(asked, waitLimitMs) && rig.answer("Yes");
}
