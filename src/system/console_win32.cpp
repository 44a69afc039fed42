// system/console_win32.cpp - prints a text file by the command of the system.
#include "system/console.h"

#include <string>

bool utl_PrintFile(const char *path) {
    utl_RunCommand((std::string("type ") + path).c_str());
    return true;
}
