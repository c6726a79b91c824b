#include "platform/ThreadName.h"

#include <cstring>
#include <pthread.h>

void setThreadName(const char *name)
{
    char shortName[16] = {}; // the kernel's limit with its closing zero
    std::strncpy(shortName, name, sizeof(shortName) - 1);
    pthread_setname_np(pthread_self(), shortName);
}
