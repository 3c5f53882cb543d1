#include "vfc/testing/TempDir.h"

#include "vfc/os/platform.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>

namespace vfc {
namespace testing {

// Named with forward slashes on every platform ("C:/users/.../Temp/vfc-test-1a2b3c4d" on
// Windows), so that tests can build paths by appending "/" and a name.
TempDir::TempDir() {
    std::error_code error;
    const std::filesystem::path base = std::filesystem::temp_directory_path(error);
    if (error) return;
    std::random_device seed;
    std::mt19937_64 random(seed());
    for (int attempt = 0; attempt < 100; ++attempt) {
        char name[32];
        std::snprintf(name, sizeof name, "vfc-test-%08llx",
                      static_cast<unsigned long long>(random() & 0xffffffffu));
        const std::filesystem::path candidate = base / name;
        if (std::filesystem::create_directory(candidate, error)) {
            aPath = candidate.generic_string();
            return;
        }
    }
}

TempDir::~TempDir() {
    std::error_code ignored;
    if (!aPath.empty()) std::filesystem::remove_all(aPath, ignored);
}

std::string TempDir::write(const std::string& name, const std::string& bytes) const {
    std::string p = file(name);
    std::ofstream out(p, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return p;
}

std::string TempDir::makeFifo(const std::string& name) const {
    // Windows has no FIFOs in its file system.
    if (vfc::os::kWindows) return std::string();
    std::string p = file(name);
    std::string command = "mkfifo '" + p + "' 2>/dev/null";
    return std::system(command.c_str()) == 0 ? p : std::string();
}

std::string TempDir::read(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

}  // namespace testing
}  // namespace vfc
