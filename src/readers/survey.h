// readers/survey.h - what reading the steps of a result file finds when no value is stored.
//
// The readers fill it with the same loops that read the steps for a chart, so that both count the
// same steps.
#pragma once

#include "readers/input.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>

// Maximum number of requests or descriptions that are listed; a damaged header can announce as many
// as the file has lines.
constexpr size_t crv_max_listed = 100'000;

struct crv_survey {
    uint64_t steps = 0;      // complete steps, or rows
    double first_time = 0.0; // of the first and of the last complete step; 0 without one
    double last_time = 0.0;
    double lowest_time = std::numeric_limits<double>::infinity(); // of the finite times; above the
    double highest_time = -std::numeric_limits<double>::infinity(); // highest if there is none
    uint64_t back_step = 0; // the first step whose time is before that of the last, 0 without one
    uint64_t dropped = 0;   // steps or rows outside the time window of the settings
    uint64_t missing_line = 0; // the first line with too few numbers, 0 without one
    uint64_t lines_left = 0;   // lines of an incomplete step at the end of the file
    bool unterminated = false; // the last line has no line end
};

// Counts a complete step.
inline void crv_SurveyStep(crv_survey *survey, double time) {
    const bool is_first = survey->steps++ == 0;
    if (is_first) survey->first_time = time;
    if (!is_first && time < survey->last_time && survey->back_step == 0)
        survey->back_step = survey->steps;
    survey->last_time = time;
    if (!std::isfinite(time)) return;
    survey->lowest_time = std::min(survey->lowest_time, time);
    survey->highest_time = std::max(survey->highest_time, time);
}

// Copies what the input has counted.
inline void crv_SurveyInput(crv_survey *survey, const crv_input &in) {
    survey->dropped = in.points_dropped;
    survey->missing_line = in.missing_line;
}
