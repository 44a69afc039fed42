// fuzz/lines_target.cpp - lines that are read or skipped are those of fgets, for pieces of any
// size.
//
// Input: limit, lines to skip between two reads and size of a piece, a line each; then the file.
#include "harness.h"

#include "text/line_reader.h"

#include <cstdio>

namespace {

struct read_line {
    std::string text;
    utl_line_status status;
    bool operator==(const read_line &) const = default;
};

} // namespace

// The reference: what fgets gives, CR LF counted as one line end.
static std::vector<read_line> lines_by_rule(const std::string &bytes, size_t limit) {
    std::vector<read_line> lines;
    for (size_t at = 0; at < bytes.size();) {
        std::string text;
        utl_line_status status = utl_line_status::unterminated;
        while (at < bytes.size()) {
            if (text.size() == limit) {
                status = utl_line_status::partial;
                break;
            }
            if (bytes[at] == '\n' || bytes.compare(at, 2, "\r\n") == 0) {
                at += bytes[at] == '\n' ? 1U : 2U;
                status = utl_line_status::newline;
                break;
            }
            text += bytes[at++];
        }
        if (text.size() == limit) status = utl_line_status::partial;
        lines.push_back({text.substr(0, text.find('\0')), status});
    }
    lines.push_back({"", utl_line_status::eof});
    return lines;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    std::string_view rest(reinterpret_cast<const char *>(data), size);
    const auto limit =
        static_cast<size_t>(1 + static_cast<unsigned>(take_integer(&rest, '\n')) % 2000);
    const auto passing =
        static_cast<int64_t>(static_cast<unsigned>(take_integer(&rest, '\n')) % 64);
    sandbox box;
    box.read_piece = static_cast<unsigned>(take_integer(&rest, '\n')) % 70000;
    const std::string bytes(rest);

    const outcome result = run_sandboxed(box, {{"file", bytes}}, [&] {
        const std::vector<read_line> wanted = lines_by_rule(bytes, limit);
        utl_line_reader *in = utl_OpenReader("file");
        require(in, "a file opens");
        for (size_t k = 0; k < wanted.size(); ++k) {
            const int64_t passed = utl_SkipLines(in, limit, passing);
            require(passed >= 0 && passed <= passing, "no more lines are passed than wanted");
            for (int64_t p = 0; p < passed; ++p, ++k) {
                require(k < wanted.size() && wanted[k].status == utl_line_status::newline,
                        "a skipped line is complete");
                require(wanted[k].text.find('<') == std::string::npos, "a passed line has no mark");
            }
            require(k < wanted.size(), "no line is passed that is not there");
            const utl_line line = utl_ReadLine(in, limit);
            require(read_line{std::string(line.text), line.status} == wanted[k],
                    "a line is that of fgets");
            require(line.has_lt_or_nul || line.text.find('<') == line.text.npos,
                    "an unmarked line has no mark");
        }
        utl_CloseReader(in);
    });
    require(result.files_read == std::vector<std::string>{"file"},
            "the harness sees which file is read");
    return 0;
}
