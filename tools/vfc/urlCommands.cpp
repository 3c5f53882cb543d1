// vfc urlencode / urldecode: URL escaping of command-line texts.
#include <iostream>

#include <vfc/vfc.h>

#include "vfcTool.h"

namespace vfctool {
namespace {

int convertEach(const char* name, const Args& args, vString& (*convert)(vString&)) {
    size_t first = skipEndOfOptions(args, 0);
    if (first == args.size()) return usageError(name, "at least one TEXT is needed");
    for (size_t i = first; i < args.size(); ++i) {
        vString text(args[i].data(), args[i].size());
        std::cout << convert(text) << '\n';
    }
    return kSuccess;
}

}  // namespace

int runUrlEncode(const Args& args) {
    return convertEach("urlencode", args, vStringUtils::sfURLEncode);
}

int runUrlDecode(const Args& args) {
    return convertEach("urldecode", args, vStringUtils::sfURLDecode);
}

}  // namespace vfctool
