// system/output_file_posix.cpp - output files by a temporary file of mkstemp and rename.
#include "system/output_file.h"

#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

static constexpr mode_t permission_bits = 07777;
static constexpr mode_t default_permissions = 0666;

// The temporary file that is not yet moved, for the end of the program and for signals; empty
// without one. A path that is too long is not noted.
static char unfinished[PATH_MAX];

static void remove_unfinished() {
    if (unfinished[0] != '\0') unlink(unfinished);
    unfinished[0] = '\0';
}

// The signal has its default effect again, and comes when this has returned.
static void end_by_signal(int number) {
    remove_unfinished();
    raise(number);
}

// Removes the temporary file if the program ends before it is moved. A limit on the size of files
// becomes an error of the write instead of a signal. Signals that are ignored stay so.
static void guard_unfinished(const std::string &path) {
    if (path.size() >= sizeof unfinished) return;
    static_cast<void>(atexit(remove_unfinished));
    for (const int number : {SIGHUP, SIGINT, SIGTERM}) {
        struct sigaction action = {};
        if (sigaction(number, nullptr, &action) != 0 || action.sa_handler != SIG_DFL) continue;
        action.sa_handler = end_by_signal;
        action.sa_flags = static_cast<int>(SA_RESETHAND);
        sigaction(number, &action, nullptr);
    }
    signal(SIGXFSZ, SIG_IGN);
    memcpy(unfinished, path.c_str(), path.size() + 1);
}

static mode_t permissions_of_new_files() {
    const mode_t mask = umask(0);
    umask(mask);
    return default_permissions & ~mask;
}

static bool open_direct(utl_output_file *file) {
    file->stream = fopen(file->path.c_str(), "we");
    return file->stream != nullptr;
}

// Opens the temporary file with the permissions `mode`.
static bool open_beside(mode_t mode, utl_output_file *file) {
    const size_t slash = file->path.rfind('/');
    file->temporary = file->path.substr(0, slash == std::string::npos ? 0 : slash + 1);
    file->temporary += ".crv-XXXXXX";
    const int descriptor = mkstemp(file->temporary.data());
    if (descriptor < 0) return false;
    guard_unfinished(file->temporary);
    fcntl(descriptor, F_SETFD, FD_CLOEXEC);
    fchmod(descriptor, mode);
    file->stream = fdopen(descriptor, "w");
    if (file->stream) return true;
    close(descriptor);
    remove_unfinished();
    return false;
}

bool utl_OpenOutput(const char *path, utl_output_file *file) {
    *file = {};
    file->path = path;
    struct stat status = {};
    if (lstat(path, &status) != 0)
        return errno == ENOENT && open_beside(permissions_of_new_files(), file);
    // A link to nothing is opened directly, which makes the file that it names.
    if (stat(path, &status) != 0 || !S_ISREG(status.st_mode)) return open_direct(file);
    if (access(path, W_OK) != 0) return false;
    char *target = realpath(path, nullptr);
    if (!target) return false;
    file->path = target;
    free(target);
    return open_beside(status.st_mode & permission_bits, file);
}

bool utl_CloseOutput(utl_output_file *file) {
    const bool written = utl_CloseStream(file->stream);
    if (file->temporary.empty()) return written;
    if (written && rename(file->temporary.c_str(), file->path.c_str()) == 0) {
        unfinished[0] = '\0';
        return true;
    }
    const int error = errno;
    unlink(file->temporary.c_str());
    unfinished[0] = '\0';
    errno = error;
    return false;
}

void utl_DiscardOutput(utl_output_file *file) {
    fclose(file->stream);
    if (!file->temporary.empty()) unlink(file->temporary.c_str());
    unfinished[0] = '\0';
}
