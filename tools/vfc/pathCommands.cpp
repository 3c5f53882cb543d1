// vfc path / rel / resolve: translating paths between notations and the path algebra. Their
// options are read with vArgList, whose usage screen "-help" prints.
#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

#include <vfc/vfc.h>

#include "vfcTool.h"

namespace vfctool {
namespace {

// Notation names: a family and a member ("url-dos"), the family alone for its host member
// ("url"), "+" at the end for the flagged notation ("url+"), or the number 0-39.
const char* const kFamilies[] = {"", "mif", "mifstring", "url", "portable"};
const char* const kMembers[] = {"host", "dos", "mac", "unix"};

std::string notationName(int value) {
    int plain = value % 20;
    int family = plain / 4;
    int member = plain % 4;
    std::string name = family == 0   ? kMembers[member]
                       : member == 0 ? std::string(kFamilies[family])
                                     : std::string(kFamilies[family]) + "-" + kMembers[member];
    return value >= 20 ? name + "+" : name;
}

bool parseNotation(const vString& text, vPathType::TypeEnum& out) {
    std::string s(text.data(), text.length());
    if (!s.empty() && s.find_first_not_of("0123456789") == std::string::npos && s.size() <= 2) {
        int value = std::atoi(s.c_str());
        if (value >= 40) return false;
        out = static_cast<vPathType::TypeEnum>(value);
        return true;
    }
    for (int value = 0; value < 40; ++value) {
        if (notationName(value) == s) {
            out = static_cast<vPathType::TypeEnum>(value);
            return true;
        }
    }
    return false;
}

// One family per line.
std::string notationList() {
    std::string list;
    for (int value = 0; value < 20; ++value)
        list += (value % 4 == 0 ? "\n   " : "") + (" " + notationName(value));
    return list;
}

// Parses args; on a bad command line also lists the notation names.
int parseArgs(const char* name, const Args& args, const vpArgListItem* table, const char* trailing,
              ParsedArgs& out) {
    std::string notes = "\nNOTATION is one of" + notationList() +
                        "\nwith \"+\" appended for the flagged (escaped) form, or a number 0-39.\n";
    return parseOptions(name, args, table, trailing, out, notes.c_str());
}

bool notationOption(const char* name, const vArgList& args, const char* option,
                    vPathType::TypeEnum& out) {
    vString text;
    if (!args.fGetOption(option, text)) return true;  // keep the default
    if (parseNotation(text, out)) return true;
    usageError(name, std::string("unknown notation \"") + text.data() + "\"");
    return false;
}

void printList(const vPathComponentList& list, vPathType::TypeEnum notation) {
    vString out;
    std::cout << vcGeneratePath(notation, list, out) << '\n';
}

const vpArgListItem kPathOptions[] = {
    {"-from", "NOTATION", "notation the PATHs are written in", true},
    {"-to", "NOTATION", "notation to write them in", true},
    {"-dir", nullptr, "the PATHs name directories (URLs then end in \"/\")", false},
    {"-list", nullptr, "also print each component as KIND:TEXT", false},
    {nullptr, nullptr, nullptr, false},
};

const vpArgListItem kAlgebraOptions[] = {
    {"-notation", "NOTATION", "notation of both paths and of the result (default host)", false},
    {"-rfc3986", nullptr,
     "URLs as browsers resolve links (RFC 3986), one result for each further URL", false},
    {nullptr, nullptr, nullptr, false},
};

const char* const kKindNames[] = {"scheme", "host",     "root",    "root-of-drive", "drive",
                                  "name",   "up",       "current", "server",        "share",
                                  "port",   "fragment", "query"};

}  // namespace

int runPath(const Args& args) {
    ParsedArgs parsed;
    int status = parseArgs("path", args, kPathOptions, "PATH...", parsed);
    if (status >= 0) return status;
    vPathType::TypeEnum from = vPathType::eHost;
    vPathType::TypeEnum to = vPathType::eHost;
    if (!notationOption("path", parsed.options, "-from", from) ||
        !notationOption("path", parsed.options, "-to", to))
        return kUsage;
    std::vector<vString> paths = parsed.operands;
    if (paths.empty()) return usageError("path", "at least one PATH is needed");
    vString ignored;
    bool isDirectory = parsed.options.fGetOption("-dir", ignored);
    bool list = parsed.options.fGetOption("-list", ignored);
    for (const vString& path : paths) {
        vPathComponentList components;
        vcListComponents(from, path, components, isDirectory);
        printList(components, to);
        if (!list) continue;
        vPathComponentListIter it(components);
        while (it.fAdvance())
            std::cout << "  " << kKindNames[it.aKey().fComponentType()] << ':' << it.aKey().aText()
                      << '\n';
        if (components.fTrailingSeparator()) std::cout << "  (directory)\n";
    }
    return kSuccess;
}

namespace {

// rel -rfc3986 and resolve -rfc3986: the first URL against each of the others, one result a
// line; a text that is no URL is reported and the rest still done.
int runURLAlgebra(const char* name, const ParsedArgs& parsed) {
    const bool rel = std::string(name) == "rel";
    vString notation;
    if (parsed.options.fGetOption("-notation", notation))
        return usageError(name, "-notation and -rfc3986 do not go together");
    const std::vector<vString>& urls = parsed.operands;
    if (urls.size() < 2)
        return usageError(name, rel ? "expected FROM TO..." : "expected BASE REF...");
    int status = kSuccess;
    for (size_t i = 1; i < urls.size(); ++i) {
        vString out;
        bool ok = rel ? vcMakeRelativeURL(urls[0], urls[i], out)
                      : vcResolveURL(urls[0], urls[i], out);
        if (ok) {
            std::cout << out << '\n';
        } else {
            vString normal;
            const vString& bad = vcNormalizeURL(urls[0], normal) ? urls[i] : urls[0];
            reportError(name, "not a URL: \"" + std::string(bad.data(), bad.length()) + "\"");
            status = kFailure;
        }
    }
    return status;
}

// rel and resolve: two paths in one notation, one result in it.
int runAlgebra(const char* name, const Args& args, const char* trailing,
               void (*combine)(const vPathComponentList&, const vPathComponentList&,
                               vPathComponentList&)) {
    ParsedArgs parsed;
    int status = parseArgs(name, args, kAlgebraOptions, trailing, parsed);
    if (status >= 0) return status;
    vString ignored;
    if (parsed.options.fGetOption("-rfc3986", ignored)) return runURLAlgebra(name, parsed);
    vPathType::TypeEnum notation = vPathType::eHost;
    if (!notationOption(name, parsed.options, "-notation", notation)) return kUsage;
    std::vector<vString> paths = parsed.operands;
    if (paths.size() != 2) return usageError(name, std::string("expected ") + trailing);
    vPathComponentList first;
    vPathComponentList second;
    vPathComponentList result;
    vcListComponents(notation, paths[0], first);
    vcListComponents(notation, paths[1], second);
    combine(first, second, result);
    printList(result, notation);
    return kSuccess;
}

void makeRelative(const vPathComponentList& from, const vPathComponentList& to,
                  vPathComponentList& out) {
    vcMakeRelative(false, from, to, out);
}

}  // namespace

int runRel(const Args& args) {
    return runAlgebra("rel", args, "FROM TO", makeRelative);
}

int runResolve(const Args& args) {
    return runAlgebra("resolve", args, "BASE REL", vcResolvePath);
}

}  // namespace vfctool
