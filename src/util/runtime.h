// util/runtime.h - what the C runtime must be told before anything is printed.
#pragma once

// Makes sure that formats know the %n conversion, and that whoever looks on sees each line when it is printed.
void utl_SetUpRuntime();
