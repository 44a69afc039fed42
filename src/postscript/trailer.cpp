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

// An incomplete chart is reported only if it decides the status of the run: it is printed all the
// same.
static void close_chart(const char *path, FILE *stream) {
    const bool is_written = !ferror(stream);
    const bool is_closed = fclose(stream) == 0;
    if (is_written && is_closed) return;
    if (utl_NoteFailure())
        fprintf(utl_ErrorStream(), "%%crv_45-e-wri, \"%s\" could not be written completely\n",
                path);
}

static void print_chart(const char *command) {
    const utl_command_end end = utl_RunCommand(command);
    if (end == utl_command_end::succeeded) return;
    const bool decides_status = utl_NoteFailure();
    if (end == utl_command_end::not_started) {
        utl_ReportError("    _45-e-system, command interpreter");
    } else if (decides_status) {
        fprintf(utl_ErrorStream(), "%%crv_45-e-cmd, The printer command has failed\n");
    }
}

void crv_PlotEnd(const char *path, FILE *stream) {
    write_trailer(stream);
    close_chart(path, stream);

    const char *prefix = getenv("CRV_PRINTCHAIN");
    if (!prefix) prefix = "lpr "; // Deliberate: with the blank added below, two precede the path.
    const std::string command = std::string(prefix) + " " + path;
    if (!crv_settings.print_flag && !user_wants_print()) return;
    printf("%%crv_45-i-prt, Printer command = \"%s\"\n", command.c_str());
    print_chart(command.c_str());
}
