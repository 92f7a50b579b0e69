// Work in a process of its own: to be killed, or to be short of room.
#pragma once

#ifdef _WIN32
#include "tests/processes_windows.h"
#else
#include "tests/processes_posix.h"
#endif
