#pragma once
// The print job with its head boards: print bar, pages, layers and passes.

#include "engine/PrintService.h"

class XdmControl : public PrintService
{
    Q_OBJECT
public:
    XdmControl();
};

/// The process's one job object. Create it on the GUI thread. Any thread.
XdmControl *xdmControl();
