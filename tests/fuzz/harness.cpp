// fuzz/harness.cpp - replaces library calls of the program, with the help of the linker, and runs
// parts of it in a temporary directory.
#include "harness.h"

#include "records/chart.h"
#include "records/column.h"
#include "records/settings.h"
#include "system/console.h"
#include "system/memory.h"

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <dirent.h>
#include <map>
#include <set>
#include <sys/stat.h>
#include <unistd.h>

namespace {

struct run_ended {
    int status;
};

struct open_things {
    std::map<int, std::string> files; // descriptors that the program opened, with their paths
    std::set<FILE *> streams;
    std::set<void *> memory; // except blocks of values
};

} // namespace

static bool inside;
static sandbox current;
static outcome result;
static open_things left_open;
static int64_t reads;
static int64_t allocations;              // except blocks of values
static std::vector<void *> value_blocks; // nodes come from the last one, in later runs too

// ----- replaced by the linker

extern "C" {
FILE *__real_fopen(const char *path, const char *mode);
int __real_fclose(FILE *stream);
int __real_open(const char *path, int flags, ...);
ssize_t __real_read(int file, void *to, size_t size);
void __real_free(void *block);
int __real_close(int file);

// The fuzzer has files of its own, which it opens outside the sandbox.
static bool escapes_sandbox(const char *path) {
    if (!inside) return false;
    if (strncmp(path, "./", 2) == 0) path += 2;
    if (!strchr(path, '/')) return false;
    errno = EACCES;
    return true;
}

FILE *__wrap_fopen(const char *path, const char *mode) {
    if (escapes_sandbox(path)) return nullptr;
    FILE *stream = __real_fopen(path, mode);
    if (stream && inside) left_open.streams.insert(stream);
    return stream;
}

int __wrap_fclose(FILE *stream) {
    left_open.streams.erase(stream);
    return __real_fclose(stream);
}

int __wrap_open(const char *path, int flags, ...) {
    const int file = escapes_sandbox(path) ? -1 : __real_open(path, flags);
    if (file >= 0 && inside) left_open.files[file] = path;
    return file;
}

int __wrap_close(int file) {
    left_open.files.erase(file);
    return __real_close(file);
}

// A file counts as read when its first read succeeds.
static void record_read(int file) {
    const auto opened = left_open.files.find(file);
    if (opened == left_open.files.end() || opened->second.empty()) return;
    result.files_read.push_back(opened->second);
    opened->second.clear();
}

ssize_t __wrap_read(int file, void *to, size_t size) {
    if (!inside) return __real_read(file, to, size);
    if (current.bad_read > 0 && ++reads >= current.bad_read) {
        errno = EIO;
        return -1;
    }
    if (current.read_piece > 0 && current.read_piece < size) size = current.read_piece;
    const ssize_t got = __real_read(file, to, size);
    if (got >= 0) record_read(file);
    return got;
}

void __wrap_free(void *block) {
    left_open.memory.erase(block);
    __real_free(block);
}

time_t __wrap_time(time_t *out) {
    constexpr time_t a_day = 1'000'000'000;
    if (out) *out = a_day;
    return a_day;
}
}

// ----- replacements of system/console

void utl_Quit(int status) { throw run_ended{status}; }

utl_command_end utl_RunCommand(const char *command) {
    const std::string_view text = command;
    if (text.starts_with("/bin/ls > crv_temp.tmp ")) {
        FILE *out = __real_fopen("crv_temp.tmp", "w");
        fwrite(current.listing.data(), 1, current.listing.size(), out);
        __real_fclose(out);
    } else if (text == "rm crv_temp.tmp") {
        unlink("crv_temp.tmp");
    } else {
        result.commands.emplace_back(command);
    }
    return utl_command_end::succeeded;
}

// Whether a block of values is needed depends on the runs before: it is always given.
static void *give_memory(size_t count, size_t size) {
    void *block = calloc(count, size);
    if (count > 1 && size == sizeof(crv_value)) {
        value_blocks.push_back(block);
    } else if (++allocations == current.bad_allocation) {
        __real_free(block);
        errno = ENOMEM;
        return nullptr;
    } else {
        left_open.memory.insert(block);
    }
    return block;
}

