// system/stdio_init.h - what the C runtime must be told before anything is opened or printed.
#pragma once

// Makes sure that formats know the %n conversion, and that whoever looks on sees each line when it
// is printed. A standard stream that is closed is opened to nowhere: its number would go to the
// next file that is opened, and messages would go into a chart or a table.
void utl_SetUpRuntime();
