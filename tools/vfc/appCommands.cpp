// vfc info / expand: what the application object gathered, and variable expansion.
#include <iostream>
#include <string>
#include <vector>

#include <vfc/vfc.h>

#include "vfcTool.h"

namespace vfctool {
namespace {

const vpArgListItem kNoOptions[] = {
    {nullptr, nullptr, nullptr, false},
};

void line(const char* label, const vString& value) {
    std::cout << label << ": " << value << '\n';
}

}  // namespace

int runInfo(const Args& args) {
    ParsedArgs parsed;
    int status = parseOptions("info", args, kNoOptions, "", parsed);
    if (status >= 0) return status;
    if (!parsed.operands.empty()) return usageError("info", "no arguments expected");
    const vApp& app = vAppInfo();
    line("product", app.productUserAgent());
    line("product directory", app.productDir().fDOSPath());
    line("executable directory", app.executableDir().fDOSPath());
    line("user", app.userLogin());
    line("user name", app.userName());
    line("user directory", app.userDir().fDOSPath());
    line("organization", app.userOrganization());
    line("machine", app.machineName());
    line("operating system", app.machineOS());
    line("processor", app.machineCPU());
    line("language", app.machineLanguage());
    line("platform", app.platformTypeString());
    line("language preference", app.productLangName());
    return kSuccess;
}

int runExpand(const Args& args) {
    ParsedArgs parsed;
    int status = parseOptions("expand", args, kNoOptions, "TEXT...", parsed,
                              "\nExpands %NAME% and $NAME references (a $NAME ends at $ / : or "
                              "\\):\nVORLANDIXHOME is the product directory, then come "
                              "environment variables,\nthen CSIDL_PERSONAL (documents) and "
                              "CSIDL_APPDATA (configuration folder).\n");
    if (status >= 0) return status;
    std::vector<vString> texts = parsed.operands;
    if (texts.empty()) return usageError("expand", "at least one TEXT is needed");
    for (vString& text : texts) {
        vpcUserEnvExpand(text);
        std::cout << text << '\n';
    }
    return kSuccess;
}

}  // namespace vfctool
