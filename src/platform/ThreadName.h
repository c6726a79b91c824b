#pragma once

/// Names the calling thread for debuggers and crash dumps; 15 characters at most count.
void setThreadName(const char *name);
