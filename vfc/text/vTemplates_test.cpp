#include "vfc/text/vTemplates.h"

#include <gtest/gtest.h>

#include <string>

#include "vfc/core/vString.h"

namespace {

struct Case {
    const char* name;
    const vRegExp& (*pattern)();
    std::string text;
    size_t pos;  // RW_NPOS: no match
    size_t len;
};

constexpr size_t kNo = RW_NPOS;

TEST(vTemplates, EachFixedPatternMatchesWhatItIsFor) {
    const std::string ndt = "<?xml version=\"1.0\"?>\n<NDT>";
    const Case cases[] = {
        {"dos dir", aDOSDirectoryTemplate, "My_Dir~1", 0, 8},
        {"dos dir punct", aDOSDirectoryTemplate, "a-{b}@`'()!#%&$^", 0, 16},
        {"dos dir dot", aDOSDirectoryTemplate, "a.b", kNo, 0},
        {"dos drive", aDOSDriveTemplate, "c:\\x", 0, 2},
        {"dos drive digit", aDOSDriveTemplate, "1:", kNo, 0},
        {"dos entry", aDOSEntryTemplate, "dir/file", 0, 3},
        {"dos ext", aDOSExtensionTemplate, "file.TXT", 5, 3},
        {"dos file", aDOSFileTemplate, "README.txt", 0, 10},
        {"dos file upper ext", aDOSFileTemplate, "README.TXT", kNo, 0},
        {"dos server", aDOSServerNameTemplate, "server\\share", 0, 6},
        {"dos server slash", aDOSServerNameTemplate, "srv/x", 0, 3},
        {"extension", aExtensionTemplate, "a.b.tar", 4, 3},
        {"mif entry", aMIFEntryTemplate, "abc<d", 0, 3},
        {"mif esc", aMIFEscCharTemplate, "a\\>b", 1, 2},
        {"mif escaped entry", aMIFEscapedEntryTemplate, "<x", kNo, 0},
        {"mif escaped esc", aMIFEscapedEscCharTemplate, "x\\\\\\>", 1, 4},
        {"mif hex", aMIFEscapedHexCodeTemplate, "a\\xe9 b", 1, 5},
        {"mif hex no blank", aMIFEscapedHexCodeTemplate, "a\\xe9b", kNo, 0},
        {"mif to escape", aMIFToEscapeTemplate, "a>b", 1, 1},
        {"mif to escape bs", aMIFToEscapeTemplate, "a\\b", 1, 1},
        {"mac base", aMacBasenameTemplate, "HD:Folder:File", 10, 4},
        {"mac entry", aMacEntryTemplate, "HD:Folder", 0, 2},
        {"mac illegal", aMacIllegalTemplate, "a:b", 1, 1},
        {"file info", aVorlandixFileInfoTemplate, ":263\\[16\"vorlandix-ndt-80\"\\]", 0, 28},
        {"file info no digits", aVorlandixFileInfoTemplate, ":263\\[\"x\"\\]", kNo, 0},
        {"unix base", aUNIXBasenameTemplate, "/usr/bin/ls", 9, 2},
        {"unix entry", aUNIXEntryTemplate, "usr/bin", 0, 3},
        {"unix entry rooted", aUNIXEntryTemplate, "/usr", kNo, 0},
        {"cgi", aURLCGIParametersTemplate, "a?b?c", 3, 2},
        {"port", aURLColonPortTemplate, "host:8080", 4, 5},
        {"port junk", aURLColonPortTemplate, "host:80x", kNo, 0},
        {"url entry", aURLEntryTemplate, "ab/c", 0, 2},
        {"url entry empty", aURLEntryTemplate, "/x", 0, 0},
        {"fragment", aURLNumberNameTemplate, "page.html#top", 9, 4},
        {"problem blank", aURLProblemTemplate, "a b", 1, 1},
        {"problem bar", aURLProblemTemplate, "a|b", 1, 1},
        {"problem backslash", aURLProblemTemplate, "a\\b", 1, 1},
        {"problem caret", aURLProblemTemplate, "x^", 1, 1},
        {"problem bracket", aURLProblemTemplate, "x]", 1, 1},
        {"problem none", aURLProblemTemplate, "ab-c.d:e", kNo, 0},
        {"type2", aURLType2Template, "file:/x", 0, 6},
        {"type3", aURLType3Template, "mailto:x", 0, 7},
        {"type", aURLTypeTemplate, "http://host", 0, 7},
        {"type one slash", aURLTypeTemplate, "file:/x", kNo, 0},
        {"unc", aURLTypeUNCTemplate, "file://srv/x", 0, 8},
        {"unc empty host", aURLTypeUNCTemplate, "file:///x", kNo, 0},
        {"ndt", aNDTAsXMLFileTemplate, ndt, 0, ndt.size() - 1},
        {"ndt without", aNDTAsXMLFileTemplate, "<?xml version=\"1.0\"?>\n<doc>", kNo, 0},
        {"xml", aXMLFileTemplate, "<?xml version", 0, 6},
        {"dos env percent", vDOSEnvVarTemplate, "%HOME%/x", 0, 6},
        {"dos env dollar", vDOSEnvVarTemplate, "$HOME/x", 0, 5},
        {"dos env stop", vDOSEnvVarTemplate, "a$b:c", 1, 2},
        {"lead ws", vLeadOrTrailWSTemplate, " \tx y\r\n", 0, 2},
        {"trail ws", vLeadOrTrailWSTemplate, "x y\r\n", 3, 2},
        {"inner ws", vLeadOrTrailWSTemplate, "x y", kNo, 0},
        {"mac env", vMacEnvVarTemplate, "$VAR:x", 0, 4},
        {"unix env", vUNIXEnvVarTemplate, "a/$VAR/x", 2, 4},
        {"not colon", vNotColonTemplate, "ab:cd", 0, 2},
        {"not eol", vNotEolTemplate, "\r\nab\r", 2, 2},
        {"not semicolon", vNotSemicolonTemplate, ";a;b", 1, 1},
        {"not tab", vNotTabTemplate, "\tab\tc", 1, 2},
        {"not ws", vNotWSTemplate, " ab c", 1, 2},
        {"single ws", vSingleWSTemplate, "a\tb", 1, 1},
        {"ws", vWSTemplate, "a \t\n b", 1, 4},
        {"alnum", vcAlphaNumericTemplate, "--ab12-", 2, 4},
        {"dot ext", vcDotAndExtensionTemplate, "dir.d/file.txt", 10, 4},
        {"dot ext none", vcDotAndExtensionTemplate, "dir.d/file", kNo, 0},
        {"cr", vcFileRegExps__fCarriageReturnRegExp, "a\rb", 1, 1},
        {"leading lf", vcFileRegExps__fLeadingNewLinesRegExp, "\n\nx", 0, 2},
        {"leading lf none", vcFileRegExps__fLeadingNewLinesRegExp, "x\n", kNo, 0},
        {"lf", vcFileRegExps__fNewLineRegExp, "a\nb", 1, 1},
        {"decimal", vcIsDecimalTemplate, "-12.5", 0, 5},
        {"decimal bare", vcIsDecimalTemplate, ".5", 0, 2},
        {"decimal trailing dot", vcIsDecimalTemplate, "12.", kNo, 0},
        {"decimal two dots", vcIsDecimalTemplate, "1.2.3", kNo, 0},
        {"int", vcIsIntTemplate, "+42", 0, 3},
        {"int dot", vcIsIntTemplate, "4.2", kNo, 0},
    };
    for (const Case& c : cases) {
        size_t len = 0;
        size_t pos = c.pattern().index(vString(c.text.data(), c.text.size()), &len, 0);
        EXPECT_EQ(pos, c.pos) << c.name;
        if (c.pos != kNo) {
            EXPECT_EQ(len, c.len) << c.name;
        }
    }
}

TEST(vTemplates, EachAccessorBuildsItsPatternOnce) {
#define VFC_SAME_OBJECT(name, pattern) EXPECT_EQ(&name(), &name()) << #name;
    VFC_FIXED_PATTERN_TABLE(VFC_SAME_OBJECT)
#undef VFC_SAME_OBJECT
}

}  // namespace
