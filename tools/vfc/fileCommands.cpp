// vfc type / ini / match: content-type detection, INI files and wildcard match lists.
#include <algorithm>
#include <iostream>
#include <string>
#include <utility>
#include <vector>

#include <vfc/vfc.h>

#include "vfcTool.h"

namespace vfctool {
namespace {

const vpArgListItem kNoOptions[] = {
    {nullptr, nullptr, nullptr, false},
};

const vpArgListItem kMatchOptions[] = {
    {"-i", nullptr, "letters match without regard to case", false},
    {nullptr, nullptr, nullptr, false},
};

using Pairs = std::vector<std::pair<std::string, std::string>>;

Pairs sortedEntries(const vHashvStringvString& hash) {
    Pairs out;
    vHashvStringvStringIter it(hash);
    while (it.fAdvance())
        out.emplace_back(std::string(it.aKey().data(), it.aKey().length()),
                         std::string(it.aValue().data(), it.aValue().length()));
    std::sort(out.begin(), out.end());
    return out;
}

}  // namespace

int runType(const Args& args) {
    ParsedArgs parsed;
    int status = parseOptions("type", args, kNoOptions, "FILE...", parsed);
    if (status >= 0) return status;
    std::vector<vString> files = parsed.operands;
    if (files.empty()) return usageError("type", "at least one FILE is needed");
    int result = kSuccess;
    vApp& app = vAppInfo();
    vAppProgressStackDepth mark;
    app.fStartProgress(mark, static_cast<int>(files.size()));
    for (const vString& path : files) {
        if (app.fUpdateAbort()) {
            reportError("type", "interrupted");
            result = kFailure;
            break;
        }
        app.fStepProgress();
        vFile file(path);
        vFile::KindEnum kind = file.fKind();
        if (kind == vFile::KindEnum::eDirectory) {
            std::cout << path << ": " << vFile::sfFileTypeToConstChar(vFile::eDirectory) << '\n';
            continue;
        }
        // A FIFO, socket or device is named by its kind and never opened: opening a FIFO
        // waits for a writer and would take its data.
        if (*vFile::sfKindToConstChar(kind)) {
            std::cout << path << ": " << vFile::sfKindToConstChar(kind) << '\n';
            continue;
        }
        vIfstream in;
        if (!in.fOpenBinary(file)) {
            reportError("type", std::string("cannot read \"") + path.data() + "\"");
            result = kFailure;
            continue;
        }
        std::cout << path << ": " << in.fFileInfo().fTypeName() << '\n';
    }
    app.fEndProgress(mark);
    return result;
}

int runIni(const Args& args) {
    ParsedArgs parsed;
    int status = parseOptions("ini", args, kNoOptions, "FILE", parsed);
    if (status >= 0) return status;
    std::vector<vString> files = parsed.operands;
    if (files.size() != 1) return usageError("ini", "expected one FILE");
    vIfstream in;
    if (!in.fOpenText(vFile(files[0]))) {
        reportError("ini", std::string("cannot read \"") + files[0].data() + "\"");
        return kFailure;
    }
    vHashvStringvHvSvS sections;
    in.fParseAsINI(sections);
    // Hash order is arbitrary: sections and keys print sorted, the keys before any section
    // first (their section has the empty name).
    std::vector<std::string> names;
    vHashvStringvHvSvSIter it(sections);
    while (it.fAdvance())
        names.emplace_back(it.aKey().data(), it.aKey().length());
    std::sort(names.begin(), names.end());
    for (const std::string& name : names) {
        sections.fLookup(vString(name.data(), name.size()));
        Pairs keys = sortedEntries(sections.aValue());
        if (name.empty() && keys.empty()) continue;
        std::cout << (name.empty() ? "(before any section)" : name) << '\n';
        for (const auto& kv : keys)
            std::cout << "  " << kv.first << " = " << kv.second << '\n';
    }
    return kSuccess;
}

int runMatch(const Args& args) {
    ParsedArgs parsed;
    int status = parseOptions("match", args, kMatchOptions, "PATTERNS NAME...", parsed,
                              "\nPATTERNS is a list of wildcards separated by \";\", such as "
                              "*.htm;*.html;\n\"*\" stands for any text, every other character "
                              "for itself.\n");
    if (status >= 0) return status;
    std::vector<vString> words = parsed.operands;
    if (words.size() < 2) return usageError("match", "expected PATTERNS and at least one NAME");
    vSlistvString patterns;
    const vString& list = words[0];
    size_t start = 0;
    for (size_t i = 0; i <= list.length(); ++i) {
        if (i < list.length() && list(i) != ';') continue;
        if (i > start) patterns.fInsert(vString(list.data() + start, i - start));
        start = i + 1;
    }
    vString ignored;
    vMatchList matcher(patterns, parsed.options.fGetOption("-i", ignored));
    bool any = false;
    for (size_t i = 1; i < words.size(); ++i) {
        if (!matcher.fCheckForMatch(words[i])) continue;
        std::cout << words[i] << '\n';
        any = true;
    }
    return any ? kSuccess : kFailure;
}

}  // namespace vfctool