// ----- the temporary directory

static std::string directory;

static void remove_directory() {
    if (chdir("/") == 0) rmdir(directory.c_str());
}

static void enter_directory() {
    if (!directory.empty()) return;
    const char *parents[] = {"/dev/shm", getenv("TMPDIR"), "/tmp"};
    for (const char *parent : parents) {
        if (!parent) continue;
        directory = std::string(parent) + "/crv_fuzz_XXXXXX";
        if (mkdtemp(directory.data()) && chdir(directory.c_str()) == 0) {
            atexit(remove_directory);
            return;
        }
    }
    require(false, "there is a temporary directory");
}

static void write_file(const std::string &name, const std::string &bytes) {
    FILE *out = __real_fopen(name.c_str(), "w");
    require(out, "a file can be written");
    fwrite(bytes.data(), 1, bytes.size(), out);
    __real_fclose(out);
}

static std::string file_bytes(const std::string &name) {
    std::string bytes;
    FILE *in = __real_fopen(name.c_str(), "r");
    if (!in) return bytes;
    char piece[65536];
    while (const size_t got = fread(piece, 1, sizeof piece, in)) bytes.append(piece, got);
    __real_fclose(in);
    return bytes;
}

// Moves all files of the directory to the results.
static void collect_files() {
    DIR *all = opendir(".");
    while (const dirent *entry = readdir(all)) {
        const std::string name = entry->d_name;
        if (name == "." || name == "..") continue;
        result.files[name] = file_bytes(name);
        unlink(name.c_str());
    }
    closedir(all);
}

// ----- the sandbox

static void release_resources() {
    while (!left_open.files.empty()) __wrap_close(left_open.files.begin()->first);
    while (!left_open.streams.empty()) __wrap_fclose(*left_open.streams.begin());
    for (void *block : left_open.memory) __real_free(block);
    left_open.memory.clear();
    while (value_blocks.size() > 1) {
        __real_free(value_blocks.front());
        value_blocks.erase(value_blocks.begin());
    }
}

static void set_up_tables() {
    crv_DBG = 0;
    crv_settings = {};
    crv_ClearColumns();
    for (crv_chart *&chart : crv_charts) chart = nullptr;
}

outcome run_sandboxed(const sandbox &box, const std::map<std::string, std::string> &files,
                      const std::function<void()> &part) {
    enter_directory();
    set_up_tables();
    current = box;
    result = {};
    allocations = 0;
    reads = 0;
    for (const auto &[name, bytes] : files) write_file(name, bytes);

    FILE *const streams[] = {stdin, stdout, stderr};
    char *texts[2] = {};
    size_t sizes[2] = {};
    stdin = fmemopen(current.input.data(), current.input.size(), "r");
    stdout = open_memstream(&texts[0], &sizes[0]);
    stderr = open_memstream(&texts[1], &sizes[1]);
    crv_Calloc = give_memory;
    inside = true;
    try {
        part();
    } catch (const run_ended &end) {
        result.quit = true;
        result.status = end.status;
    }
    inside = false;
    crv_Calloc = calloc;
    for (FILE *stream : {stdin, stdout, stderr}) __real_fclose(stream);
    stdin = streams[0];
    stdout = streams[1];
    stderr = streams[2];
    result.out.assign(texts[0], sizes[0]);
    result.err.assign(texts[1], sizes[1]);
    for (char *text : texts) __real_free(text);
    release_resources();
    collect_files();
    return result;
}

// ----- input and findings

std::string take_text(std::string_view *rest, char separator) {
    const size_t length = rest->find(separator);
    std::string text(rest->substr(0, length));
    text.resize(strlen(text.c_str()));
    rest->remove_prefix(length == rest->npos ? rest->size() : length + 1);
    return text;
}

int take_integer(std::string_view *rest, char separator) {
    return atoi(take_text(rest, separator).c_str());
}

double take_number(std::string_view *rest, char separator) {
    return atof(take_text(rest, separator).c_str());
}

void require(bool holds, const char *property) {
    if (holds) return;
    inside = false; // the fuzzer writes the input to a directory of its own
    dprintf(STDERR_FILENO, "does not hold: %s\n", property);
    abort();
}
