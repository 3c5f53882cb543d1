#include "vfc/files/vDirHierFilter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <initializer_list>
#include <memory>
#include <sstream>
#include <string>
#include <system_error>
#include <vector>

#include "vfc/app/vApp.h"
#include "vfc/os/platform.h"
#include "vfc/persist/vPistream.h"
#include "vfc/persist/vPostream.h"
#include "vfc/rw/RWFile.h"
#include "vfc/testing/TempDir.h"

namespace {

namespace fs = std::filesystem;
using vfc::testing::TempDir;

vMatchList patterns(std::initializer_list<const char*> list) {
    vMatchList m;
    for (const char* p : list)
        m.fInsert(p);
    return m;
}

// Makes the files (a name ending in "/" makes a folder) under root.
void makeTree(const TempDir& dir, const std::string& root,
              std::initializer_list<const char*> names) {
    fs::create_directories(dir.file(root));
    for (std::string name : names) {
        const std::string path = root + "/" + name;
        if (name.back() == '/') {
            fs::create_directories(dir.file(path));
        } else {
            fs::create_directories(fs::path(dir.file(path)).parent_path());
            dir.write(path, name);
        }
    }
}

// The yielded paths with the root and its "/" taken off, joined by spaces; a path that does
// not start with the root shows whole, marked with "!".
std::string relative(const std::string& root, const vSlistvFile& files) {
    std::string out;
    vSlistvFileIter it(files);
    while (it.fAdvance()) {
        const std::string path(it.aKey().fPath().data(), it.aKey().fPath().length());
        if (!out.empty()) out += ' ';
        out += path.compare(0, root.size() + 1, root + "/") == 0 ? path.substr(root.size() + 1)
                                                                 : "!" + path;
    }
    return out;
}

std::string collect(const vDirHierFilter& filter) {
    vSlistvFile files;
    EXPECT_TRUE(filter.fCollect(files));
    const vString& root = filter.fRoot().fPath();
    return relative(std::string(root.data(), root.length()), files);
}

// Records warnings instead of printing them.
class LogRecorder : public vApp {
  public:
    LogRecorder() : vApp("F", "N", "1.0") {}
    void fLogMsg(const vString& text, int level) override {
        aLog += std::to_string(level) + ":" + std::string(text.data(), text.length()) + "\n";
    }
    std::string aLog;
};

TEST(vDirHierFilter, WalksDepthFirstInByteOrder) {
    TempDir dir;
    makeTree(dir, "t",
             {"b.txt", "a/x.htm", "a/z/deep.htm", "a.txt", "B.htm", "a-b.htm", "c/", "a/Y.htm"});
    const std::string root = dir.file("t");
    vDirHierFilter filter(vFile(root.c_str()));
    EXPECT_EQ(collect(filter), "B.htm a/Y.htm a/x.htm a/z/deep.htm a-b.htm a.txt b.txt");

    // The same order as every regular file the standard walker finds, sorted with "/" first.
    std::vector<std::string> expected;
    for (const fs::directory_entry& e : fs::recursive_directory_iterator(root))
        if (e.is_regular_file()) {
            std::string rel = e.path().lexically_relative(root).generic_string();
            std::replace(rel.begin(), rel.end(), '/', '\x01');
            expected.push_back(rel);
        }
    std::sort(expected.begin(), expected.end());
    std::string joined;
    for (std::string rel : expected) {
        std::replace(rel.begin(), rel.end(), '\x01', '/');
        joined += (joined.empty() ? "" : " ") + rel;
    }
    EXPECT_EQ(collect(filter), joined);

    // Folders when asked, each before its contents; an empty one too.
    filter.fSetDirectories(true);
    EXPECT_EQ(collect(filter), "B.htm a a/Y.htm a/x.htm a/z a/z/deep.htm a-b.htm a.txt b.txt c");

    // A root ending in a separator gets no second one; fCollect appends to what out holds.
    vDirHierFilter slashed(vFile((root + "/").c_str()), vMatchList(), vMatchList(), 0, false);
    vSlistvFile files;
    files.fInsert(vFile("kept"));
    ASSERT_TRUE(slashed.fCollect(files));
    EXPECT_EQ(relative(root, files), "!kept B.htm a-b.htm a.txt b.txt");
    // On Windows "\" ends a root as well, and is kept.
    if (vfc::os::kWindows) {
        vDirHierFilter backslashed(vFile((root + "\\").c_str()), vMatchList(), vMatchList(), 0,
                                   false);
        vSlistvFile out;
        ASSERT_TRUE(backslashed.fCollect(out));
        ASSERT_TRUE(out.fFirst());
        EXPECT_EQ(out.aKey().fPath(), (root + "\\B.htm").c_str());
    }
}

TEST(vDirHierFilter, IncludeAndExcludeByNameAndExcludedFoldersStayClosed) {
    TempDir dir;
    makeTree(dir, "t",
             {"index.htm", "notes.txt", "a/page.htm", "a/page.htm.bak", "CVS/x.htm",
              "img/CVS/y.htm", "img/logo.gif", "old.htm/in.txt"});
    vDirHierFilter filter(vFile(dir.file("t").c_str()));

    // Folders are entered whatever the include list says; it picks what is yielded, folders
    // included.
    filter.fSetInclude(patterns({"*.htm"}));
    EXPECT_EQ(collect(filter), "CVS/x.htm a/page.htm img/CVS/y.htm index.htm");
    filter.fSetDirectories(true);
    EXPECT_EQ(collect(filter), "CVS/x.htm a/page.htm img/CVS/y.htm index.htm old.htm");
    filter.fSetDirectories(false);

    // An excluded folder is neither yielded nor entered, at any level, though its files match.
    filter.fSetExclude(patterns({"CVS", "*.bak"}));
    EXPECT_EQ(collect(filter), "a/page.htm index.htm");
    filter.fSetInclude(vMatchList());
    filter.fSetDirectories(true);
    EXPECT_EQ(collect(filter),
              "a a/page.htm img img/logo.gif index.htm notes.txt old.htm old.htm/in.txt");

    // Exclusion wins over inclusion; names are matched, never paths.
    filter.fSetInclude(patterns({"*.htm", "*.gif"}));
    filter.fSetExclude(patterns({"logo.*", "a/page.htm"}));
    filter.fSetDirectories(false);
    EXPECT_EQ(collect(filter), "CVS/x.htm a/page.htm img/CVS/y.htm index.htm");
}

TEST(vDirHierFilter, DepthLimitCountsLevelsBelowTheRoot) {
    TempDir dir;
    makeTree(dir, "t", {"top.txt", "a/one.txt", "a/b/two.txt", "a/b/c/three.txt"});
    vDirHierFilter filter(vFile(dir.file("t").c_str()));
    const char* const expected[] = {"top.txt", "a/one.txt top.txt", "a/b/two.txt a/one.txt top.txt",
                                    "a/b/c/three.txt a/b/two.txt a/one.txt top.txt"};
    for (int depth = 0; depth < 4; ++depth) {
        filter.fSetDepth(depth);
        EXPECT_EQ(collect(filter), expected[depth]) << "depth " << depth;
    }
    filter.fSetDepth(-1);
    EXPECT_EQ(collect(filter), expected[3]);
    filter.fSetDepth(-7);
    EXPECT_EQ(collect(filter), expected[3]);
    // A folder at the limit is yielded but not entered.
    filter.fSetDepth(1);
    filter.fSetDirectories(true);
    EXPECT_EQ(collect(filter), "a a/b a/one.txt top.txt");
}

struct StopAfter {
    int left;
    std::vector<std::string> seen;
};

bool stopAfter(const vFile& file, void* data) {
    StopAfter* s = static_cast<StopAfter*>(data);
    s->seen.emplace_back(file.fPath().data(), file.fPath().length());
    return --s->left > 0;
}

TEST(vDirHierFilter, VisitorStopsTheWalkAndMissingRootsFail) {
    TempDir dir;
    makeTree(dir, "t", {"a/1", "a/2", "a/3", "b/4", "c"});
    const std::string root = dir.file("t");
    vDirHierFilter filter(vFile(root.c_str()));

    // Stopped inside a folder: nothing more, not even in the folders above it.
    StopAfter two{2, {}};
    EXPECT_FALSE(filter.fWalk(stopAfter, &two));
    EXPECT_EQ(two.seen, (std::vector<std::string>{root + "/a/1", root + "/a/2"}));
    // Stopped by the last match is still a stop; a visitor that never stops walks to the end.
    StopAfter five{5, {}};
    EXPECT_FALSE(filter.fWalk(stopAfter, &five));
    EXPECT_EQ(five.seen.size(), 5u);
    StopAfter all{100, {}};
    EXPECT_TRUE(filter.fWalk(stopAfter, &all));
    EXPECT_EQ(all.seen, five.seen);

    // A missing root, a file as root and no root at all: false, out untouched, nobody called.
    for (const std::string& bad : {dir.file("none"), dir.file("t/c"), std::string()}) {
        vDirHierFilter missing(vFile(bad.c_str()));
        vSlistvFile out;
        out.fInsert(vFile("kept"));
        EXPECT_FALSE(missing.fCollect(out)) << bad;
        EXPECT_EQ(out.fEntries(), 1u);
        StopAfter none{100, {}};
        EXPECT_FALSE(missing.fWalk(stopAfter, &none));
        EXPECT_TRUE(none.seen.empty());
    }
    EXPECT_FALSE(filter.fWalk(nullptr, nullptr));
}

TEST(vDirHierFilter, NeverFollowsLinksToFolders) {
    TempDir dir;
    makeTree(dir, "outside", {"keep.txt", "far/away.txt"});
    makeTree(dir, "t", {"sub/f.txt"});
    std::error_code error;
    fs::create_directory_symlink(dir.file("t"), dir.file("t/sub/loop"), error);
    if (error) GTEST_SKIP() << "the system makes no symbolic links here: " << error.message();
    fs::create_directory_symlink(dir.file("outside"), dir.file("t/out"), error);
    ASSERT_FALSE(error) << error.message();
    fs::create_symlink(dir.file("outside/keep.txt"), dir.file("t/file-link"), error);
    ASSERT_FALSE(error) << error.message();
    fs::create_symlink(dir.file("outside/gone.txt"), dir.file("t/dangling"), error);
    ASSERT_FALSE(error) << error.message();

    // The loop is survived, the way out not taken; a link to a file is a file.
    vDirHierFilter filter(vFile(dir.file("t").c_str()));
    EXPECT_EQ(collect(filter), "file-link sub/f.txt");
    filter.fSetDirectories(true);
    EXPECT_EQ(collect(filter), "file-link out sub sub/f.txt sub/loop");
    // The root itself is read where its link leads.
    vDirHierFilter viaLink(vFile(dir.file("t/out").c_str()));
    EXPECT_EQ(collect(viaLink), "far/away.txt keep.txt");
}

TEST(vDirHierFilter, UnreadableFolderIsReportedAndSkipped) {
    TempDir dir;
    makeTree(dir, "t", {"a.txt", "locked/secret.txt", "open/x.txt"});
    const std::string locked = dir.file("t/locked");
    fs::permissions(locked, fs::perms::none);
    // Whether the folder can still be read (as root it can, and Windows ignores these bits):
    // the standard library's answer decides what the walk must do.
    std::error_code error;
    fs::directory_iterator probe(locked, error);
    const bool readable = !error;

    LogRecorder app;
    vDirHierFilter filter(vFile(dir.file("t").c_str()));
    const std::string got = collect(filter);
    fs::permissions(locked, fs::perms::owner_all);
    if (readable) {
        EXPECT_EQ(got, "a.txt locked/secret.txt open/x.txt");
        EXPECT_EQ(app.aLog, "");
    } else {
        EXPECT_EQ(got, "a.txt open/x.txt");
        EXPECT_EQ(app.aLog, "1:cannot read folder \"" + locked + "\"; skipped\n");
    }
}

TEST(vDirHierFilter, PersistsItsSettingsOnVirtualStreamsOnly) {
    TempDir dir;
    makeTree(dir, "t", {"a.htm", "b.HTM", "s.htm/c.htm", "s.htm/d/e.htm", "x/f.htm"});
    vMatchList include(vSlistvString(), true);
    include.fInsert("*.htm");
    const vDirHierFilter filter(vFile(dir.file("t").c_str()), include, patterns({"x", "a*"}), 1,
                                true);
    std::stringstream ss;
    {
        vPostream out(ss);
        filter.recursiveSaveOn(out);
    }
    const std::string bytes = ss.str();
    vPistream in(ss);
    std::unique_ptr<RWCollectable> back(RWCollectable::recursiveRestoreFrom(in));
    ASSERT_NE(back, nullptr);
    EXPECT_TRUE(in.good());
    ASSERT_EQ(back->isA(), vDirHierFilter::classIsA());
    const vDirHierFilter& restored = *static_cast<const vDirHierFilter*>(back.get());
    EXPECT_TRUE(restored.isEqual(&filter));
    EXPECT_EQ(restored.compareTo(&filter), 0);
    EXPECT_EQ(restored.hash(), filter.hash());
    EXPECT_EQ(restored.fDepth(), 1);
    EXPECT_TRUE(restored.fDirectories());
    EXPECT_TRUE(restored.fInclude().fIgnoreCase());
    EXPECT_EQ(collect(restored), "b.HTM s.htm s.htm/c.htm");
    EXPECT_EQ(collect(restored), collect(filter));

    // Each setting takes part in equality and order.
    std::vector<vDirHierFilter> others(5, filter);
    others[0].fSetRoot(vFile("elsewhere"));
    others[1].fSetInclude(patterns({"*.htm"}));
    others[2].fSetExclude(patterns({"x"}));
    others[3].fSetDepth(2);
    others[4].fSetDirectories(false);
    for (const vDirHierFilter& other : others) {
        EXPECT_FALSE(other.isEqual(&filter));
        EXPECT_NE(other.compareTo(&filter), 0);
        EXPECT_EQ(other.compareTo(&filter), -filter.compareTo(&other));
    }
    EXPECT_FALSE(filter.isEqual(&include));

    // A stream cut anywhere before the object's end leaves the target as it was.
    for (size_t cut = 0; cut + 4 < bytes.size(); ++cut) {
        std::stringstream damaged(bytes.substr(0, cut));
        vPistream damagedIn(damaged);
        vDirHierFilter target(vFile("kept"), patterns({"k"}), patterns({"e"}), 3, false);
        const vDirHierFilter before(target);
        RWCollectable::recursiveRestoreFrom(damagedIn, &target);
        EXPECT_FALSE(damagedIn.good()) << "cut at " << cut;
        EXPECT_TRUE(target.isEqual(&before)) << "cut at " << cut;
    }

    // The binary file form writes nothing and reads nothing.
    {
        RWFile file(dir.file("f.bin").c_str(), "wb");
        filter.saveGuts(file);
    }
    EXPECT_EQ(TempDir::read(dir.file("f.bin")), "");
}

}  // namespace
