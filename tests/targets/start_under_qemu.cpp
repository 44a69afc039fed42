// targets/start_under_qemu.cpp - runs a program of another processor under QEMU with the argv[0] of
// this call.
//
// It runs on the build machine. A copy under the name of each program is in the directory
// "emulated" below that of the programs; CRV_QEMU is the path of QEMU. A shell script cannot do
// this: it gets its own path as $0 where a program gets the word that the user typed.
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include <unistd.h>

static constexpr int status_failed = 126;

int main(int argc, char **argv) {
    const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe");
    std::string program = self.parent_path().parent_path() / self.filename();
    std::string qemu = CRV_QEMU;
    std::string name_option = "-0";
    std::vector<char *> command = {qemu.data(), name_option.data(), argv[0], program.data()};
    command.insert(command.end(), argv + 1, argv + argc);
    command.push_back(nullptr);
    execv(CRV_QEMU, command.data());
    perror("start_under_qemu: " CRV_QEMU);
    return status_failed;
}
