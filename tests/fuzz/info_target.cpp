// fuzz/info_target.cpp - crv-info on arbitrary bytes as a file of each format: steps as the reader
// counts them, text without control characters, valid JSON.
//
// The first line of the input is the line number of the labels; the rest is the file.
#include "harness.h"

#include "app/info.h"
#include "records/chart.h"
#include "text/utf8.h"

#include <cstdlib>
#include <cstring>
#include <string>

static constexpr const char *path = "a.file";

// ----- JSON (RFC 8259)

static void skip_blanks(std::string_view *rest) {
    while (!rest->empty() && strchr(" \n", rest->front())) rest->remove_prefix(1);
}

static bool take(std::string_view *rest, std::string_view word) {
    skip_blanks(rest);
    if (!rest->starts_with(word)) return false;
    rest->remove_prefix(word.size());
    return true;
}

static void take_json_text(std::string_view *rest) {
    require(take(rest, "\""), "a text begins with a quote");
    while (!rest->starts_with('"')) {
        require(!rest->empty(), "a text ends");
        const bool is_escape = rest->starts_with('\\');
        if (is_escape) rest->remove_prefix(1);
        require(!is_escape || rest->starts_with('"') || rest->starts_with('\\'),
                "only quotes and backslashes are escaped");
        rest->remove_prefix(1);
    }
    rest->remove_prefix(1);
}

static void take_json_number(std::string_view *rest) {
    const std::string text(rest->substr(0, rest->find_first_of(",]}\n ")));
    require(!text.empty() && text.find_first_not_of("0123456789+-.e") == text.npos,
            "a number has the characters of JSON");
    char *end = nullptr;
    strtod(text.c_str(), &end);
    require(*end == '\0' && text[0] != '+' && text[0] != '.', "a number is one of JSON");
    rest->remove_prefix(text.size());
}

static void take_json_value(std::string_view *rest);

static void take_json_members(std::string_view *rest, std::string_view end, bool have_names) {
    if (take(rest, end)) return;
    do {
        if (have_names) {
            skip_blanks(rest);
            take_json_text(rest);
            require(take(rest, ":"), "a colon follows the name");
        }
        take_json_value(rest);
    } while (take(rest, ","));
    require(take(rest, end), "an object or array ends");
}

static void take_json_value(std::string_view *rest) {
    skip_blanks(rest);
    if (take(rest, "null")) return;
    if (take(rest, "{")) return take_json_members(rest, "}", true);
    if (take(rest, "[")) return take_json_members(rest, "]", false);
    if (rest->starts_with('"')) return take_json_text(rest);
    take_json_number(rest);
}

static void check_json(const std::string &json) {
    std::string_view rest = json;
    take_json_value(&rest);
    require(rest.empty(), "nothing follows the object");
    require(json.starts_with('{'), "a file is an object");
}

// ----- text

static void check_text(std::string text, const char *layout) {
    for (char &c : text)
        if (c != '\0' && strchr(layout, c)) c = ' ';
    require(utl_CleanText(text) == text, "the output is UTF-8 without control characters");
}

// ----- the readers

// Returns the number of steps in the message of the reader, or -1 if it has read no file.
static int64_t counted_by_reader(const std::string &bytes, crv_format format, int label_line) {
    const outcome result = run_sandboxed({}, {{path, bytes}}, [&] {
        crv_AllocCht(0);
        const crv_selection time = crv_ParseSel("0", 0);
        switch (format) {
        case crv_format::request: crv_ReadReq(path, time); break;
        case crv_format::madymo: crv_ReadMad(path, time); break;
        case crv_format::column: crv_ReadPost(path, time, label_line, label_line + 1); break;
        default: crv_ReadVDR(path, 0); break;
        }
    });
    const bool is_frame = format == crv_format::frame;
    const std::string_view message = is_frame ? "%crv_85-i-dat, " : "-i-pts, ";
    const std::string_view word = is_frame ? "points = " : " has ";
    const size_t line = result.out.find(message);
    const size_t at = result.out.find(word, line);
    return at == result.out.npos ? -1 : atoll(result.out.c_str() + at + word.size());
}

static int64_t counted(const crv_info &info) {
    if (info.file.format != crv_format::frame)
        return static_cast<int64_t>(crv_StepsOf(info)->steps);
    return static_cast<uint32_t>(info.frame.header.num_points);
}

static void check_format(const crv_info_file &file, const std::string &bytes) {
    crv_info info;
    info.file = file;
    std::string error;
    const outcome result = run_sandboxed({}, {{path, bytes}}, [&] {
        error = crv_ReadInfo(&info, crv_info_all);
        if (!error.empty()) return;
        crv_AddNotes(&info);
        crv_AddCommand(&info);
    });
    require(!result.quit, "crv-info does not end within a file");
    require(result.out.empty() && result.err.empty(), "reading prints nothing");
    const int64_t count = counted_by_reader(bytes, file.format, file.label_line);
    if (!error.empty()) {
        require(count < 0, "a file that crv reads is described");
        return;
    }
    require(count < 0 || count == counted(info), "steps are those of the reader");
    require(info.size == bytes.size(), "the size is that of the file");
    check_text(crv_InfoText(info), "\n");
    check_text(crv_InfoPairs(info), "\n\t");
    check_text(crv_InfoJson(info), "\n");
    check_json(crv_InfoJson(info));
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    std::string_view rest(reinterpret_cast<const char *>(data), size);
    crv_info_file file;
    file.path = path;
    file.label_line = static_cast<int>(static_cast<unsigned>(take_integer(&rest, '\n')) % 9);
    const std::string bytes(rest);
    for (const crv_format format :
         {crv_format::request, crv_format::madymo, crv_format::column, crv_format::frame}) {
        file.format = format;
        check_format(file, bytes);
    }
    return 0;
}
