#include "vfc/files/vURLAlgebra.h"

#include <gtest/gtest.h>

#include <cctype>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

std::string str(const vString& s) {
    return std::string(s.data(), s.length());
}

std::string Resolve(const char* base, const char* ref) {
    vString out("(failed)");
    vcResolveURL(base, ref, out);
    return str(out);
}

std::string Relative(const std::string& from, const std::string& to) {
    vString out("(failed)");
    vcMakeRelativeURL(from.c_str(), to.c_str(), out);
    return str(out);
}

std::string Normal(const char* url) {
    vString out("(failed)");
    vcNormalizeURL(url, out);
    return str(out);
}

const char* const kBase = "http://a/b/c/d;p?q";

// Section 5.4 of RFC 3986: 23 normal and 19 abnormal examples, resolved against kBase.
const char* const kExamples[][2] = {
    {"g:h", "g:h"},
    {"g", "http://a/b/c/g"},
    {"./g", "http://a/b/c/g"},
    {"g/", "http://a/b/c/g/"},
    {"/g", "http://a/g"},
    {"//g", "http://g"},
    {"?y", "http://a/b/c/d;p?y"},
    {"g?y", "http://a/b/c/g?y"},
    {"#s", "http://a/b/c/d;p?q#s"},
    {"g#s", "http://a/b/c/g#s"},
    {"g?y#s", "http://a/b/c/g?y#s"},
    {";x", "http://a/b/c/;x"},
    {"g;x", "http://a/b/c/g;x"},
    {"g;x?y#s", "http://a/b/c/g;x?y#s"},
    {"", "http://a/b/c/d;p?q"},
    {".", "http://a/b/c/"},
    {"./", "http://a/b/c/"},
    {"..", "http://a/b/"},
    {"../", "http://a/b/"},
    {"../g", "http://a/b/g"},
    {"../..", "http://a/"},
    {"../../", "http://a/"},
    {"../../g", "http://a/g"},
    // Abnormal.
    {"../../../g", "http://a/g"},
    {"../../../../g", "http://a/g"},
    {"/./g", "http://a/g"},
    {"/../g", "http://a/g"},
    {"g.", "http://a/b/c/g."},
    {".g", "http://a/b/c/.g"},
    {"g..", "http://a/b/c/g.."},
    {"..g", "http://a/b/c/..g"},
    {"./../g", "http://a/b/g"},
    {"./g/.", "http://a/b/c/g/"},
    {"g/./h", "http://a/b/c/g/h"},
    {"g/../h", "http://a/b/c/h"},
    {"g;x=1/./y", "http://a/b/c/g;x=1/y"},
    {"g;x=1/../y", "http://a/b/c/y"},
    {"g?y/./x", "http://a/b/c/g?y/./x"},
    {"g?y/../x", "http://a/b/c/g?y/../x"},
    {"g#s/./x", "http://a/b/c/g#s/./x"},
    {"g#s/../x", "http://a/b/c/g#s/../x"},
    {"http:g", "http:g"},
};

TEST(vURLAlgebra, ResolvesTheStandardsExamples) {
    static_assert(sizeof kExamples / sizeof kExamples[0] == 42, "all 42 examples");
    for (const auto& e : kExamples)
        EXPECT_EQ(Resolve(kBase, e[0]), e[1]) << '"' << e[0] << '"';
    // The output may be one of the inputs.
    vString text(kBase);
    ASSERT_TRUE(vcResolveURL(text, "../g", text));
    EXPECT_EQ(str(text), "http://a/b/g");
    // A base without a path, and one without an authority.
    EXPECT_EQ(Resolve("http://a", "g"), "http://a/g");
    EXPECT_EQ(Resolve("http://a?q", "?"), "http://a?");
    EXPECT_EQ(Resolve("mailto:x@y", "#top"), "mailto:x@y#top");
    EXPECT_EQ(Resolve("urn:a:b", "c"), "urn:c");
    // Removing dot segments can leave a path that begins with "//" and no authority; it is
    // written so that it reads back as a path.
    EXPECT_EQ(Resolve("s:/a", "/.//x"), "s:/.//x");
    EXPECT_EQ(Resolve("s:/.//x", "y"), "s:/.//y");
}

