#include "vfc/files/vPathModel.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace {

using T = vPathType;

// Ordinary paths, written the way each notation writes them, from a seeded generator. Names
// are drawn from letters, digits and a few marks; in the flagged notations they also hold
// characters that the notation has to escape, written here with that escape.
class PathMaker {
  public:
    explicit PathMaker(unsigned seed) : aRandom(seed) {}

    int pick(int n) { return std::uniform_int_distribution<int>(0, n - 1)(aRandom); }

    std::string name(const std::string& extra) {
        static const std::string plain =
            "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-";
        std::string alphabet = plain + extra;
        std::string s;
        int n = 1 + pick(8);
        for (int i = 0; i < n; ++i)
            s += alphabet[pick(static_cast<int>(alphabet.size()))];
        if (pick(3) == 0) s += ".txt";
        return s;
    }

    // Names with their escapes applied by the caller's table.
    std::vector<std::string> entries(bool dots, bool allowEmpty) {
        std::vector<std::string> out;
        int n = (allowEmpty ? 0 : 1) + pick(5);
        for (int i = 0; i < n; ++i) {
            int k = pick(10);
            out.push_back(dots && k == 0 ? "." : dots && k == 1 ? ".." : "");
        }
        return out;
    }

  private:
    std::mt19937 aRandom;
};

std::string escapeEach(const std::string& raw, const std::string& special,
                       std::string (*escape)(char)) {
    std::string out;
    for (char c : raw)
        out += special.find(c) != std::string::npos ? escape(c) : std::string(1, c);
    return out;
}

std::string percent(char c) {
    static const char hex[] = "0123456789abcdef";
    unsigned char u = static_cast<unsigned char>(c);
    return std::string("%") + hex[u >> 4] + hex[u & 15];
}

struct Family {
    const char* what;
    std::string extra;            // characters a flagged name may hold
    std::string (*escape)(char);  // how the flagged notation writes them
};

// One name as written in the notation: plain names, or for a flagged notation names with
// characters that need escapes.
std::string writtenName(PathMaker& m, bool flagged, const Family& f) {
    if (!flagged || f.extra.empty()) return m.name("");
    return escapeEach(m.name(f.extra), f.extra, f.escape);
}

std::string join(const std::vector<std::string>& parts, const std::string& sep) {
    std::string out;
    for (size_t i = 0; i < parts.size(); ++i)
        out += (i ? sep : "") + parts[i];
    return out;
}

// The entries of a slash-separated path: names, "." and "..".
std::vector<std::string> slashEntries(PathMaker& m, bool flagged, const Family& f,
                                      bool allowEmpty) {
    std::vector<std::string> out = m.entries(true, allowEmpty);
    for (std::string& e : out)
        if (e.empty()) e = writtenName(m, flagged, f);
    return out;
}

std::string makeDOS(PathMaker& m, bool flagged, const Family& f) {
    switch (m.pick(5)) {
        case 0:
            return "C:";
        case 1:
            return "d:/" + join(slashEntries(m, flagged, f, false), "/");
        case 2:
            return "\\\\server" + std::to_string(m.pick(9)) + "/" +
                   join(slashEntries(m, flagged, f, false), "/");
        case 3:
            return "/" + join(slashEntries(m, flagged, f, true), "/");
        default:
            return join(slashEntries(m, flagged, f, false), "/");
    }
}

std::string makeUNIX(PathMaker& m, bool flagged, const Family& f) {
    std::string body = join(slashEntries(m, flagged, f, m.pick(2) == 0), "/");
    return m.pick(2) == 0 || body.empty() ? "/" + body : body;
}

std::string makeMac(PathMaker& m, bool flagged, const Family& f) {
    std::vector<std::string> items;  // names; an empty item is up one level
    int n = m.pick(5);
    for (int i = 0; i < n; ++i)
        items.push_back(m.pick(6) == 0 ? "" : writtenName(m, flagged, f));
    bool finalUp = !items.empty() && items.back().empty();
    std::string path;
    if (m.pick(2) == 0) {
        path = writtenName(m, flagged, f) + ":" + join(items, ":");
    } else if (items.empty() || (items.size() == 1 && !finalUp)) {
        return items.empty() ? writtenName(m, flagged, f) : items[0];  // a lone relative name
    } else {
        path = ":" + join(items, ":");
    }
    return finalUp ? path + ":" : path;
}

