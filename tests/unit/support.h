// unit/support.h - fixtures of the unit tests: temporary files, captured output, failing
// allocations.
#pragma once

#include "records/chart.h"
#include "records/column.h"
#include "records/settings.h"
#include "system/memory.h"
#include "text/simd.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include <unistd.h>

// A temporary file with the given bytes; the destructor removes it.
class text_file {
  public:
    explicit text_file(const std::string &bytes, const std::string &suffix = ".req") {
        static int number = 0;
        path_ = testing::TempDir() + "crv_unit_" + std::to_string(getpid()) + "_" +
                std::to_string(++number) + suffix;
        std::ofstream(path_, std::ios::binary) << bytes;
    }
    text_file(const text_file &) = delete;
    text_file &operator=(const text_file &) = delete;
    ~text_file() { remove(path_.c_str()); }
    const char *path() const { return path_.c_str(); }

  private:
    std::string path_;
};

// Text followed by the padding that vector code may read: digits, which would continue a number.
class padded_text {
  public:
    explicit padded_text(const std::string &text)
        : padded_(text + std::string(utl_padding, '1')), length_(text.size()) {}
    std::string_view text() const { return {padded_.data(), length_}; }

  private:
    std::string padded_;
    size_t length_;
};

inline std::string bytes_of(const std::string &path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

// Returns the text that `act` prints on standard output; stderr_of does so for standard error.
template <typename action> std::string stdout_of(action act) {
    testing::internal::CaptureStdout();
    act();
    fflush(stdout);
    return testing::internal::GetCapturedStdout();
}

template <typename action> std::string stderr_of(action act) {
    testing::internal::CaptureStderr();
    act();
    return testing::internal::GetCapturedStderr();
}

// Returns the text that `act` writes to the stream it is called with.
template <typename action> std::string written_by(action act) {
    FILE *stream = tmpfile();
    act(stream);
    rewind(stream);
    std::string text;
    for (int c = getc(stream); c != EOF; c = getc(stream)) text += static_cast<char>(c);
    fclose(stream);
    return text;
}

// Number of allocations of utl_OpenReader.
constexpr int reader_allocations = 2;

// During its lifetime `good` allocations succeed, the next `bad` ones fail, and later ones succeed.
class failing_memory {
  public:
    explicit failing_memory(int good, int bad = 1'000'000'000) {
        left_ = good;
        bad_ = bad;
        crv_Calloc = [](size_t count, size_t size) -> void * {
            if (left_-- > 0 || bad_-- <= 0) return calloc(count, size);
            errno = ENOMEM;
            return nullptr;
        };
    }
    failing_memory(const failing_memory &) = delete;
    failing_memory &operator=(const failing_memory &) = delete;
    ~failing_memory() { crv_Calloc = calloc; }

  private:
    static inline int left_;
    static inline int bad_;
};

// Allocates all values of the current block, so that the next value needs an allocation.
inline void use_up_values() {
    const failing_memory none(0);
    while (crv_AllocValue()) {
    }
}

// Fixture with settings and tables as at the start of a run.
class fresh_run : public testing::Test {
  protected:
    void SetUp() override {
        crv_DBG = 0;
        crv_settings = {};
        crv_ClearColumns();
        for (crv_chart *&chart : crv_charts) chart = nullptr;
    }
    void TearDown() override { SetUp(); }
};

// Stores a column with these values in `slot` of the table.
inline crv_column *add_column(int slot, const std::vector<double> &values, const char *name = "") {
    crv_column *column = crv_AllocColumn(slot);
    snprintf(column->colname, sizeof column->colname, "%s", name);
    for (const double value : values) {
        crv_value *node = crv_AllocValue();
        node->val = value;
        (column->val_list ? column->val_cur->next : column->val_list) = node;
        column->val_cur = node;
        crv_CountValue(column);
    }
    return column;
}

inline std::vector<double> values_of(const crv_column *column) {
    std::vector<double> values;
    for (const crv_value *node = column->val_list; node; node = node->next)
        values.push_back(node->val);
    return values;
}
