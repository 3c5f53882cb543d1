#include "vfc/files/vChangeDir.h"

#include <string>

#include "vfc/os/os.h"

vChangeDir::vChangeDir(const vFile& dir) {
    std::string previous;
    if (!vfc::os::CurrentDirectory(previous) || previous.empty()) return;
    if (!vfc::os::ChangeDirectory(dir.fPath().data())) return;
    aPrevious = vFile(vString(previous.data(), previous.size()));
}

vChangeDir::~vChangeDir() {
    if (fOK()) vfc::os::ChangeDirectory(aPrevious.fPath().data());
}