TEST(vURLAlgebra, RelativeReferencesAreShortestAndLeadBack) {
    // Each example's target, reached from the base again.
    for (const auto& e : kExamples) {
        std::string rel = Relative(kBase, e[1]);
        EXPECT_EQ(Resolve(kBase, rel.c_str()), e[1]) << e[1] << " by " << rel;
    }
    const char* const rows[][2] = {
        {"http://a/b/c/g", "g"},
        {"http://a/b/c/d;p?q", ""},
        {"http://a/b/c/d;p?y", "?y"},
        {"http://a/b/c/d;p?q#s", "#s"},
        {"http://a/b/c/", "./"},
        {"http://a/b/", "../"},
        {"http://a/b/g", "../g"},
        {"http://a/g", "/g"},                    // shorter than ../../g
        {"http://g/x", "//g/x"},                 // another host
        {"https://a/b/c/g", "https://a/b/c/g"},  // another scheme: the URL itself
        {"http://a/b/c/g:h", "./g:h"},           // a colon that would read as a scheme
        {"http://a/b/c//x", ".//x"},             // an empty first segment
        {"http://a/b/c/d;p", "d;p"},             // the base's query must go
        {"http://a/b/c/./e/../g", "g"},          // dot segments of the target go
    };
    for (const auto& r : rows)
        EXPECT_EQ(Relative(kBase, r[0]), r[1]) << r[0];
    EXPECT_EQ(Relative("http://a", "http://a/x"), "x");  // an empty base path merges as "/"
    EXPECT_EQ(Relative("http://a/x/", "http://a"), "//a");
}

TEST(vURLAlgebra, Normalises) {
    EXPECT_EQ(Normal("HTTP://User@Example.COM:80/a/./b/../c/%7euser/%2f?Q=%2a%41#F%3a"),
              "http://User@example.com/a/c/~user/%2F?Q=%2AA#F%3A");
    EXPECT_EQ(Normal("https://h:443"), "https://h/");
    EXPECT_EQ(Normal("http://h:/x"), "http://h/x");
    EXPECT_EQ(Normal("http://h:8080/"), "http://h:8080/");
    EXPECT_EQ(Normal("ftp://h:80/"), "ftp://h:80/");
    EXPECT_EQ(Normal("http://[2001:DB8::7]:80/"), "http://[2001:db8::7]/");
    EXPECT_EQ(Normal("Mailto:Joe@Example.COM"), "mailto:Joe@Example.COM");
    EXPECT_EQ(Normal("http://h/%zz%4"), "http://h/%zz%4");          // broken escapes stay
    EXPECT_EQ(Normal("http://h/%a%61%%41"), "http://h/%a%61%%41");  // and make no new ones
    // A normal form is its own normal form.
    EXPECT_EQ(Normal(Normal("HTTP://A/%7e/../b/./c").c_str()), "http://a/b/c");
}

TEST(vURLAlgebra, RefusesWhatIsNoURL) {
    vString out("kept");
    EXPECT_FALSE(vcResolveURL("a/b", "c", out));  // a base needs a scheme
    EXPECT_FALSE(vcResolveURL("1http://a/", "c", out));
    EXPECT_FALSE(vcResolveURL("http://a/", "c\nd", out));  // control characters
    EXPECT_FALSE(vcNormalizeURL("//a/b", out));
    EXPECT_FALSE(vcNormalizeURL("http://a/\x7f", out));
    EXPECT_FALSE(vcMakeRelativeURL("http://a/", "b/c", out));
    EXPECT_FALSE(vcMakeRelativeURL("", "http://a/", out));
    EXPECT_EQ(str(out), "kept");
    // Not a scheme: the text is a path.
    EXPECT_EQ(Resolve("http://a/b/", "1x:y"), "http://a/b/1x:y");
}

// Every URL of the sample files, from every other one: the relative reference leads back.
TEST(vURLAlgebra, RoundTripsOverTheSampleURLs) {
    std::vector<std::string> urls;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(VFC_SAMPLES_DIR)) {
        if (!entry.is_regular_file()) continue;
        std::ifstream in(entry.path(), std::ios::binary);
        std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
        // A URL: a scheme and ":", up to white space, a quote or an angle bracket.
        for (size_t colon = text.find(':'); colon != std::string::npos;
             colon = text.find(':', colon + 1)) {
            size_t start = colon;
            while (start > 0 && (std::isalnum(static_cast<unsigned char>(text[start - 1])) ||
                                 text[start - 1] == '+' || text[start - 1] == '-'))
                --start;
            if (start == colon || !std::isalpha(static_cast<unsigned char>(text[start]))) continue;
            if (start > 0 && (text[start - 1] == ':' || text[start - 1] == '.')) continue;
            size_t end = text.find_first_of(" \t\r\n\"'<>", colon);
            std::string url = text.substr(start, end - start);
            vString normal;
            if (url.size() > colon - start + 1 && vcNormalizeURL(url.c_str(), normal))
                urls.push_back(url);
        }
    }
    ASSERT_GE(urls.size(), 20u);
    for (const std::string& from : urls) {
        for (const std::string& to : urls) {
            std::string rel = Relative(from, to);
            ASSERT_NE(rel, "(failed)") << from << " -> " << to;
            EXPECT_EQ(Resolve(from.c_str(), rel.c_str()), Resolve(to.c_str(), to.c_str()))
                << from << " -> " << to << " by " << rel;
            EXPECT_LE(rel.size(), to.size()) << from << " -> " << to;
        }
    }
}

}  // namespace
