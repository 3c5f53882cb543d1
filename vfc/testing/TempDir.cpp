#include "vfc/testing/TempDir.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

namespace vfc {
namespace testing {

TempDir::TempDir() {
    std::string pattern = (std::filesystem::temp_directory_path() / "vfc-test-XXXXXX").string();
    std::vector<char> name(pattern.begin(), pattern.end());
    name.push_back('\0');
    if (::mkdtemp(name.data())) aPath = name.data();
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
