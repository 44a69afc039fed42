// system/result_stream.h - a standard output that carries only the result of a program.
#pragma once

#include <cstdio>

// Sets up the standard streams as utl_SetUpRuntime does, for a program whose messages must not mix
// with its result. Call it instead, before anything is opened or printed. Standard output becomes
// standard error for all routines that print messages.
//
// Returns a stream of bytes without any conversion to what standard output was, or null with errno
// set if that was closed. Commands that are started do not inherit it, except on Windows; there a
// closed standard error gives null too.
FILE *utl_SetUpResultStream();
