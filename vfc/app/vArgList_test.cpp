#include "vfc/app/vArgList.h"

#include <gtest/gtest.h>

#include <iostream>
#include <sstream>
#include <string>
#include <vector>

namespace {

const vpArgListItem kItems[] = {
    {"-out", "file", "output file", false}, {"-in", "file", "input file", true},
    {"-v", nullptr, "verbose", false},      {"-x", nullptr, "extra", true},
    {nullptr, nullptr, nullptr, false},
};

const vpArgListItem kOptional[] = {
    {"-out", "file", "output file", false},
    {"-v", nullptr, "verbose", false},
    {nullptr, nullptr, nullptr, false},
};

std::string text(const vString& s) {
    return std::string(s.data(), s.length());
}

std::vector<std::string> words(const vSlistvString& list) {
    std::vector<std::string> out;
    vSlistvStringIter it(list);
    while (it.fAdvance())
        out.push_back(text(it.aKey()));
    return out;
}

using Words = std::vector<std::string>;

vArgList parse(std::vector<const char*> argv, const vpArgListItem* items = kOptional) {
    return vArgList(static_cast<int>(argv.size()), argv.data(), items, "files...");
}

std::string option(const vArgList& args, const char* name) {
    vString value("<absent>");
    bool found = args.fGetOption(name, value);
    EXPECT_EQ(found, text(value) != "<absent>") << name;
    return text(value);
}

// Runs the tokenizer on line, starting from a word and a message already present.
bool tokenize(const char* line, Words& out, std::string& errors) {
    vSlistvString list;
    list.fInsert("old");
    vString log("E:");
    bool ok = vArgList::fParseStringIntoSlist(vString(line), list, log);
    out = words(list);
    errors = text(log);
    return ok;
}

TEST(vArgList, TokenizerSplitsWordsAndKeepsQuotedWhitespace) {
    Words w;
    std::string e;
    EXPECT_TRUE(tokenize("prog  \"a b\"  c", w, e));
    EXPECT_EQ(w, (Words{"old", "prog", "a b", "c"}));
    EXPECT_EQ(e, "E:");

    EXPECT_TRUE(tokenize("prog \"\"", w, e));
    EXPECT_EQ(w, (Words{"old", "prog", ""}));
    EXPECT_TRUE(tokenize("\t\r\n c:\\dir\\x  \"\"\n\"\t\r\nq\" \x01z ", w, e));
    EXPECT_EQ(w, (Words{"old", "c:\\dir\\x", "", "\t\r\nq", "\x01z"}));
    EXPECT_TRUE(tokenize("  ", w, e));
    EXPECT_EQ(w, (Words{"old"}));
    EXPECT_EQ(e, "E:");
}

TEST(vArgList, TokenizerMessagesKeepEarlierWords) {
    Words w;
    std::string e;
    EXPECT_FALSE(tokenize("", w, e));
    EXPECT_EQ(e, "E:An empty command line was provided.");
    EXPECT_EQ(w, (Words{"old"}));

    EXPECT_FALSE(tokenize("a \"x\"b c", w, e));
    EXPECT_EQ(e, "E:Unexpected character b found after a quoted string.");
    EXPECT_EQ(w, (Words{"old", "a"}));

    EXPECT_FALSE(tokenize("a  b\"c\" d", w, e));
    EXPECT_EQ(e, "E:Unexpected \" found in command line.");
    EXPECT_EQ(w, (Words{"old", "a"}));

    EXPECT_FALSE(tokenize("a \"b c", w, e));
    EXPECT_EQ(e, "E:A closing \" was not found.");
    EXPECT_EQ(w, (Words{"old", "a"}));

    EXPECT_FALSE(tokenize("\"\"\"\"", w, e));
    EXPECT_EQ(e, "E:Unexpected character \" found after a quoted string.");
}

TEST(vArgList, OptionsArgumentsAndUnassignedWords) {
    vArgList args = parse({"tool", "a", "-out", "o1", "-v", "b", "-out", "o2", "c", "-v"});
    EXPECT_FALSE(args.fFailed());
    EXPECT_EQ(text(args.fErrorlog()), "");
    EXPECT_EQ(text(args.fProgram()), "tool");
    EXPECT_EQ(text(args.fTrailing()), "files...");
    EXPECT_EQ(words(args.fUnassigned()), (Words{"a", "b", "c"}));  // "o2" was consumed
    EXPECT_EQ(option(args, "-out"), "o1");
    EXPECT_EQ(option(args, "-v"), "");
    EXPECT_EQ(option(args, "-in"), "<absent>");
    EXPECT_EQ(args.fEntries(), 2u);

    // An argument option as the last word is dropped without a message.
    vArgList last = parse({"tool", "-v", "-out"});
    EXPECT_FALSE(last.fFailed());
    EXPECT_EQ(text(last.fErrorlog()), "");
    EXPECT_EQ(option(last, "-out"), "<absent>");
    EXPECT_EQ(option(last, "-v"), "");
}

TEST(vArgList, ErrorsAndRequiredOptions) {
    vArgList help = parse({"tool", "-help"});
    EXPECT_TRUE(help.fFailed());
    EXPECT_EQ(text(help.fErrorlog()), "");

    // After another error, missing required options are not reported.
    vArgList unknown = parse({"tool", "-q", "-help"}, kItems);
    EXPECT_TRUE(unknown.fFailed());
    EXPECT_EQ(text(unknown.fErrorlog()), "Invalid command line option -q.\n");

    vArgList noArg = parse({"tool", "-out", "-v", "x"});
    EXPECT_TRUE(noArg.fFailed());
    EXPECT_EQ(text(noArg.fErrorlog()), "Option -out should be followed by an argument.\n");
    EXPECT_EQ(option(noArg, "-v"), "");
    EXPECT_EQ(option(noArg, "-out"), "<absent>");
    EXPECT_EQ(words(noArg.fUnassigned()), (Words{"x"}));

    vArgList oneMissing = parse({"tool", "-in", "f"}, kItems);
    EXPECT_TRUE(oneMissing.fFailed());
    EXPECT_EQ(text(oneMissing.fErrorlog()), "Option -x is required.\n");

    vArgList bothMissing = parse({"tool"}, kItems);
    EXPECT_TRUE(bothMissing.fFailed());
    std::string log = text(bothMissing.fErrorlog());
    EXPECT_TRUE(log == "Option -in is required.\nOption -x is required.\n" ||
                log == "Option -x is required.\nOption -in is required.\n")
        << log;

    vArgList complete = parse({"tool", "-x", "-in", "f"}, kItems);
    EXPECT_FALSE(complete.fFailed());
    EXPECT_EQ(option(complete, "-in"), "f");
}

TEST(vArgList, CommandStringAndDegenerateInput) {
    vArgList ok(vString("prog  \"-out\"  \"a b\" -v"), kOptional, "");
    EXPECT_FALSE(ok.fFailed());
    EXPECT_EQ(text(ok.fErrorlog()), "");
    EXPECT_EQ(text(ok.fProgram()), "prog");
    EXPECT_EQ(option(ok, "-out"), "a b");
    EXPECT_EQ(option(ok, "-v"), "");

    vArgList bad(vString("prog \"x\"y"), kOptional, "");
    EXPECT_TRUE(bad.fFailed());
    EXPECT_EQ(text(bad.fErrorlog()), "Unexpected character y found after a quoted string.");

    vArgList blank(vString(" \t "), kItems, "");
    EXPECT_TRUE(blank.fFailed());  // required options are missing
    EXPECT_EQ(text(blank.fProgram()), "");
    EXPECT_EQ(blank.fUnassigned().fEntries(), 0u);

    vArgList none(0, nullptr, kOptional, "");
    EXPECT_FALSE(none.fFailed());
    EXPECT_EQ(text(none.fProgram()), "");
    const char* nulls[] = {nullptr, nullptr};
    vArgList nullWords(2, nulls, nullptr, "");
    EXPECT_FALSE(nullWords.fFailed());
    EXPECT_EQ(words(nullWords.fUnassigned()), (Words{""}));
}

std::string usageOf(const vArgList& args) {
    std::ostringstream captured;
    std::streambuf* old = std::cerr.rdbuf(captured.rdbuf());
    args.usage();
    std::cerr.rdbuf(old);
    return captured.str();
}

TEST(vArgList, UsageScreen) {
    const vpArgListItem items[] = {
        {"-o", "file", "where to write", true},
        {"-a-very-long-option-name-indeed", "argument", "long", false},
        {nullptr, nullptr, nullptr, false},
    };
    vArgList args(vString("tool -bad"), items, "[files]");
    EXPECT_EQ(usageOf(args),
              "\n\nInvalid command line option -bad.\n\nUsage:\n\n\ttool [-options ...] [files]\n\n"
              "where options include:\n\n"
              "\t-o file                      where to write (required)\n"
              "\t-a-very-long-option-name-ind long (optional)\n");
    EXPECT_EQ(usageOf(vArgList()),
              "\n\n\nUsage:\n\n\t [-options ...] \n\nwhere options include:\n\n");
}

TEST(vArgList, CopiesAreIndependentAndShareTheTable) {
    vArgList original = parse({"tool", "-out", "o", "u"});
    vArgList copy(original);
    vArgList assigned;
    assigned = original;
    original.fInsertOrReplace("-out", "changed");
    original.fInsert("-v", "");

    for (const vArgList* c : {&copy, &assigned}) {
        EXPECT_EQ(option(*c, "-out"), "o");
        EXPECT_EQ(option(*c, "-v"), "<absent>");
        EXPECT_EQ(text(c->fProgram()), "tool");
        EXPECT_EQ(text(c->fTrailing()), "files...");
        EXPECT_EQ(words(c->fUnassigned()), (Words{"u"}));
        EXPECT_EQ(usageOf(*c), usageOf(original));
    }
}

}  // namespace
