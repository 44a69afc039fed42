// postscript/trailer.cpp - the last section of the chart file; the printer command.
#include "postscript/chart_file.h"
#include "records/settings.h"
#include "system/console.h"

#include <cstdlib>
#include <string>

static void write_trailer(FILE *stream) {
    fputs("%%  --- Begin writing  Trailer (crv module [[45]])\n", stream);
    fputs("1 setlinewidth \n", stream);
    fputs("grestore \n", stream); // has no matching gsave and pops nothing
    fputs("showpage \n", stream);
}

static bool user_wants_print() {
    char answer[16] = "Y";
    printf("Should this really be sent to the laserWriter? (Yes, [No]):");
    utl_ReadAnswer(answer, sizeof answer);
    return answer[0] == 'Y' || answer[0] == 'y';
}

void crv_PlotEnd(const char *path, FILE *stream) {
    write_trailer(stream);
    fclose(stream);

    const char *prefix = getenv("CRV_PRINTCHAIN");
    if (!prefix) prefix = "lpr "; // Deliberate: with the blank added below, two precede the path.
    const std::string command = std::string(prefix) + " " + path;
    if (!crv_settings.print_flag && !user_wants_print()) return;
    printf("%%crv_45-i-prt, Printer command = \"%s\"\n", command.c_str());
    if (!utl_RunCommand(command.c_str())) utl_ReportError("    _45-e-system, command interpreter");
}
