// A stand-in for the web browser and the mail program in the tests of vApp::fOpenURL and
// fSendMail (standard C++ only, so it runs from any PATH):
//   vfc_open_child ARG...
// writes the name it was started by (argv[0] without folder and ".exe") and then each ARG, one a
// line, to the file VFC_OPEN_RECORD names, made whole at once by a rename. With VFC_OPEN_SLEEP=N
// it then stays up to N seconds, as a browser stays open, and ends early once the file
// VFC_OPEN_RECORD".end" appears or the record is gone (the test's folder was removed).
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

int main(int argc, char** argv) {
    const char* record = std::getenv("VFC_OPEN_RECORD");
    if (!record || !*record || argc < 1) return 2;
    std::string name = argv[0];
    name.erase(0, name.find_last_of("/\\") + 1);
    if (name.size() > 4 && (name.compare(name.size() - 4, 4, ".exe") == 0 ||
                            name.compare(name.size() - 4, 4, ".EXE") == 0))
        name.erase(name.size() - 4);
    const std::string path = record;
    {
        std::ofstream out(path + ".part", std::ios::binary);
        out << name << '\n';
        for (int i = 1; i < argc; ++i)
            out << argv[i] << '\n';
        if (!out) return 3;
    }
    if (std::rename((path + ".part").c_str(), path.c_str()) != 0) return 3;

    const char* sleep = std::getenv("VFC_OPEN_SLEEP");
    const long seconds = sleep ? std::strtol(sleep, nullptr, 10) : 0;
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(seconds);
    std::error_code ignored;
    while (std::chrono::steady_clock::now() < end && std::filesystem::exists(path, ignored) &&
           !std::filesystem::exists(path + ".end", ignored))
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    return 0;
}
