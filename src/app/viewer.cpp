// app/viewer.cpp - order of a viewer's run: arguments, files, then the output.
#include "app/viewer.h"

#include "app/viewer_run.h"
#include "system/console.h"
#include "system/file_status.h"
#include "system/output_file.h"
#include "system/result_stream.h"
#include "text/utf8.h"
#include "util/identity.h"

#include <cerrno>
#include <cstring>
#include <new>

static void on_out_of_memory() {
    utl_ReportError("    _06-e-new");
    utl_Fail(crv_viewer_failed);
}

static int report_lost_result() {
    const int error = errno;
    fprintf(utl_ErrorStream(), "%%crv_06-e-out, Standard output could not be written: %s\n",
            strerror(error));
    return crv_viewer_failed;
}

static int close_result(FILE *result) {
    return utl_CloseStream(result) ? crv_viewer_done : report_lost_result();
}

static int write_to_standard_output(const crv_viewer &viewer, const crv_view &view, FILE *result) {
    if (!viewer.write(view, result)) return crv_viewer_failed;
    return close_result(result);
}

// A mistake on the command line must not destroy data.
static bool would_overwrite_input(const crv_view &view, const char *path) {
    for (const crv_view_file &file : view.files) {
        if (!utl_IsSameFile(path, file.path.c_str())) continue;
        fprintf(utl_ErrorStream(),
                "%%crv_06-e-wri, The output would be written over \"%s\", which was read\n",
                utl_CleanText(file.path).c_str());
        return true;
    }
    return false;
}

static int report_unwritten(const char *path) {
    const int error = errno;
    fprintf(utl_ErrorStream(), "%%crv_06-e-wri, \"%s\" could not be written: %s\n",
            utl_CleanText(path).c_str(), strerror(error));
    return crv_viewer_failed;
}

static int write_to_file(const crv_viewer &viewer, const crv_view &view, const char *path) {
    if (would_overwrite_input(view, path)) return crv_viewer_failed;
    utl_output_file file;
    if (!utl_OpenOutput(path, &file)) return report_unwritten(path);
    if (!viewer.write(view, file.stream)) {
        utl_DiscardOutput(&file);
        return crv_viewer_failed;
    }
    if (!utl_CloseOutput(&file)) return report_unwritten(path);
    fprintf(utl_ErrorStream(), "%%crv_06-i-wri, Written: \"%s\"\n", utl_CleanText(path).c_str());
    return crv_viewer_done;
}

static int print_text(const crv_viewer &viewer, crv_viewer_text text, FILE *result) {
    if (text == crv_viewer_text::help) {
        crv_PrintViewerHelp(viewer, result);
    } else {
        fprintf(result, "%s %s\n", viewer.name, utl_ProgramVersion());
    }
    return close_result(result);
}

int crv_RunViewer(int argc, char **argv, const crv_viewer &viewer) {
    std::set_new_handler(on_out_of_memory);
    FILE *result = utl_SetUpResultStream();
    const int result_error = errno;
    utl_UseConventionalStatuses();
    crv_viewer_arguments arguments;
    if (!crv_ParseViewerArguments(argc, argv, viewer, &arguments)) return crv_viewer_mistake;
    const bool is_text = arguments.text != crv_viewer_text::none;
    if (!result && (is_text || !arguments.output_path)) {
        errno = result_error;
        return report_lost_result();
    }
    if (is_text) return print_text(viewer, arguments.text, result);
    crv_view view;
    if (!crv_ReadView(arguments, &view)) return crv_viewer_failed;
    if (viewer.draws_pairs) crv_ReportPointsWithoutX(view);
    return arguments.output_path ? write_to_file(viewer, view, arguments.output_path)
                                 : write_to_standard_output(viewer, view, result);
}
