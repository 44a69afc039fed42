// scripts/print_options.cpp - prints the option table for scripts, one record per line, tabs
// between the fields:
//
//     form  SPELLING REST OPTION VALUE VALUE_NAME COMPLETION SUMMARY
//     text  OPTION SECTION EFFECT DETAILS
//     viewer  OPTION EFFECT
#include "app/option_table.h"
#include "app/viewer_options.h"

#include <cstdio>

static const char *name_of(crv_option_rest rest) {
    switch (rest) {
    case crv_option_rest::nothing: return "nothing";
    case crv_option_rest::ignored: return "ignored";
    case crv_option_rest::number: return "number";
    }
    return "";
}

static const char *name_of(crv_option_value value) {
    switch (value) {
    case crv_option_value::none: return "none";
    case crv_option_value::any: return "any";
    case crv_option_value::plain: return "plain";
    case crv_option_value::table: return "table";
    }
    return "";
}

static const char *name_of(crv_option_section section) {
    switch (section) {
    case crv_option_section::series: return "series";
    case crv_option_section::tables: return "tables";
    case crv_option_section::chart: return "chart";
    case crv_option_section::texts: return "texts";
    case crv_option_section::other: return "other";
    }
    return "";
}

static void print_field(std::string_view text, char end) {
    printf("%.*s%c", static_cast<int>(text.size()), text.data(), end);
}

int main() {
    for (const crv_option_form &form : crv_option_forms) {
        printf("form\t");
        print_field(form.spelling, '\t');
        printf("%s\t%d\t%s\t", name_of(form.rest), static_cast<int>(form.option),
               name_of(form.value));
        print_field(form.value_name, '\t');
        print_field(form.completion, '\t');
        print_field(form.summary, '\n');
    }
    for (const crv_option_text &text : crv_option_texts) {
        printf("text\t%d\t%s\t", static_cast<int>(text.option), name_of(text.section));
        print_field(text.effect, '\t');
        print_field(text.details, '\n');
    }
    for (const crv_viewer_option &entry : crv_viewer_options) {
        printf("viewer\t%d\t", static_cast<int>(entry.option));
        print_field(entry.effect, '\n');
    }
}
