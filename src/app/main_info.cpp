// app/main_info.cpp - program entry of crv-info: the contents of result files.
#include "app/info.h"
#include "system/console.h"

#include <new>

static void on_out_of_memory() { utl_QuitWithError("    _08-e-new", 1); }

int main(int argc, char **argv) {
    std::set_new_handler(on_out_of_memory);
    return crv_RunInfo(argc, argv);
}
