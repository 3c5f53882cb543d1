#include "vfc/files/vFileOps.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <string>

#include "vfc/files/vChangeDir.h"
#include "vfc/files/vTempDir.h"
#include "vfc/os/platform.h"
#include "vfc/testing/TempDir.h"

namespace {

namespace fs = std::filesystem;
using vfc::testing::TempDir;

vFile F(const std::string& path) {
    return vFile(path.c_str());
}

std::string str(const vString& s) {
    return std::string(s.data(), s.length());
}

long long mtime(const std::string& path) {
    vTime t;
    return vcModificationTime(F(path), t) ? t.seconds() : -1;
}

TEST(vFileOps, MakesTreesAndRemovesThem) {
    TempDir dir;
    const std::string deep = dir.file("a/b/c");
    EXPECT_TRUE(vcMakeDirectoryTree(F(deep)));
    EXPECT_TRUE(fs::is_directory(deep));
    EXPECT_TRUE(vcMakeDirectoryTree(F(deep + "/")));  // there already
    dir.write("a/file", "x");
    EXPECT_FALSE(vcMakeDirectoryTree(F(dir.file("a/file/sub"))));  // a file in the way
    EXPECT_FALSE(vcMakeDirectoryTree(F("")));

    EXPECT_FALSE(vcRemoveDirectory(F(dir.file("a"))));  // not empty
    EXPECT_FALSE(vcRemoveFile(F(dir.file("a"))));       // a directory
    EXPECT_TRUE(vcRemoveDirectory(F(deep)));
    EXPECT_FALSE(vcRemoveDirectory(F(deep)));  // gone
    EXPECT_TRUE(vcRemoveFile(F(dir.file("a/file"))));
    EXPECT_FALSE(vcRemoveFile(F(dir.file("a/file"))));

    vcMakeDirectoryTree(F(dir.file("t/x/y")));
    dir.write("t/x/1.txt", "1");
    dir.write("t/x/y/2.txt", "2");
    EXPECT_TRUE(vcRemoveTree(F(dir.file("t"))));
    EXPECT_FALSE(fs::exists(dir.file("t")));
    EXPECT_FALSE(vcRemoveTree(F(dir.file("t"))));  // nothing there
}

TEST(vFileOps, CopiesFilesAndTreesWithTheirTimes) {
    TempDir dir;
    vcMakeDirectoryTree(F(dir.file("src/img")));
    const std::string page = dir.write("src/page.html", std::string("<p>\0x</p>", 9));
    const std::string logo = dir.write("src/img/logo.gif", "GIF89a");
    const vTime past(vDate(6, 11, 1994), 8, 49, 37);
    ASSERT_TRUE(vcSetModificationTime(F(page), past));
    ASSERT_TRUE(vcSetModificationTime(F(logo), vTime(past.seconds() + 60)));

    EXPECT_TRUE(vcCopyFile(F(page), F(dir.file("copy.html"))));
    EXPECT_EQ(TempDir::read(dir.file("copy.html")), std::string("<p>\0x</p>", 9));
    EXPECT_EQ(mtime(dir.file("copy.html")), past.seconds());
    dir.write("other", "longer old content");
    EXPECT_TRUE(vcCopyFile(F(logo), F(dir.file("other"))));  // replaced
    EXPECT_EQ(TempDir::read(dir.file("other")), "GIF89a");
    EXPECT_FALSE(vcCopyFile(F(dir.file("src")), F(dir.file("x"))));  // a directory
    EXPECT_FALSE(vcCopyFile(F(dir.file("none")), F(dir.file("x"))));
    EXPECT_FALSE(vcCopyFile(F(page), F(dir.file("no/dir/x"))));  // a missing parent
    EXPECT_FALSE(fs::exists(dir.file("x")));

    EXPECT_TRUE(vcCopyTree(F(dir.file("src")), F(dir.file("out/site"))));
    EXPECT_EQ(TempDir::read(dir.file("out/site/img/logo.gif")), "GIF89a");
    EXPECT_EQ(mtime(dir.file("out/site/img/logo.gif")), past.seconds() + 60);
    EXPECT_EQ(mtime(dir.file("out/site/page.html")), past.seconds());
    EXPECT_FALSE(vcCopyTree(F(page), F(dir.file("out2"))));  // not a directory

    unsigned long long size = 0;
    EXPECT_TRUE(vcFileSize(F(page), size));
    EXPECT_EQ(size, 9u);
    EXPECT_FALSE(vcFileSize(F(dir.file("none")), size));
    vTime t;
    EXPECT_FALSE(vcModificationTime(F(dir.file("none")), t));
}

TEST(vFileOps, RenamesReplacingAndTellsAccess) {
    TempDir dir;
    const std::string a = dir.write("a", "new");
    const std::string b = dir.write("b", "old");
    EXPECT_TRUE(vcRenameFile(F(a), F(b)));
    EXPECT_EQ(TempDir::read(b), "new");
    EXPECT_FALSE(fs::exists(a));
    EXPECT_FALSE(vcRenameFile(F(a), F(b)));  // nothing to rename
    vcMakeDirectoryTree(F(dir.file("d")));
    EXPECT_TRUE(vcRenameFile(F(dir.file("d")), F(dir.file("e"))));  // folders too
    EXPECT_TRUE(fs::is_directory(dir.file("e")));

    EXPECT_TRUE(vcIsReadable(F(b)));
    EXPECT_TRUE(vcIsWritable(F(b)));
    EXPECT_FALSE(vcIsReadable(F(dir.file("none"))));
    EXPECT_FALSE(vcIsWritable(F(dir.file("none"))));
    // Read-only: on Windows the attribute refuses writing to everybody. On POSIX whether
    // writing is refused is the user's call (root may write anyway), so the answer must agree
    // with what an open for writing does.
    fs::permissions(b, fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read);
    const bool opens = std::ofstream(b, std::ios::app).is_open();
    EXPECT_EQ(vcIsWritable(F(b)), vfc::os::kWindows ? false : opens);
    EXPECT_TRUE(vcIsReadable(F(b)));
    EXPECT_TRUE(vcRemoveFile(F(b)));  // removable all the same
}

TEST(vFileOps, RemovalAndCopyNeverFollowLinks) {
    TempDir dir;
    vcMakeDirectoryTree(F(dir.file("outside")));
    dir.write("outside/keep.txt", "keep");
    vcMakeDirectoryTree(F(dir.file("tree/sub")));
    dir.write("tree/sub/f", "f");
    std::error_code error;
    fs::create_directory_symlink(dir.file("outside"), dir.file("tree/out"), error);
    if (error) GTEST_SKIP() << "the system makes no symbolic links here: " << error.message();
    fs::create_directory_symlink(dir.file("tree"), dir.file("tree/sub/loop"), error);
    fs::create_symlink(dir.file("outside/keep.txt"), dir.file("tree/file-link"), error);
    ASSERT_FALSE(error);

    // The copy takes a linked file as a file and leaves linked folders (and the loop) out.
    EXPECT_TRUE(vcCopyTree(F(dir.file("tree")), F(dir.file("copy"))));
    EXPECT_EQ(TempDir::read(dir.file("copy/file-link")), "keep");
    EXPECT_FALSE(fs::exists(dir.file("copy/out")));
    EXPECT_FALSE(fs::exists(dir.file("copy/sub/loop")));
    EXPECT_EQ(TempDir::read(dir.file("copy/sub/f")), "f");

    // Removing a link removes the link alone.
    EXPECT_TRUE(vcRemoveFile(F(dir.file("tree/file-link"))));
    EXPECT_EQ(TempDir::read(dir.file("outside/keep.txt")), "keep");
    EXPECT_TRUE(vcRemoveTree(F(dir.file("tree"))));
    EXPECT_FALSE(fs::exists(dir.file("tree")));
    EXPECT_EQ(TempDir::read(dir.file("outside/keep.txt")), "keep");
}

TEST(vFileOps, TemporaryFilesAndFolders) {
    TempDir dir;
    std::set<std::string> names;
    for (int i = 0; i < 20; ++i) {
        vFile made;
        ASSERT_TRUE(vcMakeTempFile(F(dir.path()), "conv-", made));
        const std::string path = str(made.fPath());
        EXPECT_EQ(path.rfind(dir.file("conv-"), 0), 0u) << path;
        EXPECT_EQ(path.size(), dir.file("conv-").size() + 8);
        EXPECT_TRUE(fs::is_regular_file(path));
        EXPECT_EQ(fs::file_size(path), 0u);
        names.insert(path);
    }
    EXPECT_EQ(names.size(), 20u);
    vFile made;
    EXPECT_FALSE(vcMakeTempFile(F(dir.file("missing")), "x", made));
    EXPECT_FALSE(vcMakeTempDirectory(F(dir.file("missing")), "x", made));
    EXPECT_TRUE(fs::is_directory(str(vcTempFolder().fPath())));

    std::string kept, removed;
    {
        vTempDir work("site-", F(dir.path()));
        ASSERT_TRUE(work.fOK());
        removed = str(work.fDir().fPath());
        EXPECT_TRUE(fs::is_directory(removed));
        dir.write(removed.substr(dir.path().size() + 1) + "/page.html", "p");
        vTempDir other;  // in the system's temporary folder
        ASSERT_TRUE(other.fOK());
        kept = str(other.fDir().fPath());
        EXPECT_NE(kept, removed);
        other.fKeep();
    }
    EXPECT_FALSE(fs::exists(removed));
    EXPECT_TRUE(fs::is_directory(kept));
    fs::remove_all(kept);

    vTempDir now("x-", F(dir.path()));
    const std::string path = str(now.fDir().fPath());
    EXPECT_TRUE(now.fRemove());
    EXPECT_FALSE(fs::exists(path));
    EXPECT_FALSE(now.fOK());
    EXPECT_FALSE(now.fRemove());
    vTempDir none("x-", F(dir.file("missing")));
    EXPECT_FALSE(none.fOK());
}

TEST(vChangeDir, ChangesForItsLifetime) {
    TempDir dir;
    vcMakeDirectoryTree(F(dir.file("work")));
    const fs::path before = fs::current_path();
    {
        vChangeDir in(F(dir.file("work")));
        ASSERT_TRUE(in.fOK());
        EXPECT_TRUE(fs::equivalent(fs::current_path(), dir.file("work")));
        EXPECT_TRUE(fs::equivalent(str(in.fPrevious().fPath()), before));
        {
            vChangeDir nested(F(".."));
            EXPECT_TRUE(fs::equivalent(fs::current_path(), dir.path()));
        }
        EXPECT_TRUE(fs::equivalent(fs::current_path(), dir.file("work")));
        std::ofstream(F("here.txt").fPath().data()) << "relative";
    }
    EXPECT_EQ(fs::current_path(), before);
    EXPECT_EQ(TempDir::read(dir.file("work/here.txt")), "relative");
    vChangeDir missing(F(dir.file("none")));
    EXPECT_FALSE(missing.fOK());
    EXPECT_EQ(fs::current_path(), before);
}

}  // namespace
