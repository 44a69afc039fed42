// app/ranges.cpp - parses low:high, stores the range, and prints it or a warning.
#include "app/ranges.h"

#include "records/range.h"
#include "records/settings.h"
#include "text/number_reader.h"

#include <cstdio>
#include <string_view>

static void read_range(std::string_view value, double (&range)[2]) {
    const size_t colon = value.find(':');
    crv_SetRange(range, utl_ToDouble(value.substr(0, colon)),
                 colon == value.npos ? 0.0 : utl_ToDouble(value.substr(colon + 1)));
}

// Deliberate: this pair differs from the initial {100, -100} of -x and -y. Low is above high in
// both, which means no range.
static void clear_range(double (&range)[2]) { crv_SetRange(range, 10.0, -10.0); }

void crv_ReportImproperTimeWindow() {
    printf("%%crv_05-e-tra, Improper t range specified \n");
    printf("%%crv_05-w-tra, Default t range will be used \n");
}

void crv_SetTimeWindow(const char *value) {
    if (!value) return;
    crv_settings.time_window_given = true;
    double(&window)[2] = crv_settings.time_window;
    if (value[0] == '\0') {
        clear_range(window);
        printf("%%crv_05-w-tra, Default t range will be used \n");
        return;
    }
    read_range(value, window);
    if (window[0] > window[1]) {
        crv_ReportImproperTimeWindow();
    } else {
        printf("%%crv_05-i-tra, T range, %f through %f \n", window[0], window[1]);
    }
}

void crv_SetXRange(const char *value, double (&range)[2]) {
    if (!value) return;
    if (value[0] == 'a') {
        clear_range(range);
        printf("%%crv_05-w-xra, Default X range will be used \n");
        return;
    }
    read_range(value, range);
    if (range[0] > range[1]) {
        printf("%%crv_05-e-xra, Improper X axis range specified \n");
        printf("%%crv_05-w-xra, Default X range will be used \n");
        clear_range(range);
    } else {
        // Deliberate: the X range has the tag of the Y range, yra.
        printf("%%crv_05-i-yra, X axis range, %f through %f \n", range[0], range[1]);
    }
}

void crv_SetYRange(const char *value, double (&range)[2]) {
    if (!value) return;
    if (value[0] == 'a') {
        clear_range(range);
        printf("%%crv_05-w-yra, Default Y range will be used \n");
        return;
    }
    read_range(value, range);
    if (range[0] > range[1]) {
        printf("%%crv_05-e-yra, Improper Y axis range specified\n");
        printf("%%crv_05-w-yra, Default Y range will be used\n");
        clear_range(range);
    } else {
        printf("%%crv_05-i-yra, Y axis range, %f through %f \n", range[0], range[1]);
    }
}
