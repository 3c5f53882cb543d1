// Uses the installed library through its umbrella header only.
#include <iostream>

#include <vfc/vfc.h>

int main() {
    vString path("docs/Release Notes.html");
    vStringUtils::sfURLEncode(path);
    size_t extent = 0;
    size_t at = path.index(aExtensionTemplate(), &extent);
    std::cout << path << ' ' << at << ' ' << extent << '\n';
    return path == "docs%2fRelease%20Notes.html" && at == 23 && extent == 4 ? 0 : 1;
}
