// bench/make_files.cpp - generates the large input files of the benchmarks. The same arguments
// always generate the same bytes.
//
//   crv_make_files req REQUESTS STEPS > big.req        request file, six numbers per line
//   crv_make_files mad REQUESTS VALUES STEPS > big.mad Madymo file
//   crv_make_files pos COLUMNS ROWS > big.pos          column file with labels
//   crv_make_files vdr PAIRS > big.vdr                 frame file
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

// Random bits by SplitMix64 (G. L. Steele, D. Lea, C. H. Flood, Fast Splittable Pseudorandom Number
// Generators, 2014) from a fixed seed.
struct random_bits {
    uint64_t state = 20171220;
    uint64_t next() {
        state += 0x9e3779b97f4a7c15U;
        uint64_t z = state;
        z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9U;
        z = (z ^ (z >> 27)) * 0x94d049bb133111ebU;
        return z ^ (z >> 31);
    }
    double between(double low, double high) {
        return low + (high - low) * (static_cast<double>(next() >> 11) / 9007199254740992.0);
    }
};

// Buffered text for standard output.
struct output {
    std::string text;
    void put(const char *s) { text += s; }
    void put(double value, std::chars_format format, int precision, size_t width) {
        char number[64];
        const auto end =
            std::to_chars(number, number + sizeof number, value, format, precision).ptr;
        const auto length = static_cast<size_t>(end - number);
        if (length < width) text.append(width - length, ' ');
        text.append(number, length);
    }
    void put_exp(double value) { put(value, std::chars_format::scientific, 6, 15); }
    void end_line() {
        text += '\n';
        if (text.size() > 1'000'000) flush();
    }
    void flush() {
        fwrite(text.data(), 1, text.size(), stdout);
        text.clear();
    }
    ~output() { flush(); }
};

} // namespace

static long number(char **argv, int k) { return strtol(argv[k], nullptr, 10); }

static void make_req(output *out, long requests, long steps) {
    random_bits random;
    out->put(" A.R3    2017-12-20 16:18:45               0         0  3D\nA long run\n");
    out->put((std::to_string(requests) + "     MMKGS_N_RACA 1.000000000000000E+03\n").c_str());
    for (long k = 1; k <= requests; ++k)
        out->put((std::to_string(1000 + k) + " " + std::to_string(1 + k % 5) + " 0 0 0\n").c_str());
    for (long step = 0; step < steps; ++step) {
        out->put_exp(static_cast<double>(step) * 0.001);
        out->end_line();
        for (long k = 0; k < requests; ++k) {
            for (int item = 0; item < 6; ++item) out->put_exp(random.between(-1000.0, 1000.0));
            out->end_line();
        }
    }
}

static void make_mad(output *out, long requests, long values, long steps) {
    random_bits random;
    out->put("A long run\nin SI\n");
    out->put((std::to_string(requests) + " " + std::to_string(values) + "\n").c_str());
    for (long k = 1; k <= requests; ++k) out->put(("REQUEST " + std::to_string(k) + "\n").c_str());
    for (long k = 1; k <= values; ++k) out->put(("value " + std::to_string(k) + "\n").c_str());
    for (long step = 0; step < steps; ++step) {
        out->put_exp(static_cast<double>(step) * 0.0001);
        out->end_line();
        for (long k = 0; k < requests; ++k) {
            for (long item = 0; item < values; ++item)
                out->put_exp(random.between(-1000.0, 1000.0));
            out->end_line();
        }
    }
}

static void make_pos(output *out, long columns, long rows) {
    random_bits random;
    for (long k = 1; k <= columns; ++k)
        out->put(("column_" + std::to_string(k) + (k < columns ? " " : "")).c_str());
    out->end_line();
    for (long row = 0; row < rows; ++row) {
        out->put(static_cast<double>(row) * 0.001, std::chars_format::fixed, 3, 13);
        for (long k = 1; k < columns; ++k)
            out->put(random.between(-500.0, 500.0), std::chars_format::fixed, 6, 14);
        out->end_line();
    }
}

static void make_vdr(output *out, long pairs) {
    random_bits random;
    out->put(
        ("%T\nA long curve\n%XA\nx\n%YA\ny\n%N\n" + std::to_string(pairs) + "\n%XY\n%D\n").c_str());
    for (long k = 0; k < pairs; ++k) {
        out->put(static_cast<double>(k) * 0.001, std::chars_format::fixed, 3, 12);
        out->put(random.between(-500.0, 500.0), std::chars_format::fixed, 6, 14);
        out->end_line();
    }
}

int main(int argc, char **argv) {
    output out;
    const char *format = argc > 1 ? argv[1] : "";
    if (argc == 4 && strcmp(format, "req") == 0) {
        make_req(&out, number(argv, 2), number(argv, 3));
    } else if (argc == 5 && strcmp(format, "mad") == 0) {
        make_mad(&out, number(argv, 2), number(argv, 3), number(argv, 4));
    } else if (argc == 4 && strcmp(format, "pos") == 0) {
        make_pos(&out, number(argv, 2), number(argv, 3));
    } else if (argc == 3 && strcmp(format, "vdr") == 0) {
        make_vdr(&out, number(argv, 2));
    } else {
        fprintf(stderr, "usage: crv_make_files req REQUESTS STEPS | mad REQUESTS VALUES STEPS |"
                        " pos COLUMNS ROWS | vdr PAIRS\n");
        return 2;
    }
    return 0;
}
