// stats/conditional.cpp - finds the point of an extreme, or interpolates linearly at the first
// crossing of a number.
#include "stats/conditional.h"

#include "records/column.h"
#include "system/arithmetic.h"
#include "text/number_reader.h"
#include "text/number_writer.h"

#include <cstdint>
#include <cstdio>

namespace {

// A crossing between point `number` - 1 and point `number`, counted from 1. `fraction` is its
// position between the two, 0 at the first and 1 at the second. An exact hit has 0.
struct crossing {
    bool found;
    int number;
    double fraction;
};

// Values of a point and of the previous one; the first point is its own predecessor.
struct point_pair {
    double previous;
    double current;
};

} // namespace

static crv_value_report report_not_found(const crv_column *first, const crv_column *second,
                                         double x) {
    printf("NOT! [%s] when [%s] = %f, (s = %d, %f) \n", first->colname, second->colname, x, -1,
           -1.0);
    return crv_value_report::not_reached;
}

// Sets *point to the values of point `number` and the previous one. Returns false if the column has
// no such point.
static bool find_point(const crv_column *column, uint32_t number, point_pair *point) {
    if (number == 0 || !column->val_list) return false;
    point->previous = column->val_list->val;
    uint32_t count = 1;
    const crv_value *node = column->val_list;
    for (; node && count < number; ++count) {
        point->previous = node->val;
        node = node->next;
    }
    if (!node) return false;
    point->current = node->val;
    return true;
}

static crv_value_report report_extreme(const char *name, const crv_column *first,
                                       const crv_column *second, uint32_t step, double time) {
    point_pair point = {};
    if (!find_point(first, step, &point)) return report_not_found(first, second, 0.0);
    printf("%s [%s] when [%s] = %s, (s = %d, t = %f)\n", utl_FormatFixed(point.current, 0, 6).text,
           first->colname, second->colname, name, static_cast<int>(step), time);
    return crv_value_report::printed;
}

// Returns the first point that equals x or that is the end of a crossing, strict on both sides.
static crossing find_crossing(const crv_column *column, double x) {
    int number = 1;
    double before = column->val_list ? column->val_list->val : 0.0;
    for (const crv_value *node = column->val_list; node; node = node->next, ++number) {
        const double at = node->val;
        const bool rises = before < x && x < at;
        const bool falls = before > x && x > at;
        if (at == x) return {true, number, 0.0};
        if (rises || falls)
            return {true, number, utl_Divide(utl_Subtract(x, before), utl_Subtract(at, before))};
        before = at;
    }
    return {false, -1, -1.0};
}

static crv_value_report report_number(const char *condition, const crv_column *first,
                                      const crv_column *second) {
    const double x = utl_ToDouble(condition);
    const crossing hit = find_crossing(first, x);
    point_pair point = {};
    if (!hit.found || !find_point(second, static_cast<uint32_t>(hit.number), &point))
        return report_not_found(first, second, x);
    const double rise = utl_Subtract(point.current, point.previous);
    const double value = utl_Add(point.previous, utl_Multiply(hit.fraction, rise));
    printf("%s [%s] when [%s] = %f, (s = %d, %f) \n", utl_FormatFixed(value, 0, 6).text,
           first->colname, second->colname, x, hit.number, hit.fraction);
    return crv_value_report::printed;
}

crv_value_report crv_ReportValue(const char *condition, int /*debug_level*/) {
    const crv_column *first = crv_columns[0];
    const crv_column *second = crv_columns[1];
    const char letter = condition[0];
    const char second_letter = letter ? condition[1] : '\0';
    const char third_letter = second_letter ? condition[2] : '\0';

    if (letter == 'm' && second_letter == 'a')
        return report_extreme("max", first, second, second->max_step, second->max_time);
    if (letter == 'm' && second_letter == 'i')
        return report_extreme("min", first, second, second->min_step, second->min_time);
    if (letter == 'a' && third_letter == 'a')
        return report_extreme("amax", first, second, second->absmax_step, second->absmax_time);
    if (letter == 'a' && third_letter == 'i')
        return report_extreme("amin", first, second, second->absmin_step, second->absmin_time);
    if (letter != 'm' && letter != 'a') return report_number(condition, first, second);
    printf("\n"); // Deliberate: other words print a newline.
    return crv_value_report::unknown_word;
}