std::string makeMIF(PathMaker& m, bool flagged, const Family& f, const std::string& close) {
    std::string path;
    if (m.pick(3) == 0) path += "<v" + close + writtenName(m, flagged, f);
    if (m.pick(2) == 0) path += "<r" + close;
    int n = 1 + m.pick(5);
    for (int i = 0; i < n; ++i)
        path += m.pick(6) == 0 ? "<u" + close : "<c" + close + writtenName(m, flagged, f);
    return path;
}

std::string makeTail(PathMaker& m) {
    std::string tail;
    if (m.pick(4) == 0) tail += "?q=" + std::to_string(m.pick(99)) + "&r=s/t";
    if (m.pick(4) == 0) tail += "#sec" + std::to_string(m.pick(99));
    return tail;
}

std::string makeURL(PathMaker& m, bool flagged, const Family& f) {
    std::string body = join(slashEntries(m, flagged, f, true), "/");
    std::string slash = !body.empty() && m.pick(3) == 0 ? "/" : "";
    switch (m.pick(7)) {
        case 0:
            return "http://www.example.org" + std::string(body.empty() ? "" : "/") + body + slash +
                   makeTail(m);
        case 1:
            return "https://h" + std::to_string(m.pick(9)) + ":8443/" + body + makeTail(m);
        case 2:
            return "file:///C:/" + body;
        case 3:
            return "file://///server/share/" + body;
        case 4:
            return "mailto:someone" + std::to_string(m.pick(99)) + "@example.org";
        case 5:
            return "/" + body + slash + makeTail(m);
        default:
            return body.empty() ? "." : body + slash + makeTail(m);
    }
}

std::string makePortable(PathMaker& m, bool flagged, const Family& f) {
    std::string body = join(slashEntries(m, flagged, f, false), "/");
    std::string slash = m.pick(3) == 0 ? "/" : "";
    switch (m.pick(4)) {
        case 0:
            return "//server/share/" + body + slash;
        case 1:
            return "C:/" + body + makeTail(m);
        case 2:
            return "/" + body + slash + makeTail(m);
        default:
            return body + slash + makeTail(m);
    }
}

std::string mifEscape(char c) {
    return std::string("\\") + c;
}

std::string mifStringEscape(char c) {
    if (c == '\\') return "\\\\\\\\";
    if (c == '>') return "\\\\\\>";
    static const char hex[] = "0123456789abcdef";
    unsigned char u = static_cast<unsigned char>(c);
    return std::string("\\x") + hex[u >> 4] + hex[u & 15] + " ";
}

std::string macSwap(char c) {
    return c == '/' ? std::string(":") : std::string("/");
}

TEST(vPathModelTest, OrdinaryPathsComeBackInEveryNotation) {
    const Family dos{"DOS", "%*?\"<>|:", percent};
    const Family mac{"Mac", ":", macSwap};
    const Family unix{"UNIX", "", nullptr};
    const Family mif{"MIF", "\\>", mifEscape};
    const Family mifString{"MIF string", "\\>\xe9", mifStringEscape};
    const Family url{"URL", " %#?/<>\"", percent};
    PathMaker m(20261121);
    for (int notation = 0; notation < 40; ++notation) {
        bool flagged = notation >= 20;
        int member = notation % 4 == 0 ? T::kHostMember : notation % 4;
        int family = (notation % 20) / 4;
        for (int i = 0; i < 2000; ++i) {
            std::string path;
            switch (family) {
                case 0:
                    path = member == 1   ? makeDOS(m, flagged, dos)
                           : member == 2 ? makeMac(m, flagged, mac)
                                         : makeUNIX(m, flagged, unix);
                    break;
                case 1:
                    path = makeMIF(m, flagged, mif, ">");
                    break;
                case 2:
                    path = makeMIF(m, flagged, mifString, "\\>");
                    break;
                case 3:
                    path = makeURL(m, flagged, url);
                    break;
                default:
                    path = makePortable(m, flagged, url);
                    break;
            }
            vPathComponentList list;
            vcListComponents(static_cast<T::TypeEnum>(notation), path.c_str(), list);
            vString back;
            vcGeneratePath(static_cast<T::TypeEnum>(notation), list, back);
            ASSERT_EQ(std::string(back.data(), back.length()), path)
                << "notation " << notation << ", " << list.fEntries() << " components";
        }
    }
}

