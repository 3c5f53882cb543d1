// A second process for the named-mutex tests:
//   vfc_mutex_child NAME READY GO HOW
// takes the named mutex NAME through vApp::fSetMutexes, then writes "held" (or "refused") to the
// file READY, made whole at once by a rename. It then waits (at most 60 s) for the file GO to
// appear, removes READY to say it saw GO, and ends as HOW says: "release" releases and exits
// with 0, "exit" ends at once with _Exit (nothing released, as in a crash), "abort" calls abort.
// With "thread" the mutex is taken by a thread that ends at once, and the program releases it
// when told to end.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <thread>

#include "vfc/app/vApp.h"

int main(int argc, char** argv) {
    if (argc != 5) return 2;
    const std::string ready = argv[2];
    const std::string go = argv[3];
    const std::string how = argv[4];
    vApp app("vfc", "MutexChild", "1.0");
    vSetvString names;
    names.fInsert(vString(argv[1]));
    bool held = false;
    if (how == "thread")
        std::thread([&] { held = app.fSetMutexes(names); }).join();
    else
        held = app.fSetMutexes(names);
    {
        std::ofstream out(ready + ".part");
        out << (held ? "held" : "refused");
    }
    std::rename((ready + ".part").c_str(), ready.c_str());
    if (!held) return 1;
    for (int i = 0; i < 6000 && !std::ifstream(go); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    std::remove(ready.c_str());
    if (how == "exit") std::_Exit(3);
    if (how == "abort") std::abort();
    app.fClearMutexes();
    return 0;
}
