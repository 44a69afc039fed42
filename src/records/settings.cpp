// records/settings.cpp - see settings.h.
#include "records/settings.h"

int crv_DBG = 0;

crv_run_settings crv_settings;
