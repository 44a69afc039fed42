// terminal/ticks.cpp - chooses round numbers for an axis and writes them.
#include "terminal/axis.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>

static constexpr int longest_plain = 7;        // texts up to this length have no exponent
static constexpr double largest_plain = 1e15;  // and neither have smaller numbers, if that is
static constexpr int most_plain_decimals = 15; // not longer

namespace {

// factor * 10^exponent
struct tick_step {
    int factor; // 1, 2 or 5
    int exponent;
};

} // namespace

// A division keeps the nearest double for negative exponents, which a product would miss.
static double times_power(double value, int exponent) {
    return exponent < 0 ? value / std::pow(10, -exponent) : value * std::pow(10, exponent);
}

static double value_of(const tick_step &step) { return times_power(step.factor, step.exponent); }

static tick_step next_step(const tick_step &step) {
    if (step.factor == 5) return {1, step.exponent + 1};
    return {step.factor == 1 ? 2 : 5, step.exponent};
}

// Returns the number with a short exponent, as in 1.25e-7: that of printf has at least two digits.
static std::string with_exponent(double value, int decimals) {
    if (value == 0) return "0";
    char text[64];
    snprintf(text, sizeof text, "%.*e", decimals, value);
    const std::string whole = text;
    const size_t e = whole.find('e');
    return whole.substr(0, e + 1) + std::to_string(atoi(whole.c_str() + e + 1));
}

static std::string without_exponent(double value, int decimals) {
    char text[64];
    snprintf(text, sizeof text, "%.*f", decimals, value);
    return text;
}

static size_t longest_of(const std::vector<std::string> &texts) {
    size_t longest = 0;
    for (const std::string &text : texts) longest = std::max(longest, text.size());
    return longest;
}

// Writes all numbers in the shorter of both forms.
static std::vector<std::string> write_numbers(const std::vector<double> &values,
                                              const tick_step &step) {
    double size = 0;
    for (const double value : values) size = std::max(size, std::fabs(value));
    const int digits = size > 0 ? static_cast<int>(std::floor(std::log10(size))) : step.exponent;
    const int decimals = std::max(0, -step.exponent);
    std::vector<std::string> plain, scientific;
    for (const double value : values)
        scientific.push_back(with_exponent(value, std::max(0, digits - step.exponent)));
    if (size >= largest_plain || decimals > most_plain_decimals) return scientific;
    for (const double value : values) plain.push_back(without_exponent(value, decimals));
    const bool is_short =
        longest_of(plain) <= std::max<size_t>(longest_plain, longest_of(scientific));
    return is_short ? plain : scientific;
}

// Returns all multiples of the step on the axis. A bound that misses a multiple by its rounding
// has it.
static std::vector<crv_tick> make_ticks(const crv_axis &axis, const tick_step &step) {
    constexpr double tolerance = 1e-9;
    const double size = value_of(step);
    const auto first = static_cast<long long>(std::ceil(axis.low / size - tolerance));
    const auto last = static_cast<long long>(std::floor(axis.high / size + tolerance));
    std::vector<double> values;
    for (long long k = first; k <= last; ++k)
        values.push_back(times_power(static_cast<double>(k * step.factor), step.exponent));
    const std::vector<std::string> texts = write_numbers(values, step);
    std::vector<crv_tick> ticks;
    for (size_t k = 0; k < values.size(); ++k) {
        const double fraction = std::clamp(crv_FindFraction(axis, values[k]), 0.0, 1.0);
        ticks.push_back({fraction, texts[k]});
    }
    return ticks;
}

static int width_of(const std::vector<crv_tick> &ticks) {
    size_t width = 0;
    for (const crv_tick &tick : ticks) width = std::max(width, tick.text.size());
    return static_cast<int>(width);
}

std::vector<crv_tick> crv_ChooseTicks(const crv_axis &axis, int length, double min_gap,
                                      int text_gap) {
    const double per_character = axis.extent / length / axis.shrink;
    const double power = std::log10(per_character) + std::log10(min_gap);
    const auto magnitude = static_cast<int>(std::floor(power));
    std::vector<crv_tick> chosen;
    for (tick_step step = {1, magnitude}; std::isfinite(value_of(step)); step = next_step(step)) {
        const double gap = value_of(step) / per_character;
        if (gap < min_gap) continue;
        std::vector<crv_tick> ticks = make_ticks(axis, step);
        const bool fits = text_gap < 0 || gap >= width_of(ticks) + text_gap;
        if (ticks.empty()) break;
        chosen = std::move(ticks);
        if (fits || chosen.size() == 1) break;
        chosen.resize(1); // in case that no larger step has a multiple on the axis
    }
    return chosen;
}
