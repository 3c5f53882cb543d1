// vfc find: the files of a directory tree that pass wildcard lists, in a stable order.
#include <cstdlib>
#include <iostream>
#include <string>

#include <vfc/vfc.h>

#include "vfcTool.h"

namespace vfctool {
namespace {

const vpArgListItem kFindOptions[] = {
    {"-include", "LIST", "yield only names that match a wildcard of LIST", false},
    {"-exclude", "LIST", "skip names that match a wildcard of LIST, and do not enter such folders",
     false},
    {"-depth", "N", "enter folders N levels deep (0: DIR's own entries; default: no limit)", false},
    {"-dirs", nullptr, "print folders too, each before its contents", false},
    {nullptr, nullptr, nullptr, false},
};

const char* const kFindNotes =
    "\nLIST is a list of wildcards separated by \";\", such as *.htm;*.html; each is matched\n"
    "against a name (not a path), \"*\" standing for any text. Entries print one a line as\n"
    "DIR/PATH, each folder's entries sorted by name and followed at once by a subfolder's.\n"
    "Links to folders are printed with -dirs but never entered. A folder that cannot be read\n"
    "is reported and skipped. Exit status 0 when something was printed, 1 when nothing\n"
    "matched or DIR cannot be read, 2 on bad usage.\n";

// The wildcards of a ";" list, empty items left out.
vMatchList matchListOf(const vString& list) {
    vMatchList out;
    size_t start = 0;
    for (size_t i = 0; i <= list.length(); ++i) {
        if (i < list.length() && list(i) != ';') continue;
        if (i > start) out.fInsert(vString(list.data() + start, i - start));
        start = i + 1;
    }
    return out;
}

bool printPath(const vFile& file, void* count) {
    std::cout << file.fPath() << '\n';
    ++*static_cast<size_t*>(count);
    return true;
}

}  // namespace

int runFind(const Args& args) {
    ParsedArgs parsed;
    int status = parseOptions("find", args, kFindOptions, "DIR", parsed, kFindNotes);
    if (status >= 0) return status;
    if (parsed.operands.size() != 1) return usageError("find", "expected one DIR");
    vDirHierFilter filter(vFile(parsed.operands[0]));
    vString value;
    if (parsed.options.fGetOption("-include", value)) filter.fSetInclude(matchListOf(value));
    if (parsed.options.fGetOption("-exclude", value)) filter.fSetExclude(matchListOf(value));
    if (parsed.options.fGetOption("-depth", value)) {
        const char* text = value.data();
        char* end = nullptr;
        const long depth = std::strtol(text, &end, 10);
        if (!*text || *end || depth < -1000000 || depth > 1000000)
            return usageError("find",
                              std::string("-depth needs a whole number, not \"") + text + "\"");
        filter.fSetDepth(static_cast<int>(depth));
    }
    filter.fSetDirectories(parsed.options.fGetOption("-dirs", value));
    size_t count = 0;
    if (!filter.fWalk(printPath, &count)) {
        reportError("find", std::string("cannot read \"") + parsed.operands[0].data() + "\"");
        return kFailure;
    }
    return count > 0 ? kSuccess : kFailure;
}

}  // namespace vfctool
