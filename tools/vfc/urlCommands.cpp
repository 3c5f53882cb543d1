// vfc urlencode / urldecode: URL escaping of command-line texts.
#include <iostream>

#include <vfc/vfc.h>

#include "vfcTool.h"

namespace vfctool {
namespace {

int convertEach(const char* name, const Args& args, vString& (*convert)(vString&)) {
    if (args.empty()) return usageError(name, "at least one TEXT is needed");
    for (const std::string& arg : args) {
        vString text(arg.data(), arg.size());
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
