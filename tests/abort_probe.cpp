// A whole process under the console abort handler: constructs an application whose abort hook
// records the call, says "ready", then polls fUpdateAbort inside a progress level for up to
// 10 s. Exit 0 after an abort with the hook called, 4 after one without it, 3 on timeout.
#include <chrono>
#include <csignal>
#include <iostream>
#include <thread>

#include <vfc/vfc.h>

namespace {

class ProbeApp : public vApp {
  public:
    ProbeApp() : vApp("Vfc", "AbortProbe", "1.0") {}
    void fNotifyAbort() override { aHookCalled = 1; }
    volatile std::sig_atomic_t aHookCalled = 0;
};

}  // namespace

int main() {
    ProbeApp app;
    vAppProgressStackDepth mark;
    app.fStartProgress(mark, 1);
    std::cout << "ready" << std::endl;
    auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (!app.fUpdateAbort()) {
        if (std::chrono::steady_clock::now() > deadline) {
            std::cout << "timed out" << std::endl;
            return 3;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    app.fEndProgress(mark);
    if (!app.aHookCalled) {
        std::cout << "aborted, hook not called" << std::endl;
        return 4;
    }
    std::cout << "aborted, hook called" << std::endl;
    return 0;
}
