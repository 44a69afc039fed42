// unit/reader_support.h - fixture that reads a file and stores result and printed text.
#pragma once

#include "support.h"

class reader_test : public fresh_run {
  protected:
    // Runs `reader` with the path of a file that contains `bytes`.
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
