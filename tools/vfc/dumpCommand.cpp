// vfc dump: prints the object tree of a persistent object file in the portable format. The tree
// comes from the file's own structure (class identifier, object markers, references, nil), so a
// file dumps even when it holds classes this library does not know; the file is then read back
// through the library's object reader to check that the library accepts it.
#include <fstream>
#include <iostream>
#include <iterator>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include <vfc/vfc.h>

#include "vfcTool.h"

namespace vfctool {
namespace {

const char* className(unsigned id) {
    switch (id) {
#define VFC_DUMP_CLASS_NAME(name, value) \
    case value:                          \
        return #name;
        VFC_CLASS_ID_TABLE(VFC_DUMP_CLASS_NAME)
#undef VFC_DUMP_CLASS_NAME
        default:
            return "unknown class";
    }
}

// Splits the file into tokens: runs of non-blank bytes, or a quoted string with its escapes.
class Tokens {
  public:
    explicit Tokens(const std::string& text) : text_(text) {}
    bool next(std::string& token) {
        while (pos_ < text_.size() && isBlank(text_[pos_])) ++pos_;
        if (pos_ >= text_.size()) return false;
        start_ = pos_;
        if (text_[pos_] == '"') {
            ++pos_;
            while (pos_ < text_.size() && text_[pos_] != '"') pos_ += text_[pos_] == '\\' ? 2 : 1;
            pos_ = std::min(pos_ + 1, text_.size());
        } else {
            while (pos_ < text_.size() && !isBlank(text_[pos_])) ++pos_;
        }
        token.assign(text_, start_, pos_ - start_);
        return true;
    }
    bool peek(std::string& token) {
        size_t saved = pos_, savedStart = start_;
        bool ok = next(token);
        pos_ = saved;
        start_ = savedStart;
        return ok;
    }
    size_t offset() const { return start_; }

  private:
    static bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }
    const std::string& text_;
    size_t pos_ = 0;
    size_t start_ = 0;
};

struct Node {
    enum Kind { Object, Reference, Nil, Value } kind = Value;
    std::string text;  // the value, or the class name
    unsigned id = 0;
    unsigned ordinal = 0;
    std::vector<Node> children;
};

constexpr int kMaxDepth = 256;

class Parser {
  public:
    explicit Parser(const std::string& text) : tokens_(text) {}

    // One item at the current position; false at the end of data or on malformed structure.
    bool item(Node& node, int depth) {
        std::string t;
        if (!tokens_.next(t)) return false;
        if (t == ":") {
            std::string id;
            if (!tokens_.next(id) || !isNumber(id)) return fail("a class identifier");
            node.kind = Node::Object;
            node.id = static_cast<unsigned>(std::stoul(id));
            node.text = className(node.id);
            node.ordinal = ordinals_++;
            if (!tokens_.next(t) || t != "\\[") return fail("\\[");
            if (depth >= kMaxDepth) return fail("less deeply nested objects");
            for (;;) {
                if (!tokens_.peek(t)) return fail("\\]");
                if (t == "\\]") {
                    tokens_.next(t);
                    return true;
                }
                node.children.emplace_back();
                if (!item(node.children.back(), depth + 1)) return false;
            }
        }
        if (t == "@") {
            std::string n;
            if (!tokens_.next(n) || !isNumber(n)) return fail("an ordinal");
            node.kind = Node::Reference;
            node.ordinal = static_cast<unsigned>(std::stoul(n));
            return true;
        }
        if (t == "N") {
            node.kind = Node::Nil;
            return true;
        }
        if (t == "\\]" || t == "\\[") return fail("a value");
        node.kind = Node::Value;
        node.text = t;
        // A length followed by a quoted string is one string value.
        std::string quoted;
        if (isNumber(t) && tokens_.peek(quoted) && !quoted.empty() && quoted[0] == '"') {
            tokens_.next(quoted);
            node.text = quoted;
        }
        return true;
    }

    const std::string& error() const { return error_; }
    size_t offset() const { return tokens_.offset(); }

  private:
    static bool isNumber(const std::string& t) {
        size_t i = t[0] == '-' ? 1 : 0;
        if (i >= t.size() || t.size() > 19) return false;
        for (; i < t.size(); ++i)
            if (t[i] < '0' || t[i] > '9') return false;
        return true;
    }
    bool fail(const char* expected) {
        error_ = std::string("expected ") + expected;
        return false;
    }

    Tokens tokens_;
    unsigned ordinals_ = 0;  // counts objects across the file; shown for orientation
    std::string error_;
};

bool allValues(const Node& node) {
    for (const Node& c : node.children)
        if (c.kind != Node::Value) return false;
    return true;
}

void print(std::ostream& out, const Node& node, int indent) {
    out << std::string(static_cast<size_t>(indent), ' ');
    switch (node.kind) {
        case Node::Nil:
            out << "nil\n";
            return;
        case Node::Reference:
            out << "@" << node.ordinal << " (the object read before under this ordinal)\n";
            return;
        case Node::Value:
            out << node.text << '\n';
            return;
        case Node::Object:
            break;
    }
    out << node.text << " (" << node.id << ")";
    if (allValues(node)) {
        for (const Node& c : node.children) out << ' ' << c.text;
        out << '\n';
        return;
    }
    out << '\n';
    for (const Node& c : node.children) print(out, c, indent + 2);
}

// Reads count objects through the library; false when it refuses one.
bool libraryReads(const std::string& bytes, size_t count, size_t& failedAt) {
    std::stringbuf buf(bytes);
    vPistream in(&buf);
    for (size_t i = 0; i < count; ++i) {
        std::unique_ptr<RWCollectable> object(RWCollectable::recursiveRestoreFrom(in));
        if (!in.good()) {
            failedAt = i;
            return false;
        }
    }
    return true;
}

}  // namespace

int runDump(const Args& allArgs) {
    Args args(allArgs.begin() + static_cast<std::ptrdiff_t>(skipEndOfOptions(allArgs, 0)),
              allArgs.end());
    if (args.size() != 1) return usageError("dump", "exactly one FILE is needed");
    std::ifstream file(args[0], std::ios::binary);
    if (!file) {
        reportError("dump", "cannot open " + args[0]);
        return kFailure;
    }
    std::string bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    Parser parser(bytes);
    std::vector<Node> roots;
    for (;;) {
        Node node;
        if (!parser.item(node, 0)) break;
        print(std::cout, node, 0);
        roots.push_back(std::move(node));
    }
    if (!parser.error().empty()) {
        reportError("dump", args[0] + ": byte " + std::to_string(parser.offset()) + ": " +
                                parser.error());
        return kFailure;
    }
    size_t failedAt = 0;
    if (!libraryReads(bytes, roots.size(), failedAt)) {
        reportError("dump", args[0] + ": the library cannot read object " +
                                std::to_string(failedAt) +
                                " (an unknown class or a malformed value)");
        return kFailure;
    }
    return kSuccess;
}

}  // namespace vfctool
