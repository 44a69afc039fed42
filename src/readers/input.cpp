// readers/input.cpp - warnings and errors of an open result file.
#include "readers/input.h"

#include "stats/column_stats.h"
#include "system/console.h"
#include "text/fixed_text.h"

#include <cerrno>

void crv_WarnMissingNumbers(crv_input *in) {
    if (in->missing_line != 0) return;
    in->missing_line = in->lines->line_number;
    if (in->is_silent) return;
    fprintf(utl_ErrorStream(),
            "%%crv_%d-w-num, Missing numbers in \"%s\" read as 0.0, first on line %llu\n",
            in->routine, in->path, static_cast<unsigned long long>(in->missing_line));
}

void crv_WarnDefaultWindow(const crv_input &in) {
    if (crv_settings.time_window_given || in.points_dropped == 0) return;
    fprintf(utl_ErrorStream(),
            "%%crv_%d-w-win, %llu of %llu points of \"%s\" are outside the default time window"
            " -100:10000 and left out, see -tm\n",
            in.routine, static_cast<unsigned long long>(in.points_dropped),
            static_cast<unsigned long long>(in.points), in.path);
}

void crv_WarnWrappedCounts(const crv_input &in, std::span<crv_column *const> columns) {
    for (const crv_column *column : columns) {
        const std::string_view label = utl_TrimEnd(column->colname);
        if (column->num_values == static_cast<uint64_t>(crv_CountOf(column))) continue;
        fprintf(utl_ErrorStream(),
                "%%crv_%d-w-cnt, \"%.*s\" of \"%s\" has %llu values, counted as %d:"
                " its mean is the sum divided by %d\n",
                in.routine, static_cast<int>(label.size()), label.data(), in.path,
                static_cast<unsigned long long>(column->num_values), int{column->numpts},
                int{column->numpts});
    }
}

void crv_WarnLongLine(crv_input *in) {
    if (in->warned_long || in->is_silent || !crv_settings.keeps_all_data) return;
    in->warned_long = true;
    fprintf(utl_ErrorStream(),
            "%%crv_%d-w-lon, Line %llu of \"%s\" is too long and read in parts\n", in->routine,
            static_cast<unsigned long long>(in->lines->line_number), in->path);
}

void crv_WarnIncompleteStep(const crv_input &in, uint32_t step) {
    if (!crv_settings.keeps_all_data) return;
    fprintf(utl_ErrorStream(), "%%crv_%d-w-end, \"%s\" ends within step %u, the rest is missing\n",
            in.routine, in.path, static_cast<unsigned>(step));
}

void crv_WarnIncompleteLine(const crv_input &in) {
    if (!crv_settings.keeps_all_data) return;
    fprintf(utl_ErrorStream(),
            "%%crv_%d-w-end, The last line of \"%s\" has no line end and is left out\n", in.routine,
            in.path);
}

bool crv_ReadFailed(const crv_input &in) {
    if (in.lines->error != 0) errno = in.lines->error;
    return in.lines->error != 0;
}
