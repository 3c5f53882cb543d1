// Fuzzes the command-line tokenizer and option parser. Besides crashes and hangs it checks what
// every parse must satisfy: words never hold a double quote, and white space only when they
// were quoted; an unquoted line splits exactly at white space; only declared options become
// keys, option arguments never begin with "-", no unassigned word begins with "-"; a parse
// fails exactly when it leaves a message, except for "-help", which fails silently.
//
// Input: byte 0 picks the form. Even: the rest is one command line, given to the tokenizer and
// to the command-string constructor. Odd: the rest is split at zero bytes into an argument
// vector for the argc/argv constructor.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <streambuf>
#include <string>
#include <vector>

#include <vfc/vfc.h>

namespace {

const vpArgListItem kItems[] = {
    {"-out", "file", "where to write", false}, {"-in", "file", "what to read", true},
    {"-v", nullptr, "verbose", false},         {"-q", nullptr, "quiet", false},
    {nullptr, nullptr, nullptr, false},
};

// Swallows the usage screens.
class NullBuf : public std::streambuf {
  protected:
    int overflow(int c) override { return traits_type::not_eof(c); }
};

void check(bool ok) {
    if (!ok) std::abort();
}

bool isSpace(char c) {
    return c == '\t' || c == '\n' || c == '\r' || c == ' ';
}

bool hasSpace(const std::string& s) {
    for (char c : s)
        if (isSpace(c)) return true;
    return false;
}

std::string text(const vString& s) {
    return std::string(s.data(), s.length());
}

std::vector<std::string> listed(const vSlistvString& list) {
    std::vector<std::string> out;
    vSlistvStringIter it(list);
    while (it.fAdvance())
        out.push_back(text(it.aKey()));
    return out;
}

// The words of a line without double quotes: the runs between white space.
std::vector<std::string> splitAtSpace(const std::string& line) {
    std::vector<std::string> out;
    std::string current;
    for (char c : line) {
        if (!isSpace(c)) {
            current += c;
        } else if (!current.empty()) {
            out.push_back(current);
            current.clear();
        }
    }
    if (!current.empty()) out.push_back(current);
    return out;
}

bool isTokenizerMessage(const std::string& e) {
    static const std::string after = " found after a quoted string.";
    static const std::string unexpected = "Unexpected character ";
    if (e == "An empty command line was provided." || e == "Unexpected \" found in command line." ||
        e == "A closing \" was not found.")
        return true;
    return e.size() == unexpected.size() + 1 + after.size() && e.rfind(unexpected, 0) == 0 &&
           e.compare(unexpected.size() + 1, std::string::npos, after) == 0;
}

bool isDeclared(const vString& name) {
    for (const vpArgListItem* item = kItems; item->name; ++item)
        if (name == item->name) return true;
    return false;
}

// What every parsed vArgList must satisfy; args are the C texts the parser saw after argv[0].
void checkParsed(const vArgList& parsed, const std::vector<const char*>& args) {
    bool sawHelp = false;
    for (const char* a : args)
        sawHelp = sawHelp || std::strcmp(a, "-help") == 0;

    vHashvStringvStringIter it(parsed);
    while (it.fAdvance()) {
        check(isDeclared(it.aKey()));
        check(it.aValue()(0) != '-');
    }
    for (const std::string& w : listed(parsed.fUnassigned()))
        check(w.empty() || w[0] != '-');

    const std::string log = text(parsed.fErrorlog());
    check(log.empty() || log.back() == '\n');
    if (!parsed.fFailed()) check(log.empty());
    if (parsed.fFailed() && log.empty()) check(sawHelp);

    vArgList copy(parsed);
    check(copy.fEntries() == parsed.fEntries() && copy.fErrorlog() == parsed.fErrorlog() &&
          copy.fFailed() == parsed.fFailed());
    parsed.usage();
}

void fuzzLine(const std::string& line) {
    vSlistvString list;
    vString errors;
    bool ok = vArgList::fParseStringIntoSlist(vString(line.data(), line.size()), list, errors);
    const std::vector<std::string> words = listed(list);
    const bool quoted = line.find('"') != std::string::npos;

    check(ok == errors.isNull());
    if (!ok) check(isTokenizerMessage(text(errors)));
    for (const std::string& w : words) {
        check(w.find('"') == std::string::npos);
        // White space inside a word only comes from a quoted word.
        if (hasSpace(w)) check(line.find('"' + w + '"') != std::string::npos);
    }
    if (ok && !quoted) check(words == splitAtSpace(line));

    vArgList parsed(vString(line.data(), line.size()), kItems, "files");
    if (!ok) {
        check(parsed.fFailed() && parsed.fErrorlog() == errors && parsed.fEntries() == 0);
        return;
    }
    check(text(parsed.fProgram()) == (words.empty() ? "" : words[0].c_str()));
    std::vector<const char*> args;
    for (size_t i = 1; i < words.size(); ++i)
        args.push_back(words[i].c_str());
    checkParsed(parsed, args);
}

void fuzzArgv(const std::string& bytes) {
    std::vector<std::string> pieces;
    size_t from = 0;
    while (from <= bytes.size() && !bytes.empty()) {
        size_t zero = bytes.find('\0', from);
        if (zero == std::string::npos) zero = bytes.size();
        pieces.push_back(bytes.substr(from, zero - from));
        from = zero + 1;
    }
    std::vector<const char*> argv;
    for (const std::string& p : pieces)
        argv.push_back(p.c_str());
    vArgList parsed(static_cast<int>(argv.size()), argv.empty() ? nullptr : argv.data(), kItems,
                    "files");
    check(text(parsed.fProgram()) == (argv.empty() ? "" : argv[0]));
    checkParsed(parsed,
                argv.empty() ? argv : std::vector<const char*>(argv.begin() + 1, argv.end()));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static NullBuf sink;
    static bool silenced = (std::cerr.rdbuf(&sink), true);
    (void)silenced;
    if (size < 1) return 0;
    const std::string rest(reinterpret_cast<const char*>(data) + 1, size - 1);
    if (data[0] % 2 == 0)
        fuzzLine(rest);
    else
        fuzzArgv(rest);
    return 0;
}
