#include "pelora.h"

#include "forms/MainWindow.h"
#include "frame/Startup.h"

int execMain(int argc, char **argv)
{
    return runApplication(argc, argv, [] { return mainWindow(); });
}
