#include "vfc/system/vLibrary.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>

#include "vfc/collections/vTypedFamily.h"
#include "vfc/rw/RWFile.h"
#include "vfc/rw/RWpistream.h"
#include "vfc/rw/RWpostream.h"
#include "vfc/testing/TempDir.h"

// The path of the module built from testdata/vLibraryPlugin.cpp.
#ifndef VFC_TEST_PLUGIN
#error "VFC_TEST_PLUGIN must name the test plugin module"
#endif

class vLibraryTestAccess {
  public:
    static vString munge(const vLibrary& lib, const vString& name) {
        vString decorated("stale");
        lib.fMungeName(name, decorated);
        return decorated;
    }
};

namespace {

const vFile kPlugin(VFC_TEST_PLUGIN);

TEST(vLibrary, LoadsAndCallsPrefixedFunctions) {
    vLibrary lib("Plugin_", kPlugin);
    int state = 0;
    // Nothing is loaded before fConstruct: no call, but the name is still recorded.
    EXPECT_FALSE(lib.fIsLoaded());
    EXPECT_FALSE(lib.fExecute("Init", &state));
    EXPECT_EQ(state, 0);

    ASSERT_TRUE(lib.fConstruct());
    EXPECT_TRUE(lib.fIsLoaded());
    // The loader is given the file's host form (backslashes between names on Windows).
    EXPECT_EQ(lib.fLoadedPath(), kPlugin.fDOSPath());
    EXPECT_TRUE(lib.fExecute("Init", &state));
    EXPECT_EQ(state, 42);
    EXPECT_EQ(lib.fLastSymbol(), "Plugin_Init");

    // A function returning 0 is called and reported false.
    int calls = 0;
    EXPECT_FALSE(lib.fExecute("Fail", &calls));
    EXPECT_EQ(calls, 1);
    // A missing name calls nothing; the prefix applies to every name, so "Bare" is not found.
    EXPECT_FALSE(lib.fExecute("Missing", &calls));
    EXPECT_FALSE(lib.fExecute("Bare", &calls));
    EXPECT_EQ(lib.fLastSymbol(), "Plugin_Bare");
    EXPECT_EQ(calls, 1);

    // A copy shares the handle; loading the same file again works too.
    vLibrary bare("", kPlugin);
    ASSERT_TRUE(bare.fConstruct());
    EXPECT_TRUE(bare.fExecute("Bare", &calls));
    EXPECT_EQ(calls, 7);
    std::unique_ptr<RWCollectable> copy(lib.copy());
    state = 0;
    EXPECT_TRUE(static_cast<vLibrary&>(*copy).fExecute("Init", &state));
    EXPECT_EQ(state, 42);
}

TEST(vLibrary, MissingFileStaysUnloaded) {
    vfc::testing::TempDir dir;
    for (const std::string& path :
         {dir.file("absent.so"), dir.write("junk.so", "not a module"), std::string()}) {
        SCOPED_TRACE(path);
        vLibrary lib("Plugin_", vFile(path.c_str()));
        EXPECT_FALSE(lib.fConstruct());
        EXPECT_FALSE(lib.fIsLoaded());
        EXPECT_EQ(lib.fLoadedPath(), "");
        int state = 0;
        EXPECT_FALSE(lib.fExecute("Init", &state));
        EXPECT_EQ(state, 0);
    }
}

TEST(vLibrary, DecoratedNamesMatchTheCompiler) {
    vLibrary lib("Plugin_", kPlugin);
    EXPECT_EQ(vLibraryTestAccess::munge(lib, "f"), "_Z1fRK13RWCollectableRS_");
    EXPECT_EQ(vLibraryTestAccess::munge(lib, "Plugin_Same"), "_Z11Plugin_SameRK13RWCollectableRS_");

    // The plugin's C++ function is found under the name produced here and really called.
    ASSERT_TRUE(lib.fConstruct());
    vString out("a");
    EXPECT_TRUE(lib.fExecuteCollectable("Same", vString("a"), out));
    EXPECT_EQ(lib.fLastSymbol(), vLibraryTestAccess::munge(lib, "Plugin_Same"));
    EXPECT_FALSE(lib.fExecuteCollectable("Same", vString("b"), out));
    // The C entry point of the same name has no decorated form.
    EXPECT_FALSE(lib.fExecuteCollectable("Init", vString("a"), out));
}

TEST(vLibrary, ComparesAsItsFile) {
    vLibrary a("Plugin_", vFile("/lib/a.so"));
    vLibrary a2("Other_", vFile("/lib/a.so"));
    vLibrary b("Plugin_", vFile("/lib/b.so"));
    EXPECT_TRUE(a.isEqual(&a2));
    EXPECT_TRUE(a2.isEqual(&a));
    EXPECT_EQ(a.compareTo(&a2), 0);
    EXPECT_EQ(a.hash(), a2.hash());
    EXPECT_FALSE(a.isEqual(&b));
    EXPECT_LT(a.compareTo(&b), 0);
    EXPECT_GT(b.compareTo(&a), 0);
    // A bare file is not a library, even one over the same path.
    vFile file("/lib/a.so");
    EXPECT_FALSE(a.isEqual(&file));
    EXPECT_FALSE(a.isEqual(nullptr));
}

TEST(vLibrary, PersistsFileAndPrefixButNotTheHandle) {
    vLibrary lib("Plugin_", kPlugin);
    ASSERT_TRUE(lib.fConstruct());

    std::stringbuf buf;
    RWpostream out(&buf);
    lib.recursiveSaveOn(out);
    ASSERT_TRUE(out.good());
    const std::string text = buf.str();

    // Restored into a loaded library of another file: it takes file and prefix, and is unloaded.
    vLibrary into("X_", vFile("/elsewhere.so"));
    std::stringbuf in(text);
    RWpistream s(&in);
    EXPECT_EQ(RWCollectable::recursiveRestoreFrom(s, &into), &into);
    EXPECT_TRUE(s.good());
    EXPECT_EQ(into.fFile().fPath(), vString(VFC_TEST_PLUGIN));
    EXPECT_EQ(into.fPrefix(), "Plugin_");
    EXPECT_FALSE(into.fIsLoaded());
    EXPECT_TRUE(into.fConstruct());

    // A truncated stream leaves the target as it was.
    vLibrary kept("K_", vFile("/kept.so"));
    std::stringbuf cut(text.substr(0, text.size() - 8));
    RWpistream sc(&cut);
    RWCollectable::recursiveRestoreFrom(sc, &kept);
    EXPECT_FALSE(sc.good());
    EXPECT_EQ(kept.fPrefix(), "K_");
    EXPECT_EQ(kept.fFile().fPath(), "/kept.so");

    vfc::testing::TempDir dir;
    const std::string path = dir.file("lib.bin");
    {
        RWFile f(path.c_str(), "wb");
        lib.recursiveSaveOn(f);
        ASSERT_TRUE(f.good());
    }
    RWFile f(path.c_str(), "rb");
    std::unique_ptr<RWCollectable> back(RWCollectable::recursiveRestoreFrom(f));
    ASSERT_TRUE(f.good());
    ASSERT_NE(dynamic_cast<vLibrary*>(back.get()), nullptr);
    EXPECT_TRUE(back->isEqual(&lib));
    EXPECT_EQ(static_cast<vLibrary&>(*back).fPrefix(), "Plugin_");
    EXPECT_FALSE(static_cast<vLibrary&>(*back).fIsLoaded());
}

TEST(vLibrary, TypedListHoldsLibraries) {
    vSlistvLibrary list;
    list.fInsert(vLibrary("Plugin_", kPlugin));
    list.fInsert(vLibrary("", vFile("/lib/other.so")));
    EXPECT_EQ(list.fEntries(), 2u);
    // Found by file whatever the prefix; the element is a copy owned by the list.
    ASSERT_TRUE(list.fLookup(vLibrary("Any_", kPlugin)));
    EXPECT_EQ(list.aKey().fPrefix(), "Plugin_");
    ASSERT_TRUE(list.aKey().fConstruct());
    int state = 0;
    EXPECT_TRUE(list.aKey().fExecute("Init", &state));
    EXPECT_EQ(state, 42);
    EXPECT_FALSE(list.fContains(vLibrary("Plugin_", vFile("/lib/none.so"))));
}

}  // namespace
