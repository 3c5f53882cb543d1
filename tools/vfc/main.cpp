// vfc: command-line access to the library's text, path and file facilities.
//
//   vfc -help                 lists the subcommands
//   vfc SUBCOMMAND -help      prints that subcommand's usage
//   vfc SUBCOMMAND ARGS...    runs it
#include <algorithm>
#include <cstring>
#include <iostream>

#include "consoleApp.h"
#include "vfcTool.h"

namespace vfctool {

const std::vector<Command>& commands() {
    static const std::vector<Command> all = {
        {"type", "FILE...", "print the content type detected for each FILE", nullptr, runType},
        {"path", "-from NOTATION -to NOTATION [-dir] [-list] PATH...",
         "translate each PATH from one path notation into another", nullptr, runPath},
        {"rel", "[-notation NOTATION] FROM TO | -rfc3986 FROM TO...",
         "print the relative path that leads from directory FROM to TO", nullptr, runRel},
        {"resolve", "[-notation NOTATION] BASE REL | -rfc3986 BASE REF...",
         "print REL resolved against the directory BASE", nullptr, runResolve},
        {"expand", "TEXT...", "print each TEXT with its %VAR% and $VAR references expanded",
         nullptr, runExpand},
        {"grep", "[-o] [-glob | -list] PATTERN FILE...",
         "print the lines of FILEs that match PATTERN, with their positions",
         "PATTERN is a vRegExp: single expressions separated by \"|\", matched leftmost, then\n"
         "longest. Each matching line prints as FILE:LINE:COLUMN:TEXT, where COLUMN is the\n"
         "1-based column of the first match.\n"
         "  -o      print each non-empty match as FILE:LINE:COLUMN:MATCH instead\n"
         "  -glob   PATTERN is a wildcard (* and ?), matched against the whole line\n"
         "  -list   PATTERN is a semicolon list of wildcards, such as *.htm;*.html\n"
         "FILE \"-\" reads the standard input. Exit status 0 when a line matched, 1 when none\n"
         "did or a file could not be read, 2 on bad usage.",
         runGrep},
        {"match", "[-i] PATTERNS NAME...", "print the NAMEs that a list of wildcards matches",
         nullptr, runMatch},
        {"find", "[-include LIST] [-exclude LIST] [-depth N] [-dirs] DIR",
         "print the files of a directory tree that pass wildcard lists, sorted", nullptr, runFind},
        {"ini", "FILE", "print the sections and keys of an INI file", nullptr, runIni},
        {"dump", "FILE", "print the object tree of a persistent object file",
         "Prints every object of FILE (the portable object format) as its class name and\n"
         "identifier, followed by its values; nested objects are indented under their owner,\n"
         "nil prints as \"nil\" and an object stored twice as \"@N\" (its ordinal within the\n"
         "store operation). A string prints as the quoted text stored in the file. The file is\n"
         "then read back through the library, and the exit status is 1 when that fails.",
         runDump},
        {"run", "[-out FILE [-binary]] COMMAND [ARG...]",
         "run a program with its output captured; exit with its exit code",
         "Runs COMMAND (searched in PATH; no shell) with standard output and standard error\n"
         "captured together, and prints what it wrote, or writes it to FILE with -out (carriage\n"
         "returns removed unless -binary is given). The exit status is the program's; 1 when it\n"
         "cannot be started (the reason goes to standard error), 2 on bad usage. Options must\n"
         "come before COMMAND; every word after it belongs to the command.",
         runRun},
        {"info", "", "print what the application object knows of product, user and machine",
         nullptr, runInfo},
        {"open", "[-show] URL|FILE | -mail [-subject TEXT] [-body TEXT] [-show] [TO...]",
         "show a URL or file in the web browser, or start a mail", nullptr, runOpen},
        {"urlencode", "TEXT...", "print each TEXT with URL escapes",
         "Escapes blank \" # % & ' / < > ? [ \\ ] ^ ` { | } ~ as %xx (lower-case hex).",
         runUrlEncode},
        {"urldecode", "TEXT...", "print each TEXT with its URL escapes decoded",
         "Decodes each %xx (either case) except %00; other % signs stay as written.", runUrlDecode},
    };
    return all;
}

void printUsage(std::ostream& out, const Command& command) {
    out << "usage: vfc " << command.name << ' ' << command.synopsis << "\n\n"
        << (command.details ? command.details : "") << "\n\n"
        << kEndOfOptionsNote;
}

int usageError(const char* name, const std::string& message) {
    reportError(name, message + "\n(see \"vfc " + name + " -help\")");
    return kUsage;
}

void reportError(const char* name, const std::string& message) {
    vAppInfo().fLogMsg(vString(("vfc " + std::string(name) + ": " + message).c_str()), 2);
}

const char* const kEndOfOptionsNote =
    "\"--\" ends the options: every word after it is an argument as it stands, even one that\n"
    "begins with \"-\".\n";

size_t skipEndOfOptions(const Args& args, size_t first) {
    return first < args.size() && args[first] == "--" ? first + 1 : first;
}

int parseOptions(const char* name, const Args& args, const vpArgListItem* table,
                 const char* trailing, ParsedArgs& out, const char* notes) {
    std::string program = std::string("vfc ") + name;
    auto end = std::find(args.begin(), args.end(), "--");
    std::vector<const char*> argv{program.c_str()};
    for (auto it = args.begin(); it != end; ++it)
        argv.push_back(it->c_str());
    out.options = vArgList(static_cast<int>(argv.size()), argv.data(), table, trailing);
    out.operands.clear();
    if (!out.options.fFailed()) {
        vSlistvStringIter it(out.options.fUnassigned());
        while (it.fAdvance())
            out.operands.push_back(it.aKey());
        if (end != args.end())
            for (++end; end != args.end(); ++end)
                out.operands.emplace_back(end->data(), end->size());
        return -1;
    }
    // vArgList prints its usage screen on std::cerr; asked for with -help, it is the answer and
    // goes to standard output instead.
    bool asked = out.options.fErrorlog().isNull();
    std::streambuf* saved = asked ? std::cerr.rdbuf(std::cout.rdbuf()) : nullptr;
    out.options.usage();
    std::cerr << (notes ? notes : "\n") << kEndOfOptionsNote;
    if (asked) std::cerr.rdbuf(saved);
    return asked ? kSuccess : kUsage;
}

namespace {

void printHelp(std::ostream& out) {
    out << "usage: vfc SUBCOMMAND [ARGS...]\n       vfc SUBCOMMAND -help\n\nSubcommands:\n";
    for (const Command& c : commands()) {
        std::string head = std::string("  ") + c.name;
        out << head << std::string(head.size() < 14 ? 14 - head.size() : 1, ' ') << c.summary
            << '\n';
    }
}

}  // namespace
}  // namespace vfctool

int main(int argc, char** argv) {
    using namespace vfctool;
    // The one application object: messages, progress and the abort handler go through it.
    ConsoleApp app;
    if (argc < 2) {
        printHelp(std::cerr);
        return kUsage;
    }
    if (!std::strcmp(argv[1], "-help")) {
        printHelp(std::cout);
        return kSuccess;
    }
    for (const Command& c : commands()) {
        if (std::strcmp(argv[1], c.name) != 0) continue;
        Args args(argv + 2, argv + argc);
        app.setLabel(std::string("vfc ") + c.name);
        if (c.details && args.size() == 1 && args[0] == "-help") {
            printUsage(std::cout, c);
            return kSuccess;
        }
        return c.run(args);
    }
    app.fLogMsg(vString((std::string("vfc: unknown subcommand \"") + argv[1] + "\"").c_str()), 2);
    printHelp(std::cerr);
    return kUsage;
}
