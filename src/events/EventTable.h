#pragma once
// Every event the machine knows: its number and the operator's text in the source language.

#include <QtGlobal>

struct EventText {
    quint32 id;
    const char *text; ///< UTF-8, translated in the context EventHandler
};

extern const EventText eventTable[];
extern const int eventTableSize;
