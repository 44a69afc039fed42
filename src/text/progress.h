// text/progress.h - a status line that shows how much of a file has been read, if reading takes
// longer than a second.
#pragma once

#include <cstdint>
#include <string>

// The progress of a file that is read. Times are in milliseconds of a clock that only goes forward.
struct utl_progress {
    const char *name;   // path of the file; valid while it is read
    uint64_t size;      // bytes; 0 if it is not known, as that of a pipe
    uint64_t bytes;     // read so far
    int64_t start_time; // when reading began
    int64_t next_time;  // when the line may be shown or renewed
    bool can_wait;      // a read may wait for a writer
};

// Returns the progress of an open file `file` of the path `name`, of which nothing has been read.
// Nothing is shown of input that is typed on a terminal.
utl_progress utl_StartProgress(int file, const char *name);

// Waits until a read does not block, and renews the line meanwhile. Returns at once if that may not
// happen or no line can be shown.
void utl_AwaitProgress(utl_progress *progress, int file);

// Counts bytes that were read. Shows or renews the line, at most ten times a second and not in the
// first second, if standard error is a terminal.
void utl_CountProgress(utl_progress *progress, uint64_t bytes);

// Returns the text of the line after `milliseconds`, of `columns` columns at most: share, MB/s
// (10^6 bytes), time left and name; of a file of unknown size, MB and name. A name that does not
// fit loses its start. Control characters and bytes that are no UTF-8 are replaced. Characters that
// may be wide count as two columns. Stores the number of columns in *filled.
std::string utl_ProgressText(const utl_progress &progress, int64_t milliseconds, int columns,
                             int *filled);
