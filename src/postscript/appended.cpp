// postscript/appended.cpp - the third section of the chart file: a copy of the user's PostScript
// file, line by line.
#include "postscript/chart_file.h"
#include "records/settings.h"
#include "system/console.h"
#include "system/file_status.h"
#include "text/line_reader.h"

#include <cerrno>

// 1,022 characters and the line end; longer lines are read in parts.
static constexpr size_t line_limit = 1023;
static constexpr size_t kept_length = 81; // characters copied of each part

// Opens the user's file. Fails with ENOENT if it is the chart file itself, which did not exist
// before this run and would be copied into itself without end.
static utl_line_reader *open_user_file(const char *user_file, const char *path) {
    if (!utl_IsSameFile(user_file, path)) return utl_OpenReader(user_file);
    errno = ENOENT;
    return nullptr;
}

int crv_PlotAppen(FILE *stream, const char *user_file, const char *path) {
    if (crv_DBG == 46) printf("    _46-i-val, Paste \"%s\" to \"%s\" \n", user_file, path);
    fputs("%% --- Begin of user supplied ps -- (crv_ module [[46]]) --- \n", stream);
    fprintf(stream, "%%%% --- file: \"%s\" \n", user_file);

    utl_line_reader *in = open_user_file(user_file, path);
    if (!in) {
        utl_ReportError("    _46-f-fopen read, ");
        printf(" \"%s\"\n", user_file);
        utl_Fail(0);
    }
    for (;;) {
        const utl_line line = utl_ReadLine(in, line_limit);
        if (line.status == utl_line_status::unterminated || line.status == utl_line_status::eof)
            break;
        const std::string_view kept = line.text.substr(0, kept_length);
        fprintf(stream, "%.*s\n", static_cast<int>(kept.size()), kept.data());
    }
    if (in->error != 0) {
        errno = in->error;
        utl_ReportError("    _46-e-fread");
        utl_NoteFailure();
    }
    utl_CloseReader(in);

    fputs("%% --- End of user supplied ps ---- (crv_ module [[46]]) --- \n", stream);
    fputs(" \n", stream);
    return 1;
}
