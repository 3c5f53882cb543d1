#include "consoleApp.h"

#include <unistd.h>

#include <iostream>

namespace vfctool {

namespace {
constexpr int kBarWidth = 20;
}

ConsoleApp::ConsoleApp() : vApp("vfc", "vfc", VFC_TOOL_VERSION), aTerminal(::isatty(2) == 1) {}

void ConsoleApp::fNotifyAbort() {
    if (!aPolled) ::_exit(130);
}

void ConsoleApp::fStartProgress(int count) {
    vApp::fStartProgress(count);
    aPolled = 1;
}

void ConsoleApp::fSetProgress(int value) {
    if (!aTerminal || value == aShown) return;
    aShown = value;
    int filled = value * kBarWidth / 100;
    std::cerr << '\r' << aLabel << " [" << std::string(static_cast<size_t>(filled), '#')
              << std::string(static_cast<size_t>(kBarWidth - filled), '.') << "] "
              << (value < 10 ? "  " : value < 100 ? " " : "") << value << '%' << std::flush;
    aDrawn = true;
}

void ConsoleApp::fEndProgress() {
    vApp::fEndProgress();
    if (fHasProgress()) return;
    aPolled = 0;
    erase();
}

void ConsoleApp::fLogMsg(const vString& text, int level) {
    erase();
    vApp::fLogMsg(text, level);
}

void ConsoleApp::erase() {
    if (!aDrawn) return;
    std::cerr << '\r' << std::string(aLabel.size() + kBarWidth + 8, ' ') << '\r' << std::flush;
    aDrawn = false;
    aShown = -1;
}

}  // namespace vfctool
