// vfc open: a URL or a local file in the user's web browser, or a new mail in the mail program.
#include <iostream>
#include <string>

#include <vfc/vfc.h>

#include "vfcTool.h"

namespace vfctool {
namespace {

const vpArgListItem kOpenOptions[] = {
    {"-mail", nullptr, "start a mail to the addresses TO... instead", false},
    {"-subject", "TEXT", "the mail's subject (with -mail)", false},
    {"-body", "TEXT", "the mail's text (with -mail)", false},
    {"-show", nullptr, "print the command that would run, and start nothing", false},
    {nullptr, nullptr, nullptr, false},
};

const char* const kOpenNotes =
    "\nA URL begins with a scheme (\"http:\", \"file:\"); anything else is a local FILE, shown as\n"
    "its absolute file: URL. The browser is the first command of BROWSER (a \":\" list, \"%s\"\n"
    "standing for the URL) whose program exists, else xdg-open; a mail goes to xdg-email, else\n"
    "xdg-open. On Windows they are the programs registered for \"http\" and \"mailto\". The\n"
    "program is started and not waited for. Exit status 0 when it started, 1 when there is\n"
    "none or it could not be started (the reason goes to standard error), 2 on bad usage.\n";

}  // namespace

int runOpen(const Args& args) {
    ParsedArgs parsed;
    int status =
        parseOptions("open", args, kOpenOptions, "URL|FILE | -mail TO...", parsed, kOpenNotes);
    if (status >= 0) return status;
    vString subject, body, unused;
    const bool mail = parsed.options.fGetOption("-mail", unused);
    const bool show = parsed.options.fGetOption("-show", unused);
    const bool hasSubject = parsed.options.fGetOption("-subject", subject);
    const bool hasBody = parsed.options.fGetOption("-body", body);
    vApp& app = vAppInfo();

    vString url;
    if (mail) {
        vSlistvString to;
        for (const vString& address : parsed.operands)
            to.fInsert(address);
        if (!show) return app.fSendMail(to, subject, body) ? kSuccess : kFailure;
        url = vApp::sfMakeMailtoURL(to, subject, body);
    } else {
        if (hasSubject || hasBody) return usageError("open", "-subject and -body need -mail");
        if (parsed.operands.size() != 1) return usageError("open", "expected one URL or FILE");
        if (!show) return app.fOpenURL(parsed.operands[0]) ? kSuccess : kFailure;
        if (!vApp::sfMakeBrowserURL(parsed.operands[0], url)) {
            reportError("open", std::string("no such file: \"") + parsed.operands[0].data() + "\"");
            return kFailure;
        }
    }
    vString command;
    if (!vApp::sfFindURLHandler(mail ? "mailto" : "http", url, command)) {
        reportError("open", mail ? "no mail program found" : "no web browser found");
        return kFailure;
    }
    std::cout << command << '\n';
    return kSuccess;
}

}  // namespace vfctool
