// records/settings.cpp - the global settings and debug level.
#include "records/settings.h"

int crv_DBG = 0;

crv_run_settings crv_settings;
