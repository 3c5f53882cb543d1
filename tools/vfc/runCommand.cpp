// vfc run: runs a command with its output captured through vProcess.
#include <iostream>
#include <string>

#include <vfc/vfc.h>

#include "vfcTool.h"

namespace vfctool {
namespace {

// The command words as one command line for the tokenizer: words holding white space are put
// in double quotes (the tokenizer has no escapes, so a word with a double quote cannot pass).
bool commandLine(const Args& words, size_t from, std::string& line) {
    for (size_t i = from; i < words.size(); ++i) {
        const std::string& w = words[i];
        if (w.find('"') != std::string::npos) return false;
        bool quote = w.empty() || w.find_first_of(" \t\r\n") != std::string::npos;
        if (!line.empty()) line += ' ';
        line += quote ? '"' + w + '"' : w;
    }
    return true;
}

}  // namespace

int runRun(const Args& args) {
    std::string outPath;
    bool binary = false;
    size_t i = 0;
    // Options come before the command; everything after belongs to the command.
    for (; i < args.size(); ++i) {
        if (args[i] == "--") {
            ++i;
            break;
        }
        if (args[i] == "-out" && i + 1 < args.size())
            outPath = args[++i];
        else if (args[i] == "-binary")
            binary = true;
        else if (args[i] == "-out")
            return usageError("run", "-out needs a FILE");
        else
            break;
    }
    if (i == args.size()) return usageError("run", "a COMMAND is needed");
    std::string line;
    if (!commandLine(args, i, line))
        return usageError("run", "a command word cannot hold a double quote");
    if (binary && outPath.empty()) return usageError("run", "-binary needs -out FILE");

    vProcess process;
    vString command(line.c_str());
    bool started;
    if (outPath.empty()) {
        vString output;
        started = process.fReadPipe(command, output);
        std::cout << output << std::flush;
    } else {
        vOfstream out;
        vFile file(outPath.c_str());
        if (!(binary ? out.fOpenBinary(file) : out.fOpenText(file))) {
            reportError("run", "cannot write \"" + outPath + "\"");
            return kFailure;
        }
        started = process.fExecute(command, &out);
        if (!out.fClose()) {
            reportError("run", "writing \"" + outPath + "\" failed");
            return kFailure;
        }
    }
    if (!started) {
        vAppInfo().fLogMsg(process.aError(), 2);
        return kFailure;
    }
    return process.aExitCode().value();
}

}  // namespace vfctool
