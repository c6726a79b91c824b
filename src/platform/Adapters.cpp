#include "platform/Adapters.h"

AdapterInfo firstWiredAdapter(const QList<AdapterInfo> &all)
{
    for (const AdapterInfo &adapter : all) {
        for (const char *word : {"PCIe", "Intel(R)"}) {
            if (adapter.description.contains(QLatin1String(word)))
                return adapter;
        }
    }
    return {};
}
