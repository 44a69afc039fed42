// unit/reader_support.h - a test that reads files and keeps what was printed.
#pragma once

#include "support.h"

class reader_test : public fresh_run {
  protected:
    // Runs `reader` with the path of a file that holds `bytes`.
    template <typename reader_call> int read_with(reader_call reader, const std::string &bytes) {
        const text_file file(bytes);
        path = file.path();
        testing::internal::CaptureStderr();
        out = stdout_of([&] { count = reader(file.path()); });
        err = testing::internal::GetCapturedStderr();
        return count;
    }

    int count = 0;
    std::string path, out, err;
};

using numbers = std::vector<double>;
