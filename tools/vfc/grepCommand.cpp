// vfc grep: lines of files that match a vRegExp.
#include <algorithm>
#include <cstddef>
#include <fstream>
#include <iostream>
#include <string>

#include <vfc/vfc.h>

#include "vfcTool.h"

namespace vfctool {
namespace {

struct GrepOptions {
    bool eachMatch = false;
    int form = 0;  // 0 alternation, 1 wildcard, 2 semicolon list
};

// Prints the matches of re in one line; true when there was one.
bool grepLine(const std::string& file, size_t lineNo, const vString& line, const vRegExp& re,
              bool eachMatch) {
    size_t extent = 0;
    size_t first = re.index(line, &extent, 0);
    if (first == RW_NPOS) return false;
    if (!eachMatch) {
        std::cout << file << ':' << lineNo << ':' << first + 1 << ':' << line << '\n';
        return true;
    }
    vSeRe cursor(line);
    while (cursor.fFind(re)) {
        vSubString match = cursor.fSubString();
        if (match.length() > 0)
            std::cout << file << ':' << lineNo << ':' << match.start() + 1 << ':' << match << '\n';
        cursor.fAdvance();
    }
    return true;
}

// Greps one stream; lines end at LF, and a CR before the LF is not part of the line.
bool grepStream(std::istream& in, const std::string& file, const vRegExp& re, bool eachMatch) {
    bool matched = false;
    std::string raw;
    for (size_t lineNo = 1; std::getline(in, raw); ++lineNo) {
        if (!raw.empty() && raw.back() == '\r') raw.pop_back();
        matched |= grepLine(file, lineNo, vString(raw.data(), raw.size()), re, eachMatch);
    }
    return matched;
}

}  // namespace

int runGrep(const Args& args) {
    GrepOptions options;
    size_t i = 0;
    for (; i < args.size() && args[i].size() > 1 && args[i][0] == '-'; ++i) {
        if (args[i] == "--") {
            ++i;
            break;
        }
        if (args[i] == "-o")
            options.eachMatch = true;
        else if (args[i] == "-glob")
            options.form = 1;
        else if (args[i] == "-list")
            options.form = 2;
        else
            return usageError("grep", "unknown option \"" + args[i] + "\"");
    }
    if (args.size() - i < 2)
        return usageError("grep", "a PATTERN and at least one FILE are needed");
    vString pattern(args[i].data(), args[i].size());
    vRegExp re = options.form == 0 ? vRegExp(pattern) : vRegExp(pattern, options.form == 2);
    bool matched = false;
    bool unreadable = false;
    vApp& app = vAppInfo();
    // Progress, and with it a polled interrupt, only without the standard input: a read from
    // it can wait for ever, and Ctrl-C must then end the tool at once.
    vAppProgressStackDepth mark;
    if (std::find(args.begin() + static_cast<std::ptrdiff_t>(i) + 1, args.end(), "-") == args.end())
        app.fStartProgress(mark, static_cast<int>(args.size() - i - 1));
    for (++i; i < args.size(); ++i) {
        if (app.fUpdateAbort()) {
            reportError("grep", "interrupted");
            unreadable = true;
            break;
        }
        app.fStepProgress();
        if (args[i] == "-") {
            matched |= grepStream(std::cin, "-", re, options.eachMatch);
            continue;
        }
        std::ifstream in(args[i], std::ios::binary);
        if (!in) {
            reportError("grep", "cannot read \"" + args[i] + "\"");
            unreadable = true;
            continue;
        }
        matched |= grepStream(in, args[i], re, options.eachMatch);
    }
    app.fEndProgress(mark);
    return matched && !unreadable ? kSuccess : kFailure;
}

}  // namespace vfctool
