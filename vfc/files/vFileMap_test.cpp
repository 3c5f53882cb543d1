#include "vfc/files/vFileMap.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "vfc/testing/TempDir.h"

using vfc::testing::TempDir;

namespace {
constexpr unsigned k64MiB = 64u * 1024u * 1024u;
}  // namespace

TEST(vFileMapTest, NewFileGetsRoomAndEndsAtTheCursor) {
    TempDir dir;
    const std::string path = dir.write("toc.txt", "stale content to be replaced");
    vFileMap map;
    char* base = map.Map(path.c_str(), 100, 0);  // created anew: empty, so 64 MiB
    ASSERT_NE(base, nullptr);
    EXPECT_EQ(std::filesystem::file_size(path), k64MiB);
    EXPECT_EQ(map.GetOffsetPtr(k64MiB - 1), base + k64MiB - 1);
    EXPECT_EQ(map.GetOffsetPtr(k64MiB), nullptr);
    EXPECT_EQ(map.Print(false, "%s%d", "Contents", 42), base + 10);
    map.Unmap();
    EXPECT_EQ(map.GetPos(), 0u);
    EXPECT_EQ(TempDir::read(path), "Contents42");
}

TEST(vFileMapTest, ExistingFileLengthsAndPositions) {
    TempDir dir;
    std::string text;
    for (int i = 0; i < 100; ++i)
        text += static_cast<char>('A' + i % 26);
    const std::string path = dir.write("data.bin", text);
    vFileMap map;

    // Read-only: size 0 maps the whole file, and the file stays as it is.
    char* base = map.Map(path.c_str(), 0, vFileMap::kReadOnly);
    ASSERT_NE(base, nullptr);
    EXPECT_EQ(std::string(base, 100), text);
    EXPECT_EQ(map.SetPos(100), 0u);
    EXPECT_EQ(map.SetPos(99), 1u);
    map.Unmap();
    EXPECT_EQ(TempDir::read(path), text);

    // A smaller size maps only that much; unmapping a kept file cuts it to the cursor.
    ASSERT_NE(map.Map(path.c_str(), 40, vFileMap::kKeep), nullptr);
    EXPECT_EQ(map.SetPos(40), 0u);
    EXPECT_EQ(map.GetOffsetPtr(40), nullptr);
    EXPECT_EQ(map.SetPos(39), 1u);
    map.Unmap();
    EXPECT_EQ(TempDir::read(path), text.substr(0, 39));

    // Growing maps the file's size plus the size asked for, with the cursor at the start.
    base = map.Map(path.c_str(), 50, vFileMap::kGrow | vFileMap::kKeep);
    ASSERT_NE(base, nullptr);
    EXPECT_EQ(map.GetPos(), 0u);
    EXPECT_EQ(std::string(base, 39), text.substr(0, 39));
    EXPECT_NE(map.GetOffsetPtr(88), nullptr);
    EXPECT_EQ(map.GetOffsetPtr(89), nullptr);
    ASSERT_EQ(map.SetPos(39), 1u);
    EXPECT_NE(map.Print(false, "+%s", "end"), nullptr);
    // Mapping again releases the held file first.
    ASSERT_NE(map.Map(dir.file("other.txt").c_str(), 10, 0), nullptr);
    EXPECT_EQ(TempDir::read(path), text.substr(0, 39) + "+end");
}

TEST(vFileMapTest, ReadOnlyMappingsCannotLengthenAFile) {
    TempDir dir;
    vFileMap map;
    const std::string empty = dir.write("empty", "");
    EXPECT_EQ(map.Map(empty.c_str(), 0, vFileMap::kReadOnly), nullptr);
    EXPECT_EQ(map.Print(false, "x"), nullptr);
    const std::string small = dir.write("small", "abc");
    EXPECT_EQ(map.Map(small.c_str(), 10, vFileMap::kReadOnly | vFileMap::kGrow | vFileMap::kKeep),
              nullptr);
    EXPECT_EQ(TempDir::read(empty) + TempDir::read(small), "abc");
}

TEST(vFileMapTest, PrintStaysStrictlyInsideTheMappingAndTheBuffer) {
    vFileMap map;
    char* base = map.Map(nullptr, 16, vFileMap::kMemory);
    ASSERT_NE(base, nullptr);
    EXPECT_EQ(map.Print(false, "%s", "0123456789abcdef"), nullptr);  // would end at the end
    EXPECT_EQ(map.GetPos(), 0u);
    EXPECT_EQ(map.Print(false, "%s", "0123456789abcde"), base + 15);
    EXPECT_EQ(std::string(base, 15), "0123456789abcde");

    ASSERT_NE(map.Map("", 0, vFileMap::kMemory), nullptr);
    EXPECT_EQ(map.Print(false, "%s", std::string(4096, 'y').c_str()), nullptr);
    EXPECT_EQ(map.GetPos(), 0u);
    EXPECT_EQ(*map.GetOffsetPtr(0), '\0');
    const std::string longest(4095, 'x');
    char* end = map.Print(false, "%s", longest.c_str());
    ASSERT_EQ(end, map.GetOffsetPtr(4095));
    EXPECT_EQ(std::string(map.GetOffsetPtr(0), 4095), longest);
    EXPECT_EQ(map.Print(true, "%d-%s", 7, "z"), end + 3);
    EXPECT_EQ(std::string(end, 3), "7-z");
}

TEST(vFileMapTest, SaveAsAndMemoryMappingsLeaveOnlyWhatWasAskedFor) {
    TempDir dir;
    vFileMap map;
    const std::string unmapped = dir.file("unmapped.txt");
    EXPECT_EQ(map.SaveAs(unmapped.c_str()), 0u);
    EXPECT_TRUE(std::filesystem::exists(unmapped));

    const std::string name = dir.file("memory");
    ASSERT_NE(map.Map(name.c_str(), 0, vFileMap::kMemory), nullptr);
    EXPECT_NE(map.GetOffsetPtr(k64MiB - 1), nullptr);
    ASSERT_NE(map.Print(false, "saved %s", "bytes"), nullptr);
    const std::string saved = dir.file("saved.txt");
    EXPECT_EQ(map.SaveAs(saved.c_str()), 1u);
    EXPECT_EQ(map.SaveAs(dir.file("no/dir/x").c_str()), 0u);
    map.Unmap();
    EXPECT_EQ(TempDir::read(saved), "saved bytes");
    EXPECT_FALSE(std::filesystem::exists(name));
}
