// fuzz/page_target.cpp - the data of a page, read back, are the columns and the texts of its view.
//
// Input: ranges of X and Y on a line, with ' ' between the numbers; then texts that end with the
// character 1: title, subtitle, path of the file, names of X and of two curves; then numbers, given
// to the three columns in turn, "-" for none.
#include "harness.h"

#include "page/page_file.h"
#include "readers/column_builder.h"
#include "text/fixed_text.h"
#include "text/utf8.h"

#include <bit>
#include <cmath>
#include <cstdio>

namespace {

struct page_input {
    double ranges[4];
    std::vector<std::string> texts;
    std::vector<double> values[3];
};

} // namespace

static page_input take_input(std::string_view rest) {
    page_input input;
    for (int k = 0; k < 4; ++k) input.ranges[k] = take_number(&rest, k < 3 ? ' ' : '\n');
    for (int k = 0; k < 6; ++k) {
        const std::string text = take_text(&rest, '\1');
        input.texts.emplace_back(text.c_str()); // texts of a view have no NUL
    }
    for (size_t k = 0; !rest.empty(); ++k) {
        const std::string text = take_text(&rest, ' ');
        if (text != "-") input.values[k % 3].push_back(atof(text.c_str()));
    }
    return input;
}

static void fill_view(const page_input &input, crv_view *view) {
    const crv_column *columns[3];
    for (size_t k = 0; k < 3; ++k) {
        crv_column *column = crv_AllocColumn(static_cast<int>(k));
        utl_CopyText(column->colname, input.texts[3 + k]);
        for (const double value : input.values[k]) crv_AppendValue(column, value);
        columns[k] = column;
    }
    view->title = input.texts[0];
    view->subtitle = input.texts[1];
    view->files.push_back({input.texts[2], columns[0], true, {columns[1], columns[2]}});
    view->curves = {{columns[0], columns[1], 0}, {columns[0], columns[2], 0}};
    for (int k = 0; k < 2; ++k) {
        view->x_range[k] = input.ranges[k];
        view->y_range[k] = input.ranges[2 + k];
    }
}

static std::string page_of(const crv_view &view) {
    FILE *out = fopen("page.html", "wb");
    crv_WritePage(view, out);
    fclose(out);
    std::string page;
    FILE *in = fopen("page.html", "rb");
    char piece[65536];
    while (const size_t got = fread(piece, 1, sizeof piece, in)) page.append(piece, got);
    fclose(in);
    return page;
}

// Returns the text between the start tag of an element and the text that a browser ends it at. No
// other text of the page may look like the tag.
static std::string_view element(std::string_view page, const std::string &begin,
                                std::string_view end) {
    const size_t at = page.find(begin);
    require(at != page.npos && page.find(begin, at + 1) == page.npos, "an element stands once");
    page.remove_prefix(at + begin.size());
    return page.substr(0, page.find(end));
}

static int digit_of(char c) {
    if (c >= 'A' && c <= 'Z') return c - 'A';
    if (c >= 'a' && c <= 'z') return c - 'a' + 26;
    if (c >= '0' && c <= '9') return c - '0' + 52;
    require(c == '+' || c == '/', "values are base64");
    return c == '+' ? 62 : 63;
}

static void check_values(std::string_view page, int column, const std::vector<double> &values) {
    const std::string_view text =
        element(page, "<script type=\"text/plain\" data-column=\"" + std::to_string(column) + "\">",
                "</script>");
    require(text.size() == (8 * values.size() + 2) / 3 * 4, "values take 8 bytes each");
    uint64_t bits = 0;
    size_t digits = 0, bytes = 0;
    uint64_t value = 0;
    for (const char c : text) {
        if (c == '=') continue;
        bits = bits << 6 | static_cast<uint64_t>(digit_of(c));
        if (++digits % 4 == 1) continue;
        const size_t spare = 6 * digits - 8 * (bytes + 1); // bits after the byte
        value |= (bits >> spare & 255) << 8 * (bytes % 8);
        if (++bytes % 8 != 0) continue;
        const double wanted = values[bytes / 8 - 1], got = std::bit_cast<double>(value);
        require(std::bit_cast<uint64_t>(wanted) == value || (std::isnan(wanted) && std::isnan(got)),
                "the data of a page are the columns");
        value = 0;
    }
    require(bytes == 8 * values.size(), "all values are there");
}

// Undoes the escapes of a JSON string at the start of the text, and returns the string.
static std::string take_string(std::string_view *rest) {
    require(rest->starts_with('"'), "a text is in quotation marks");
    std::string text;
    size_t at = 1;
    for (; at < rest->size() && (*rest)[at] != '"'; ++at) {
        require(static_cast<unsigned char>((*rest)[at]) >= ' ', "no control characters");
        if (rest->substr(at).starts_with("\\u003c")) {
            text += '<';
            at += 5;
            continue;
        }
        if ((*rest)[at] == '\\') ++at;
        text += (*rest)[at];
    }
    rest->remove_prefix(at + 1);
    return text;
}

static void check_texts(std::string_view page, const page_input &input,
                        const std::vector<std::string> &names) {
    std::string_view json =
        element(page, "<script type=\"application/json\" id=\"view\">\n", "\n</script>");
    require(json.find('<') == json.npos, "no text ends the data");
    const auto check = [&](const char *key, const std::string &wanted) {
        const size_t at = json.find(key);
        require(at != json.npos, "the keys stand in their order");
        json.remove_prefix(at + std::string_view(key).size());
        require(take_string(&json) == utl_CleanText(wanted), "texts are those of the view");
    };
    check("{\"title\":", input.texts[0]);
    check(",\n\"subtitle\":", input.texts[1]);
    json.remove_prefix(json.find(",\n\"columns\":["));
    for (size_t k = 0; k < names.size(); ++k) check(k == 0 ? ",\n\"columns\":[" : ",", names[k]);
}

static void check_page(const std::string &page, const page_input &input,
                       const std::vector<std::string> &names) {
    for (const char c : page)
        require(static_cast<unsigned char>(c) >= ' ' || c == '\n', "no control characters");
    require(utl_CleanText(element(page, "<title>", "</title>")) ==
                element(page, "<title>", "</title>"),
            "the title is clean text");
    for (int k = 0; k < 3; ++k) check_values(page, k, input.values[k]);
    check_texts(page, input, names);
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const page_input input = take_input({reinterpret_cast<const char *>(data), size});
    std::string page;
    std::vector<std::string> names; // of the columns, cut to their length there
    const outcome result = run_sandboxed({}, {}, [&] {
        crv_view view;
        fill_view(input, &view);
        names.emplace_back(view.files[0].x->colname);
        for (const crv_column *column : view.files[0].columns) names.emplace_back(column->colname);
        page = page_of(view);
    });
    require(!result.quit && result.err.empty(), "a page is written without a message");
    check_page(page, input, names);
    return 0;
}
