// A child program for the vProcess tests, so that they need no shell and run the same on every
// platform. Its arguments are commands, carried out in order:
//   out TEXT    writes TEXT to standard output (\n, \r and \\ decoded), then flushes
//   err TEXT    the same on standard error
//   bytes N     writes N bytes of kPattern repeated to standard output
//   exit N      ends with exit code N (after the last command it ends with 0)
//   signal      raises SIGTERM, whose default action ends the program
//   sleep MS    sleeps MS milliseconds
//   close       closes standard output and standard error
//   touch FILE  creates FILE (empty)
//   stdin       reads standard input to its end and writes "eof" when it held nothing, "read N"
//               when it held N bytes, "error" when it could not be read
//   pid         writes the process id as /proc/self names it ("?" where there is none)
//   fds         writes a line "N TARGET" for each open descriptor of /proc/self/fd (nothing where
//               there is none)
// Output goes through the C streams as they are: on Windows text-mode standard output writes
// each line feed as carriage return and line feed. An unknown command ends it with code 120.
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>
#include <thread>

namespace {

// The bytes "bytes N" repeats; 36 long, so that a lost or repeated block of a power-of-two size
// shifts everything after it.
const char kPattern[] = "0123456789abcdefghijklmnopqrstuvwxyz";

std::string decode(const std::string& text) {
    std::string bytes;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\\' && i + 1 < text.size()) {
            char c = text[++i];
            bytes += c == 'n' ? '\n' : c == 'r' ? '\r' : c;
        } else {
            bytes += text[i];
        }
    }
    return bytes;
}

void put(std::FILE* stream, const std::string& bytes) {
    std::fwrite(bytes.data(), 1, bytes.size(), stream);
    std::fflush(stream);
}

void writePattern(unsigned long n) {
    std::string block;
    const std::size_t period = sizeof kPattern - 1;
    while (block.size() < 64 * period)
        block += kPattern;
    // Whole blocks keep the pattern's phase, as block is a multiple of its length.
    while (n > 0) {
        std::size_t chunk = n < block.size() ? n : block.size();
        std::fwrite(block.data(), 1, chunk, stdout);
        n -= chunk;
    }
    std::fflush(stdout);
}

std::string readStdin() {
    char buffer[512];
    std::size_t total = 0;
    std::size_t got;
    while ((got = std::fread(buffer, 1, sizeof buffer, stdin)) > 0)
        total += got;
    if (std::ferror(stdin)) return "error";
    return total == 0 ? "eof" : "read " + std::to_string(total);
}

std::string processId() {
    std::error_code error;
    std::filesystem::path self = std::filesystem::read_symlink("/proc/self", error);
    return error ? "?" : self.string();
}

std::string descriptors() {
    std::string lines;
    std::error_code error;
    for (std::filesystem::directory_iterator it("/proc/self/fd", error), end; !error && it != end;
         it.increment(error)) {
        std::error_code ignored;
        lines += it->path().filename().string() + " " +
                 std::filesystem::read_symlink(it->path(), ignored).string() + "\n";
    }
    return lines;
}

}  // namespace

int main(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        const std::string command = argv[i];
        const bool hasValue = i + 1 < argc;
        if (command == "out" && hasValue) {
            put(stdout, decode(argv[++i]));
        } else if (command == "err" && hasValue) {
            put(stderr, decode(argv[++i]));
        } else if (command == "bytes" && hasValue) {
            writePattern(std::strtoul(argv[++i], nullptr, 10));
        } else if (command == "exit" && hasValue) {
            std::exit(std::atoi(argv[++i]));
        } else if (command == "signal") {
            std::fflush(nullptr);
            std::raise(SIGTERM);
        } else if (command == "sleep" && hasValue) {
            std::this_thread::sleep_for(std::chrono::milliseconds(std::atoi(argv[++i])));
        } else if (command == "close") {
            std::fclose(stdout);
            std::fclose(stderr);
        } else if (command == "touch" && hasValue) {
            std::ofstream(argv[++i]).close();
        } else if (command == "stdin") {
            put(stdout, readStdin());
        } else if (command == "pid") {
            put(stdout, processId());
        } else if (command == "fds") {
            put(stdout, descriptors());
        } else {
            std::fprintf(stderr, "vProcessChild: unknown command %s\n", command.c_str());
            return 120;
        }
    }
    return 0;
}
