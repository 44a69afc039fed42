// windows/write_log.cpp - calls the product log as a program named crv would.
//
//   write_log ACTION    see util/product_log.h
#include "util/product_log.h"

#include <cstdlib>

int main(int argc, char **argv) {
    char name[] = "crv";
    char *const names[] = {name};
    return argc == 2 && utl_Report(1, names, "crv", nullptr, atoi(argv[1]), 0) == 1 ? 0 : 1;
}
