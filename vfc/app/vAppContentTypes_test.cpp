#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "vfc/app/vApp.h"
#include "vfc/testing/TempDir.h"
#include "vfc/testing/TextMode.h"

namespace {

using vfc::testing::InTextMode;
using vfc::testing::TempDir;
using Words = std::vector<std::string>;

std::string text(const vString& s) {
    return std::string(s.data(), s.length());
}

vSlistvString list(const Words& items) {
    vSlistvString out;
    for (const std::string& w : items)
        out.fInsert(vString(w.c_str()));
    return out;
}

// The extensions listed for a type; {"-"} when the type is absent.
Words extensionsOf(const vApp& app, const char* type) {
    if (!app.fContentTypeHash().fLookup(vString(type))) return {"-"};
    Words out;
    vSlistvStringIter it(app.fContentTypeHash().aValue());
    while (it.fAdvance())
        out.push_back(text(it.aKey()));
    return out;
}

// The type of an extension; "-" when the extension is absent.
std::string typeOf(const vApp& app, const char* extension) {
    if (!app.fExtensionHash().fLookup(vString(extension))) return "-";
    return text(app.fExtensionHash().aValue());
}

bool load(vApp& app, const std::string& path) {
    return app.fLoadContentTypesAndExtensions(vFile(path.c_str()));
}

TEST(vAppContentTypes, LoadReadsTypeLinesAndIgnoresTheRest) {
    TempDir dir;
    vApp app("F", "N", "1.0");
    ASSERT_TRUE(load(app, dir.write("t",
                                    "# types\r\n"
                                    "type=text/html\texts=htm,html\r\n"
                                    "  type=text/css\texts=css\n"
                                    "TYPE=text/xml\texts=xml\n"
                                    "type=image/gif  words exts=gif\n"
                                    "type=text/plain\texts=txt,,text \t\n"
                                    "type=x/none\n"
                                    "type=   \n"
                                    "type=text/x-log\texts=log,txt\n"
                                    "type=text/plain\texts=asc")));
    EXPECT_EQ(extensionsOf(app, "text/html"), (Words{"htm", "html"}));
    EXPECT_EQ(typeOf(app, "html"), "text/html");
    EXPECT_EQ(extensionsOf(app, "image/gif"), Words{"gif"});
    EXPECT_EQ(extensionsOf(app, "text/plain"), (Words{"txt", "text"}));
    EXPECT_EQ(extensionsOf(app, "x/none"), Words{});
    // The first type of an extension and the first list of a type win; a later line's
    // extension still maps back to its type.
    EXPECT_EQ(extensionsOf(app, "text/x-log"), (Words{"log", "txt"}));
    EXPECT_EQ(typeOf(app, "txt"), "text/plain");
    EXPECT_EQ(typeOf(app, "asc"), "text/plain");
    // Lines not starting with "type=", and one naming no type, are ignored.
    EXPECT_EQ(typeOf(app, "css") + typeOf(app, "xml"), "--");
    EXPECT_EQ(app.fContentTypeHash().fEntries(), 5u);
    EXPECT_EQ(app.fExtensionHash().fEntries(), 7u);
}

TEST(vAppContentTypes, LoadClearsTheTablesFirst) {
    TempDir dir;
    vApp app("F", "N", "1.0");
    const std::string files[] = {dir.file("missing"), dir.path(),
                                 dir.write("comments", "# nothing\n\n exts=a\ntype=\n"),
                                 dir.write("one", "type=a/b\texts=c\n")};
    for (const std::string& f : files) {
        app.fInsertContentTypeAndExtensionList("old/type", list({"o"}));
        app.fInsertExtensionAndContentType("o", "old/type");
        EXPECT_EQ(load(app, f), &f == &files[3]) << f;
        EXPECT_EQ(extensionsOf(app, "old/type"), Words{"-"});
        EXPECT_EQ(typeOf(app, "o"), "-");
    }
    EXPECT_EQ(typeOf(app, "c"), "a/b");
}

TEST(vAppContentTypes, SaveWritesExtensionsInPairs) {
    TempDir dir;
    vApp app("F", "N", "1.0");
    app.fInsertContentTypeAndExtensionList("t/3", list({"a", "b", "c"}));
    ASSERT_TRUE(app.fSaveContentTypesAndExtensions(vFile(dir.file("3").c_str())));
    EXPECT_EQ(TempDir::read(dir.file("3")), InTextMode("type=t/3\texts=a,bc\r\n"));
    app.fDeleteContentType("t/3");
    app.fInsertContentTypeAndExtensionList("t/4", list({"a", "b", "c", "d"}));
    ASSERT_TRUE(app.fSaveContentTypesAndExtensions(vFile(dir.file("4").c_str())));
    EXPECT_EQ(TempDir::read(dir.file("4")), InTextMode("type=t/4\texts=a,bc,d\r\n"));
    EXPECT_FALSE(app.fSaveContentTypesAndExtensions(vFile(dir.file("no/dir/x").c_str())));

    // Lists of up to two survive a save and a load.
    vApp other("F", "N", "1.0");
    other.fInsertContentTypeAndExtensionList("text/html", list({"htm", "html"}));
    other.fInsertContentTypeAndExtensionList("image/png", list({"png"}));
    other.fInsertContentTypeAndExtensionList("x/none", list({}));
    ASSERT_TRUE(other.fSaveContentTypesAndExtensions(vFile(dir.file("2").c_str())));
    ASSERT_TRUE(load(app, dir.file("2")));
    EXPECT_TRUE(app.fContentTypeHash().fIsEqual(other.fContentTypeHash()));
    EXPECT_EQ(typeOf(app, "html") + typeOf(app, "png"), "text/htmlimage/png");
}

TEST(vAppContentTypes, InsertAndDeleteTouchOnlyTheNamedTable) {
    vApp app("F", "N", "1.0");
    app.fInsertContentTypeAndExtensionList("a/b", list({"x", "y"}));
    app.fInsertContentTypeAndExtensionList("a/b", list({"z"}));  // present: refused
    app.fInsertExtensionAndContentType("x", "a/b");
    app.fInsertExtensionAndContentType("x", "c/d");
    EXPECT_EQ(extensionsOf(app, "a/b"), (Words{"x", "y"}));
    EXPECT_EQ(typeOf(app, "x"), "a/b");
    app.fDeleteContentType("a/b");
    EXPECT_EQ(typeOf(app, "x"), "a/b");
    app.fInsertContentTypeAndExtensionList("a/b", list({"x"}));
    app.fDeleteExtension("x");
    EXPECT_EQ(app.fExtensionHash().fEntries(), 0u);
    EXPECT_EQ(extensionsOf(app, "a/b"), Words{"x"});
}

}  // namespace
