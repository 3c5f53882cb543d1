// vfc run: runs a command with its output captured through vProcess.
#include <iostream>
#include <string>

#include <vfc/vfc.h>

#include "vfcTool.h"

namespace vfctool {
namespace {

// The child's output as it goes to the console. On Windows standard output is in text mode and
// writes every line feed as CR LF, so the CR of each CR LF is taken out first: the child's bytes
// then reach the console unchanged, as they do on POSIX.
std::string consoleText(const vString& output) {
    std::string text(output.data(), output.length());
    if (!vfc::os::kWindows) return text;
    std::string kept;
    kept.reserve(text.size());
    for (size_t k = 0; k < text.size(); ++k)
        if (!(text[k] == '\r' && k + 1 < text.size() && text[k + 1] == '\n')) kept += text[k];
    return kept;
}

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
        std::cout << consoleText(output) << std::flush;
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
