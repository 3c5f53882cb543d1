#include "vfc/files/internal/vpContentDetection.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "vfc/persist/vPostream.h"

namespace {

vFile::FileTypeEnum detect(const std::string& bytes, const char* extension) {
    return vpDetectContentType(bytes.data(), bytes.size(), vString(extension));
}

TEST(vpContentDetection, SignaturesExtensionsAndNulTestInOrder) {
    const std::string xmlDecl = "<?xml version=\"1.0\"?>";
    struct Row {
        const char* name;
        std::string bytes;
        const char* extension;
        vFile::FileTypeEnum type;
    } rows[] = {
        {"MIF after any first byte", "XMIFFile 9.00", "", vFile::eMIF},
        {"MIF at 0 is not MIF", "MIFFile 9.00", "", vFile::eText},
        {"MIF needs 8 bytes", "<MIFFil", "", vFile::eText},
        {"BookFile before Book", "<BookFile 6.0>", "", vFile::eMakerBook},
        {"Book", "<Book 6.0>", "", vFile::eMIFBook},
        {"Book needs 5 bytes", "<Boo", "", vFile::eText},
        {"BOOKFILE", "<BOOKFILE 1.0>", "", vFile::eMakerBook},
        {"MakerFile", "<MakerFile 6.0K>", "", vFile::eMaker},
        {"GIF of 3 bytes", "GIF", "", vFile::eGIF},
        {"GIF cut short", "GI", "", vFile::eText},
        {"PostScript", "%!PS-Adobe-3.0", "", vFile::ePostScript},
        {"html without case", "<HtMl><body>", "", vFile::eHTML},
        {"doctype with blank", "<!DOCTYPE html>", "", vFile::eHTML},
        {"doctype without blank", "<!DOCTYPEhtml>", "", vFile::eText},
        {"NDT as XML", xmlDecl + "\n<NDT a=\"1\">", "", vFile::eVorlandixNDTXML},
        {"plain XML", xmlDecl + "\n<doc>", "", vFile::eXML},
        {"NDT past 50 bytes", xmlDecl + std::string(40, ' ') + "\n<NDT>", "", vFile::eXML},
        {"XML needs the blank", "<?xml?>", "", vFile::eText},
        {"XML anywhere in 50", "  \n<?xml version", "", vFile::eXML},
        {"signature beats extension", "<MIFFile", "txt", vFile::eMIF},
        {"HTML extension lower-cased", "plain words", "HTML", vFile::eHTML},
        {"htm anywhere", "plain words", "shtml", vFile::eHTML},
        {"txt beats NUL", std::string("a\0b", 3), "TXT", vFile::eText},
        {"gif extension", "x", "gif", vFile::eGIF},
        {"png extension", "x", "Png", vFile::ePNG},
        {"jpe extension", "x", "jpe", vFile::eJPEG},
        {"jpeg extension", "x", "JPEG", vFile::eJPEG},
        {"xml extension", "x", "xml", vFile::eXML},
        {"unknown extension", "x", "mif", vFile::eText},
        {"NUL is binary", std::string("a\0b", 3), "", vFile::eBinary},
        {"Latin-1 is text", "caf\xe9 cr\xe8me \xff\xfe", "", vFile::eText},
        {"NUL past 50 bytes", std::string(50, 'a') + std::string(1, '\0'), "", vFile::eText},
        {"NUL at byte 49", std::string(49, 'a') + std::string(1, '\0'), "", vFile::eBinary},
        {"empty file", "", "", vFile::eText},
    };
    for (const Row& row : rows)
        EXPECT_EQ(detect(row.bytes, row.extension), row.type) << row.name;
}

TEST(vpContentDetection, FileInfoHeaderAsWrittenByThePersistentStream) {
    auto written = [](const char* name) {
        std::stringbuf buf;
        vPostream out(&buf);
        out << vString(name);
        return buf.str();
    };
    vString type("unchanged");
    std::string ndt = written("vorlandix-ndt-80") + "more data\n";
    EXPECT_TRUE(vpFindFileInfoHeader(ndt.data(), ndt.size(), type));
    EXPECT_EQ(type, "vorlandix-ndt-80");
    // A name of the suite that the type table does not know is still taken as written.
    std::string other = written("vorlandix-later-99");
    EXPECT_TRUE(vpFindFileInfoHeader(other.data(), other.size(), type));
    EXPECT_EQ(type, "vorlandix-later-99");

    // Other persistent files, broken headers and look-alikes fall back to the cascade.
    type = "unchanged";
    std::string plain = written("plain string");
    std::string cut = written("vorlandix-ndt-80").substr(0, 15);
    std::string notNumbered = ":263\\[x\"vorlandix\"\\]";
    std::string lateMark = "           :263\\[1\"vorlandix\"\\]";
    for (const std::string& bytes : {plain, cut, notNumbered, lateMark})
        EXPECT_FALSE(vpFindFileInfoHeader(bytes.data(), bytes.size(), type)) << bytes;
    EXPECT_EQ(type, "unchanged");
    // White space anywhere in the header is removed before it is matched.
    std::string spaced = " :\t263 \\[ 1 \"vorlandix\"\n\\]";
    EXPECT_TRUE(vpFindFileInfoHeader(spaced.data(), spaced.size(), type));
    EXPECT_EQ(type, "vorlandix");
}

TEST(vpContentDetection, LocateQuotesStopsAtTheSecond) {
    int first = 7;
    int second = 7;
    EXPECT_TRUE(vpLocateQuotes("a\"b\"c\"", 6, first, second));
    EXPECT_EQ(first, 1);
    EXPECT_EQ(second, 3);
    EXPECT_FALSE(vpLocateQuotes("a\"bc", 4, first, second));
    EXPECT_EQ(first, 1);
    EXPECT_EQ(second, -1);
    // The length bounds the scan.
    EXPECT_FALSE(vpLocateQuotes("\"\"", 1, first, second));
    EXPECT_EQ(first, 0);
    EXPECT_EQ(second, -1);
}

}  // namespace
