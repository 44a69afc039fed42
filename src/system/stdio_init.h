// system/stdio_init.h - set-up of the standard streams at the start of a run.
#pragma once

// Makes standard input, output and error usable; call it before anything is opened or printed.
// Reopens a closed standard stream on the null device: otherwise its descriptor would go to the
// next file that is opened, and messages would be written into a chart or a table. Notes a
// closed standard output by utl_NoteClosedOutput. On Windows closed streams stay as they are. Makes
// printf formats accept %n, and standard output line-buffered where the runtime has line buffers.
void utl_SetUpRuntime();