std::string kinds(T::TypeEnum notation, const char* path) {
    vPathComponentList list;
    vcListComponents(notation, path, list);
    std::string out;
    vPathComponentListIter it(list);
    while (it.fAdvance()) {
        out += std::to_string(it.aKey().fComponentType());
        if (!it.aKey().aText().isNull()) out += "=" + std::string(it.aKey().aText().data());
        out += " ";
    }
    return list.fTrailingSeparator() ? out + "/" : out;
}

TEST(vPathModelTest, ComponentsOfEachNotation) {
    EXPECT_EQ(kinds(T::eDOS, "C:/dir/f.txt"), "4=C: 5=dir 5=f.txt ");
    EXPECT_EQ(kinds(T::eDOS, "c:x/"), "4=c: 5=x /");
    EXPECT_EQ(kinds(T::eDOS, "\\\\srv\\x/share/a"), "8=srv 9=x 5=share 5=a ");
    EXPECT_EQ(kinds(T::eDOS, "/a/./../b/"), "3 5=a 7 6 5=b /");
    EXPECT_EQ(kinds(T::eUNIX, "//a///b"), "2 5=a 5=b ");
    EXPECT_EQ(kinds(T::eHost, "../x"), "6 5=x ");
    EXPECT_EQ(kinds(T::eMac, "HD:a::b:"), "4=HD 5=a 6 5=b /");
    EXPECT_EQ(kinds(T::eMIFUNIX, "<h>srv<v>vol<r><c>a<u>"), "8=srv 4=vol 2 5=a 6 ");
    EXPECT_EQ(kinds(T::eMIFEscapedDOS, "<r\\><c\\>a<c>b"), "2 5=a 5=<c>b ");
    EXPECT_EQ(kinds(T::eURLUNIX, "HTTP://Host:8080/a/b/?x=1#top"),
              "0=HTTP 1=Host 10=8080 5=a 5=b 5 12=x=1 11=top ");
    EXPECT_EQ(kinds(T::eURLUNIX, "news:comp.text/x?y"), "0=news 5=comp.text/x?y ");
    EXPECT_EQ(kinds(T::eURLUNIX, "file:C:/x"), "0=file 4=C: 5=x ");
    EXPECT_EQ(kinds(T::eURLUNIX, "c:/x"), "4=c: 5=x ");
    EXPECT_EQ(kinds(T::eURLUNIX, "/"), "3 ");
    EXPECT_EQ(kinds(T::ePortableUNIX, "C:/a#f"), "4=C: 5=a 11=f ");
    EXPECT_EQ(kinds(T::eURLUNIXFlagged, "a%20b/c%2Fd#x%23y?z%20"), "5=a b 5=c/d 11=x#y?z  ");
    EXPECT_EQ(kinds(T::eDOSFlagged, "a%3ab%00/c%2"), "5=a:b%00 5=c%2 ");
    // Bad input still gives a list.
    EXPECT_EQ(kinds(T::eURLUNIX, ":"), "5=: ");
    EXPECT_EQ(kinds(T::eMIFUNIX, "<"), "5=< ");
    EXPECT_EQ(kinds(static_cast<T::TypeEnum>(77), "/a"), "2 5=a ");
}

