#include "vfc/app/vpDebug.h"

#include <cstdlib>
#include <cstring>
#include <iostream>
#include <mutex>

#include "vfc/text/vOfstream.h"

namespace {

// The channel's state; made on first use and kept to the end of the process, so that lines
// printed from static destructors still have somewhere to go.
struct Channel {
    std::mutex lock;
    bool read = false;
    bool on = false;
    bool toFile = false;
    vOfstream file;

    // Reads VFC_DEBUG when it was not read yet. Called under the lock.
    void configure() {
        if (read) return;
        read = true;
        on = toFile = false;
        const char* v = std::getenv("VFC_DEBUG");
        if (!v || !*v || std::strcmp(v, "0") == 0) return;
        if (std::strcmp(v, "1") == 0 || std::strcmp(v, "stderr") == 0) {
            on = true;
            return;
        }
        on = toFile = file.fOpenBinaryAppend(vFile(v));
    }
};

Channel& channel() {
    static Channel* c = new Channel;
    return *c;
}

}  // namespace

bool vpDebug::sfOn() {
    Channel& c = channel();
    std::lock_guard<std::mutex> guard(c.lock);
    c.configure();
    return c.on;
}

void vpDebug::sfPrint(const vString& text) {
    Channel& c = channel();
    std::lock_guard<std::mutex> guard(c.lock);
    c.configure();
    if (!c.on) return;
    if (c.toFile) {
        c.file.fWrite(text.data(), static_cast<unsigned>(text.length()));
        c.file.fWrite("\n", 1);
        c.file.flush();
    } else {
        std::cerr.write(text.data(), static_cast<std::streamsize>(text.length()));
        std::cerr << '\n' << std::flush;
    }
}

void vpDebug::sfReset() {
    Channel& c = channel();
    std::lock_guard<std::mutex> guard(c.lock);
    if (c.toFile) c.file.fClose();
    c.read = false;
    c.on = c.toFile = false;
}
