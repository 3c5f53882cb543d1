#include "vfc/app/vArgList.h"

#include <cstddef>
#include <iostream>
#include <string>
#include <vector>

namespace {

// The width of the option column of the usage screen.
constexpr size_t kUsageColumn = 28;

bool isSpace(char c) {
    return c == '\t' || c == '\n' || c == '\r' || c == ' ';
}

// argv entries may be null when a caller builds the vector by hand; such a word is empty.
const char* word(const char* const* argv, int i) {
    return argv[i] ? argv[i] : "";
}

}  // namespace

vArgList::vArgList() = default;

vArgList::vArgList(int argc, const char* const* argv, const vpArgListItem* items,
                   const vString& trailing)
    : aItems(items), aTrailing(trailing) {
    fParseItems();
    aFailed = !fParseCommand(argc, argv);
}

vArgList::vArgList(const vString& line, const vpArgListItem* items, const vString& trailing)
    : aItems(items), aTrailing(trailing) {
    fParseItems();
    aFailed = !fParseString(line);
}

vArgList::vArgList(const vArgList& other) = default;

vArgList& vArgList::operator=(const vArgList& other) = default;

vArgList::~vArgList() = default;

bool vArgList::fGetOption(const vString& name, vString& value) const {
    RWCollectable* key = nullptr;
    RWCollectable* found = nullptr;
    if (!aVHash().fFind(name, key, found)) return false;
    value = *static_cast<const vString*>(found);
    return true;
}

void vArgList::usage() const {
    std::ostream& out = std::cerr;
    out << "\n\n"
        << aErrorlog << "\nUsage:"
        << "\n\n\t" << aProgram << " [-options ...] " << aTrailing << "\n\n"
        << "where options include:\n\n";
    for (const vpArgListItem* item = aItems; item && item->name; ++item) {
        std::string column(item->name);
        if (item->argName) column.append(" ").append(item->argName);
        column.resize(kUsageColumn, ' ');  // pads short columns, cuts long ones
        out << '\t' << column << ' ' << (item->description ? item->description : "")
            << (item->required ? " (required)" : " (optional)") << std::endl;
    }
}

bool vArgList::fParseStringIntoSlist(const vString& line, vSlistvString& words, vString& errors) {
    if (line.isNull()) {
        errors.append("An empty command line was provided.");
        return false;
    }
    vString current;
    bool inQuote = false;
    bool complete = false;
    bool failed = false;
    bool afterSpace = true;  // so leading white space produces nothing
    const size_t n = line.length();
    for (size_t i = 0; i < n && !failed; ++i) {
        const char c = line(i);
        if (isSpace(c) && !inQuote) {
            // A run of white space completes the word before it only once.
            if (!afterSpace) complete = true;
            afterSpace = true;
        } else {
            if (isSpace(c)) {
                current.append(c);
            } else if (c == '"' && !inQuote) {
                if (current.isNull()) {
                    inQuote = true;
                } else {
                    errors.append("Unexpected \" found in command line.");
                    failed = true;
                }
            } else if (c == '"') {
                inQuote = false;
                if (i + 1 == n) {
                    complete = true;
                } else if (!isSpace(line(i + 1))) {
                    errors.append("Unexpected character ");
                    errors.append(line(i + 1));
                    errors.append(" found after a quoted string.");
                    failed = true;
                }
            } else {
                current.append(c);
            }
            afterSpace = false;
        }
        if (!inQuote && complete) {
            // Even an empty word: "" stands for one.
            words.fInsert(current);
            current = vString();
            complete = false;
        }
    }
    if (inQuote) {
        errors.append("A closing \" was not found.");
        return false;
    }
    if (failed) return false;
    if (!current.isNull()) words.fInsert(current);
    return true;
}

void vArgList::fParseItems() {
    aArgumentOptions.fClearAndDestroy();
    aValidOptions.fClearAndDestroy();
    aRequiredOptions.fClearAndDestroy();
    for (const vpArgListItem* item = aItems; item && item->name; ++item) {
        const vString name(item->name);
        aValidOptions.fInsert(name);
        if (item->argName) aArgumentOptions.fInsert(name);
        if (item->required) aRequiredOptions.fInsert(name);
    }
}

bool vArgList::fParseCommand(int argc, const char* const* argv) {
    if (!argv) argc = 0;
    fClearAndDestroy();
    aUnassigned.fClearAndDestroy();
    aErrorlog = vString();
    aProgram = argc > 0 ? vString(word(argv, 0)) : vString();

    std::string messages;
    bool ok = true;
    for (int i = 1; i < argc; ++i) {
        const vString current(word(argv, i));
        if (current(0) != '-') {
            aUnassigned.fInsert(current);
        } else if (!aValidOptions.fContains(current)) {
            ok = false;
            // "-help" asks for the usage screen; the caller prints it on the failure.
            if (current != "-help") {
                messages.append("Invalid command line option ").append(current.view());
                messages.append(".\n");
            }
        } else if (!aArgumentOptions.fContains(current)) {
            fInsert(current, vString());
        } else if (i + 1 >= argc) {
            // An argument option as the last word is dropped; a required one is reported below.
        } else if (word(argv, i + 1)[0] == '-') {
            ok = false;
            messages.append("Option ").append(current.view());
            messages.append(" should be followed by an argument.\n");
        } else {
            // The first occurrence wins; a repeated option's argument is consumed all the same.
            fInsert(current, vString(word(argv, i + 1)));
            ++i;
        }
    }

    // Only a command line without other errors is checked for missing options.
    if (ok) {
        vSetvStringIter it(aRequiredOptions);
        while (it.fAdvance()) {
            if (fContains(it.aKey())) continue;
            ok = false;
            messages.append("Option ").append(it.aKey().view()).append(" is required.\n");
        }
    }
    aErrorlog.append(messages.data(), messages.size());
    return ok;
}

bool vArgList::fParseString(const vString& line) {
    vSlistvString words;
    if (!fParseStringIntoSlist(line, words, aErrorlog)) return false;
    std::vector<const char*> argv;
    argv.reserve(words.fEntries() + 1);
    vSlistvStringIter it(words);
    while (it.fAdvance())
        argv.push_back(it.aKey().data());
    argv.push_back(nullptr);
    return fParseCommand(static_cast<int>(words.fEntries()), argv.data());
}