TEST(vPathModelTest, TranslationTable) {
    struct Row {
        T::TypeEnum from;
        const char* path;
        T::TypeEnum to;
        const char* expected;
    };
    const Row rows[] = {
        {T::eDOS, "C:/docs/a.txt", T::eURLDOS, "file:///C:/docs/a.txt"},
        {T::eURLDOS, "file:///C:/docs/a.txt", T::eDOS, "C:/docs/a.txt"},
        {T::eDOS, "\\\\srv/share/a", T::eURLDOS, "file://///srv/share/a"},
        {T::eURLDOS, "file://///srv/share/a", T::eDOS, "\\\\srv/share/a"},
        {T::eDOS, "C:/docs/a.txt", T::eMIFDOS, "<v>C:<c>docs<c>a.txt"},
        {T::eMIFDOS, "<v>C:<c>docs<c>a.txt", T::eDOS, "C:/docs/a.txt"},
        {T::eDOS, "../img/b.gif", T::eMIFEscapedDOS, "<u\\><c\\>img<c\\>b.gif"},
        {T::eUNIX, "/usr/doc/a", T::eMac, "usr:doc:a"},
        {T::eMac, "HD:doc:a", T::eUNIX, "/HD/doc/a"},
        {T::eMac, ":doc::a", T::eUNIX, "doc/../a"},
        {T::eUNIX, "../a/b", T::eMac, "::a:b"},
        {T::eUNIX, "/usr/doc/a", T::eMIFUNIX, "<r><c>usr<c>doc<c>a"},
        {T::eUNIX, "/usr/doc/a", T::eURLUNIX, "/usr/doc/a"},
        {T::eURLUNIX, "http://h:80/a/b?q#f", T::eUNIX, "//h/a/b"},
        {T::eURLUNIX, "http://h:80/a/b?q#f", T::ePortableUNIX, "//h/a/b?q#f"},
        {T::eURLUNIX, "http://h/x/", T::eMIFUNIX, "<h>h<c>x"},
        {T::eURLUNIXFlagged, "a%20b.html#s%201", T::eUNIX, "a b.html"},
        {T::eUNIX, "a b/c#d", T::eURLUNIXFlagged, "a%20b/c%23d"},
        {T::eUNIX, "a:b", T::eMacFlagged, "a/b"},
        {T::eUNIX, "a>b", T::eMIFUNIXFlagged, "<c>a\\>b"},
        {T::eUNIX, "a/b", T::eDOSFlagged, "a/b"},
        {T::eUNIX, "a*", T::eDOSFlagged, "a%2a"},
        // Written back as read: a colon after "#", a scheme before a relative path, a
        // directory on a UNC server, a colon in a flagged name.
        {T::eURLUNIX, "index.html#sec:intro", T::eUNIX, "index.html"},
        {T::eURLUNIX, "http:example.com:80/a", T::eURLUNIX, "http:example.com:80/a"},
        {T::eURLUNIX, "file://///server/", T::eURLUNIX, "file://///server/"},
        {T::ePortableUNIX, "//server/", T::ePortableUNIX, "//server/"},
        {T::eURLUNIXFlagged, "abc%3ad", T::eURLUNIXFlagged, "abc%3ad"},
    };
    for (const Row& r : rows) {
        vString out("stale");
        vcPathTrans(r.from, r.path, r.to, out);
        EXPECT_EQ(std::string(out.data()), r.expected) << r.path << " from " << r.from;
    }
    // A directory flag from the caller is written by the URL-like notations.
    vString dir;
    EXPECT_EQ(vcPathTrans(T::eUNIX, "/a/b", T::eURLUNIX, dir, true), "/a/b/");
}

TEST(vPathModelTest, RelativeAndHostListsRepeat) {
    vPathComponentList list;
    vcListComponents(T::eUNIX, "", list);
    EXPECT_TRUE(vcIsRelative(list));
    vcListComponents(T::eDOS, "C:x", list);
    EXPECT_FALSE(vcIsRelative(list));
    vcListComponents(T::eDOS, "/x", list);  // the root of the current drive anchors nothing
    EXPECT_TRUE(vcIsRelative(list));
    vcListComponents(T::eURLUNIX, "//h/x", list);
    EXPECT_FALSE(vcIsRelative(list));

    // Host-notation lists come from a cache once seen; the answers must not change when it
    // fills up and is emptied, nor leak a caller's directory flag into later calls.
    for (int round = 0; round < 2; ++round) {
        for (int i = 0; i < 1500; ++i) {
            std::string path = "/p" + std::to_string(i) + "/f";
            vcListComponents(T::eHost, path.c_str(), list, i % 3 == 0);
            vString back;
            ASSERT_EQ(vcGeneratePath(T::eUNIX, list, back), path.c_str());
            ASSERT_EQ(list.fTrailingSeparator(), i % 3 == 0);
            ASSERT_EQ(list.fEntries(), 3u);
        }
    }
}

}  // namespace
