// Cross-checks of the path algebra on random absolute and relative UNIX paths against the
// lexical path operations of std::filesystem, which work on strings alone (no file system
// access), within the domains where both define the same answer.
#include <gtest/gtest.h>

#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "vfc/files/vPathAlgebra.h"
#include "vfc/files/vPathModel.h"

namespace {

namespace fs = std::filesystem;

std::string Str(const vString& s) {
    return std::string(s.data(), s.length());
}

vPathComponentList Parse(const std::string& path) {
    vPathComponentList list;
    vcListComponents(vPathType::eUNIX, vString(path.c_str()), list);
    return list;
}

std::string Generate(const vPathComponentList& list) {
    vString out;
    vcGeneratePath(vPathType::eUNIX, list, out);
    return Str(out);
}

// A three-letter alphabet, so that random paths often share a beginning.
const char* const kNames[] = {"a", "b", "c"};

class PathMaker {
  public:
    explicit PathMaker(unsigned seed) : aRng(seed) {}

    int fBelow(int n) { return std::uniform_int_distribution<int>(0, n - 1)(aRng); }

    // Entries: names, and when dots is set "." and ".." now and then.
    std::vector<std::string> fEntries(int minCount, int maxCount, bool dots) {
        std::vector<std::string> entries(
            static_cast<size_t>(minCount + fBelow(maxCount - minCount + 1)));
        for (std::string& e : entries) {
            int pick = fBelow(dots ? 6 : 3);
            e = pick < 3 ? kNames[pick] : pick == 3 ? "." : "..";
        }
        return entries;
    }

    // Joins entries with "/" (a leading one when absolute); between entries the separator is
    // doubled now and then when doubled is set. Never a leading "//" (which POSIX leaves to the
    // implementation) and never a trailing "/".
    std::string fJoin(const std::vector<std::string>& entries, bool absolute, bool doubled) {
        std::string out = absolute ? "/" : "";
        for (size_t i = 0; i < entries.size(); ++i) {
            if (i > 0) out += doubled && fBelow(8) == 0 ? "//" : "/";
            out += entries[i];
        }
        return out;
    }

  private:
    std::mt19937 aRng;
};

// The relative path from one absolute directory to another, checked against
// lexically_relative on paths made of names only.
//
// The two differ once "." or ".." appear, so those inputs are left out:
// - a ".." in from ends our climb (nothing after it is climbed out of), while lexically_relative
//   counts it as one level less to climb;
// - a ".." in to removes the name our result has just taken, while lexically_relative copies
//   ".." into its result as it stands.
// Trailing separators are left out too: the list keeps them as a flag that UNIX notation does
// not write, while lexically_relative ends its result with "/".
TEST(vPathAlgebraFs, MakeRelativeMatchesLexicallyRelative) {
    PathMaker maker(20240611u);
    int checked = 0, equal = 0, climbing = 0, mismatches = 0;
    for (int i = 0; i < 3000; ++i) {
        std::vector<std::string> fromEntries = maker.fEntries(0, 5, false);
        // to shares a random beginning of from, then goes its own way.
        std::vector<std::string> toEntries(
            fromEntries.begin(),
            fromEntries.begin() + maker.fBelow(static_cast<int>(fromEntries.size()) + 1));
        for (const std::string& e : maker.fEntries(0, 3, false))
            toEntries.push_back(e);
        if (i % 10 == 0) toEntries = fromEntries;
        const std::string from = maker.fJoin(fromEntries, true, true);
        const std::string to = maker.fJoin(toEntries, true, true);

        const vPathComponentList fromList = Parse(from);
        const vPathComponentList toList = Parse(to);
        vPathComponentList rel;
        vcMakeRelative(false, fromList, toList, rel);
        const std::string ours = Generate(rel);
        const std::string expected = fs::path(to).lexically_relative(from).generic_string();
        ++checked;
        if (ours == ".") ++equal;
        if (ours.compare(0, 2, "..") == 0) ++climbing;
        if (ours != expected && ++mismatches <= 10)
            ADD_FAILURE() << "from " << from << " to " << to << ": " << ours << " expected "
                          << expected;

        // Resolving the relative path against from leads back to to.
        vPathComponentList back;
        vcResolvePath(fromList, rel, back);
        if (!back.fIsEqual(toList) && ++mismatches <= 10)
            ADD_FAILURE() << "from " << from << " to " << to << " via " << ours << " resolves to "
                          << Generate(back);
    }
    EXPECT_EQ(mismatches, 0);
    // The domain really exercised both the equal case and climbing.
    EXPECT_GT(equal, checked / 20);
    EXPECT_GT(climbing, checked / 4);
}

// Resolving a relative path of names, "." and ".." against a directory, checked against
// (base / rel).lexically_normal() with its trailing "/" (left by a final "..") removed.
//
// Absolute base: the two agree on every input. Both drop a ".." that would climb above the
// root: we because an up removes names only, lexically_normal because it removes dot-dot
// filenames that directly follow the root directory.
//
// Relative base: they agree exactly when, walking rel from the left, the number of names of
// base plus the names of rel so far minus the ".." entries so far never drops below zero (no
// ".." climbs out of the base) and ends above zero. A ".." that finds no name is dropped by us
// but kept as a leading ".." by lexically_normal; names after it are pushed and popped alike
// on both sides, so our answer is lexically_normal's with the leading "../" entries removed.
// An empty result is our empty list, written "", and lexically_normal's ".".
TEST(vPathAlgebraFs, ResolveMatchesLexicallyNormal) {
    PathMaker maker(7u);
    int exact = 0, climbedOut = 0, emptied = 0, mismatches = 0;
    for (int i = 0; i < 4000; ++i) {
        const bool absolute = i % 2 == 0;
        std::vector<std::string> baseEntries = maker.fEntries(absolute ? 0 : 1, 4, false);
        std::vector<std::string> relEntries = maker.fEntries(0, 6, true);
        std::string base = maker.fJoin(baseEntries, absolute, true);
        if (!baseEntries.empty() && maker.fBelow(4) == 0) base += "/";  // a directory "a/b/"
        const std::string rel = maker.fJoin(relEntries, false, false);

        vPathComponentList out;
        vcResolvePath(Parse(base), Parse(rel), out);
        const std::string ours = Generate(out);
        std::string expected = (fs::path(base) / rel).lexically_normal().generic_string();
        if (expected.size() > 1 && expected.back() == '/') expected.pop_back();

        int depth = static_cast<int>(baseEntries.size());
        bool climbsOut = false;
        for (const std::string& e : relEntries) {
            if (e == "..")
                --depth;
            else if (e != ".")
                ++depth;
            if (depth < 0) climbsOut = true;
        }
        if (!absolute && (climbsOut || depth <= 0)) {
            // Outside the shared domain: strip the leading ".." entries lexically_normal kept.
            while (expected == ".." || expected.compare(0, 3, "../") == 0)
                expected.erase(0, expected.size() > 2 ? 3 : 2);
            if (expected == "." || expected.empty()) {
                expected.clear();
                ++emptied;
            }
            if (climbsOut) ++climbedOut;
        } else {
            ++exact;
        }
        if (ours != expected && ++mismatches <= 10)
            ADD_FAILURE() << base << " + " << rel << ": " << ours << " expected " << expected;
    }
    EXPECT_EQ(mismatches, 0);
    EXPECT_GT(exact, 2000);
    EXPECT_GT(climbedOut, 50);
    EXPECT_GT(emptied, 50);
}

}  // namespace
