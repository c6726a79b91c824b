#include "pelora.h"

#include "events/EventHandler.h"
#include "forms/MainWindow.h"
#include "frame/Startup.h"

int execMain(int argc, char **argv)
{
    return runApplication(argc, argv, [] {
        EventHandler::instance(); // on this thread, where its timer lives, before any service can raise an
                                  // event
        return mainWindow();
    });
}
