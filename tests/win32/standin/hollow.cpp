// A library of the server's name that registers nothing.
#include <windows.h>

extern "C" __declspec(dllexport) int hollow() { return 0; }
