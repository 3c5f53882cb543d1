// The path parser and generator. The cutting rules are those of the fixed patterns of the path
// model (aDOSDriveTemplate, aDOSServerNameTemplate, aDOSEntryTemplate, aMacEntryTemplate,
// aUNIXEntryTemplate, aMIFEntryTemplate, aURLTypeTemplate, aURLTypeUNCTemplate,
// aURLType2Template, aURLType3Template, aURLEntryTemplate, aURLColonPortTemplate); each is a
// leading run of characters up to one or two stop characters, or a short fixed prefix, so they
// are matched here by direct scans, with the same results and without a search per entry.
#include "vfc/files/vPathModel.h"

#include <cctype>
#include <string_view>

#include "vfc/collections/vTypedFamily.h"
#include "vfc/files/internal/vpNotation.h"

using vfc::path::Family;
using vfc::path::Member;
using vfc::path::Notation;

namespace {

using Kind = vComponentType::TypeEnum;
using std::string_view;

bool equalsNoCase(string_view a, string_view b) {
    if (a.size() != b.size()) return false;
    for (size_t i = 0; i < a.size(); ++i)
        if (std::tolower(static_cast<unsigned char>(a[i])) !=
            std::tolower(static_cast<unsigned char>(b[i])))
            return false;
    return true;
}

bool isLetter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

// aDOSDriveTemplate: a letter and a colon at the start.
bool startsWithDrive(string_view s) {
    return s.size() >= 2 && isLetter(s[0]) && s[1] == ':';
}

// "news" and "mailto" are written with ":" alone and take the rest as one name.
bool isOpaqueScheme(string_view scheme) {
    return equalsNoCase(scheme, "news") || equalsNoCase(scheme, "mailto");
}

bool isDefaultPort(string_view scheme, string_view port) {
    struct Entry {
        const char* scheme;
        const char* port;
    };
    static const Entry kPorts[] = {{"http", "80"},   {"https", "443"}, {"ftp", "21"},
                                   {"telnet", "23"}, {"gopher", "70"}, {"smtp", "25"},
                                   {"mailto", "25"}, {"nntp", "119"},  {"news", "119"}};
    for (const Entry& e : kPorts)
        if (port == e.port && equalsNoCase(scheme, e.scheme)) return true;
    return false;
}

// Fills a list with components, in the notation as given (flagged or not), so that the
// component undoes the notation's escapes. The list's own components are reused first, so that
// listing path after path into one list does not allocate once the list has grown.
class Builder {
  public:
    Builder(vPathType::TypeEnum notation, vPathComponentList& out)
        : aNotation(notation), aOut(out), aReuse(out) {
        aOut.fSetTrailingSeparator(false);
    }
    Builder(const Builder&) = delete;
    Builder& operator=(const Builder&) = delete;
    // Drops the components that were not reused.
    ~Builder() { aOut.fDestroyFrom(aUsed); }

    void add(Kind kind, string_view text = {}) {
        ++aUsed;
        if (aReusing && (aReusing = aReuse.fAdvance())) {
            aReuse.aKey().fSet(aNotation, kind, text.data(), text.size());
            return;
        }
        auto* c = new vPathComponent;
        c->fSet(aNotation, kind, text.data(), text.size());
        aOut.fInsertReference(c);
    }

    // Entries separated by sep; empty ones are dropped, "." and ".." are the current directory
    // and up when dots is set. The first entry takes firstKind when it is a name. Returns
    // whether rest ends with a separator.
    bool entries(string_view rest, char sep, bool dots, Kind firstKind = vComponentType::eName) {
        bool first = true;
        size_t pos = 0;
        while (pos < rest.size()) {
            size_t end = rest.find(sep, pos);
            if (end == string_view::npos) end = rest.size();
            string_view entry = rest.substr(pos, end - pos);
            pos = end + 1;
            if (entry.empty()) continue;
            if (dots && entry == ".")
                add(vComponentType::eCurrent);
            else if (dots && entry == "..")
                add(vComponentType::eUp);
            else
                add(first ? firstKind : vComponentType::eName, entry);
            first = false;
        }
        return !rest.empty() && rest.back() == sep;
    }

    vPathComponentList& list() { return aOut; }

  private:
    vPathType::TypeEnum aNotation;
    vPathComponentList& aOut;
    vPathComponentListIter aReuse;
    bool aReusing = true;
    size_t aUsed = 0;
};

// A "/" that ends the path is the list's flag, except before a query or fragment: the flag is
// written after everything, so there the slash is kept as an empty last name.
void endWithSlash(Builder& b, bool slash, bool moreFollows) {
    if (!slash) return;
    if (moreFollows)
        b.add(vComponentType::eName);
    else
        b.list().fSetTrailingSeparator(true);
}

// ---- parsers ---------------------------------------------------------------------------------

void parseDOS(Builder& b, string_view s) {
    size_t pos = 0;
    Kind firstKind = vComponentType::eName;
    if (startsWithDrive(s)) {
        b.add(vComponentType::eDrive, s.substr(0, 2));
        pos = 2;
    } else if (s.size() > 2 && (s.substr(0, 2) == "\\\\" || s.substr(0, 2) == "//") &&
               s[2] != '/' && s[2] != '\\') {
        // aDOSServerNameTemplate: the server ends at "/" or a backslash.
        size_t end = s.find_first_of("/\\", 2);
        if (end == string_view::npos) end = s.size();
        b.add(vComponentType::eServer, s.substr(2, end - 2));
        pos = end < s.size() ? end + 1 : end;
        firstKind = vComponentType::eShare;
    } else if (!s.empty() && s[0] == '/') {
        b.add(vComponentType::eCurrentRoot);
        pos = 1;
    }
    if (b.entries(s.substr(pos), '/', true, firstKind)) b.list().fSetTrailingSeparator(true);
}

void parseMac(Builder& b, string_view s) {
    if (s.empty()) return;
    if (s == ":") {
        b.add(vComponentType::eCurrent);
        return;
    }
    size_t colon = s.find(':');
    if (colon == string_view::npos) {
        b.add(vComponentType::eName, s);
        return;
    }
    if (colon > 0) b.add(vComponentType::eDrive, s.substr(0, colon));
    string_view rest = s.substr(colon + 1);
    if (!rest.empty() && rest.back() == ':') {
        b.list().fSetTrailingSeparator(true);
        rest.remove_suffix(1);
    } else if (rest.empty()) {
        return;
    }
    // Every entry of rest is a name, every empty one an up.
    size_t pos = 0;
    for (;;) {
        size_t end = rest.find(':', pos);
        string_view entry = rest.substr(pos, end == string_view::npos ? end : end - pos);
        if (entry.empty())
            b.add(vComponentType::eUp);
        else
            b.add(vComponentType::eName, entry);
        if (end == string_view::npos) break;
        pos = end + 1;
    }
}

void parseUNIX(Builder& b, string_view s) {
    size_t pos = 0;
    if (!s.empty() && s[0] == '/') {
        b.add(vComponentType::eRoot);
        pos = 1;
    }
    if (b.entries(s.substr(pos), '/', true)) b.list().fSetTrailingSeparator(true);
}

void parseMIF(Builder& b, string_view s, bool escapedMarkers) {
    const size_t markerLength = escapedMarkers ? 4 : 3;
    size_t pos = 0;
    while (pos < s.size()) {
        Kind kind = vComponentType::eName;
        bool marker = false;
        if (s[pos] == '<' && pos + markerLength <= s.size() &&
            s.substr(pos + 2, markerLength - 2) == (escapedMarkers ? "\\>" : ">")) {
            marker = true;
            switch (s[pos + 1]) {
                case 'r':
                    kind = vComponentType::eRoot;
                    break;
                case 'v':
                    kind = vComponentType::eDrive;
                    break;
                case 'h':
                    kind = vComponentType::eServer;
                    break;
                case 'c':
                    kind = vComponentType::eName;
                    break;
                case 'u':
                    kind = vComponentType::eUp;
                    break;
                default:
                    marker = false;
                    break;
            }
        }
        if (marker && (kind == vComponentType::eRoot || kind == vComponentType::eUp)) {
            b.add(kind);
            pos += markerLength;
            continue;
        }
        // The text runs to the next "<"; text that no marker opens is a name, and a "<" that
        // opens no marker is part of it.
        size_t start = marker ? pos + markerLength : pos;
        size_t end = s.find('<', marker ? start : start + 1);
        if (end == string_view::npos) end = s.size();
        b.add(kind, s.substr(start, end - start));
        pos = end;
    }
}

// Splits "path?query#fragment": the fragment starts at the first "#", the query at the first
// "?" before it.
struct Tail {
    string_view path;
    string_view query;
    string_view fragment;
    bool hasQuery = false;
    bool hasFragment = false;
};

Tail splitTail(string_view s) {
    Tail t;
    size_t hash = s.find('#');
    if (hash != string_view::npos) {
        t.fragment = s.substr(hash + 1);
        t.hasFragment = true;
        s = s.substr(0, hash);
    }
    size_t question = s.find('?');
    if (question != string_view::npos) {
        t.query = s.substr(question + 1);
        t.hasQuery = true;
        s = s.substr(0, question);
    }
    t.path = s;
    return t;
}

void addTail(Builder& b, const Tail& t) {
    if (t.hasQuery) b.add(vComponentType::eQuery, t.query);
    if (t.hasFragment) b.add(vComponentType::eFragment, t.fragment);
}

// The path after an authority or without one. afterSeparator says that a "/" was taken just
// before p (the one after a host).
void parseURLPath(Builder& b, const Tail& t, string_view p, bool afterSeparator) {
    bool slash = b.entries(p, '/', true) || (p.empty() && afterSeparator);
    endWithSlash(b, slash, t.hasQuery || t.hasFragment);
}

// What follows "scheme://" (or "scheme:" when it is followed by "/").
void parseAfterAuthorityMark(Builder& b, string_view scheme, string_view rest) {
    Tail t = splitTail(rest);
    string_view p = t.path;
    if (p.size() > 3 && p.substr(0, 3) == "///" && p[3] != '/') {
        // "file://///server/share/...": a UNC server.
        size_t end = p.find('/', 3);
        if (end == string_view::npos) end = p.size();
        b.add(vComponentType::eServer, p.substr(3, end - 3));
        bool afterSeparator = end < p.size();
        p = afterSeparator ? p.substr(end + 1) : string_view();
        bool slash =
            b.entries(p, '/', true, vComponentType::eShare) || (p.empty() && afterSeparator);
        endWithSlash(b, slash, t.hasQuery || t.hasFragment);
    } else if (!p.empty() && p[0] == '/') {
        p.remove_prefix(1);
        if (equalsNoCase(scheme, "file") && startsWithDrive(p) && (p.size() == 2 || p[2] == '/')) {
            b.add(vComponentType::eDrive, p.substr(0, 2));
            p.remove_prefix(2);
        } else {
            b.add(vComponentType::eRoot);
        }
        parseURLPath(b, t, p, false);
    } else if (!p.empty()) {
        // A host, with a port when it ends in ":digits" (aURLColonPortTemplate).
        size_t end = p.find('/');
        string_view host = p.substr(0, end);
        size_t colon = host.rfind(':');
        string_view port;
        bool hasPort = false;
        if (colon != string_view::npos &&
            host.find_first_not_of("0123456789", colon + 1) == string_view::npos) {
            port = host.substr(colon + 1);
            host = host.substr(0, colon);
            hasPort = true;
        }
        b.add(vComponentType::eHost, host);
        if (hasPort) b.add(vComponentType::ePort, port);
        bool afterSeparator = end != string_view::npos;
        parseURLPath(b, t, afterSeparator ? p.substr(end + 1) : string_view(), afterSeparator);
    } else {
        endWithSlash(b, false, false);
    }
    addTail(b, t);
}

// A leading drive ("C:" alone or followed by "/"), for paths that may start with one.
string_view takeDrive(Builder& b, string_view p) {
    if (!startsWithDrive(p) || (p.size() > 2 && p[2] != '/')) return p;
    b.add(vComponentType::eDrive, p.substr(0, 2));
    return p.substr(2);
}

void parseURL(Builder& b, string_view s) {
    // aURLType3Template: a scheme ("^[^:/]+:"). A one-letter scheme is a drive instead: no
    // scheme has one letter, and DOS paths turn up where URLs are expected.
    // A scheme holds no "/", "?" or "#", so a colon in a query or fragment is not its end.
    size_t colon = s.find(':');
    bool schemed = colon != string_view::npos && colon > 0 && s.find_first_of("/?#") > colon &&
                   !(colon == 1 && isLetter(s[0]));
    if (!schemed) {
        Tail t = splitTail(s);
        string_view p = t.path;
        if (p.size() > 2 && p.substr(0, 2) == "//" && p[2] != '/') {
            // "//host/path": a host without a scheme.
            size_t end = p.find('/', 2);
            b.add(vComponentType::eHost, p.substr(2, end == string_view::npos ? end : end - 2));
            bool afterSeparator = end != string_view::npos;
            parseURLPath(b, t, afterSeparator ? p.substr(end + 1) : string_view(), afterSeparator);
        } else if (!p.empty() && p[0] == '/') {
            b.add(vComponentType::eCurrentRoot);
            parseURLPath(b, t, p.substr(1), false);
        } else {
            parseURLPath(b, t, takeDrive(b, p), false);
        }
        addTail(b, t);
        return;
    }
    string_view scheme = s.substr(0, colon);
    string_view rest = s.substr(colon + 1);
    b.add(vComponentType::eScheme, scheme);
    if (isOpaqueScheme(scheme)) {
        if (!rest.empty()) b.add(vComponentType::eName, rest);
        return;
    }
    if (rest.substr(0, 2) == "//") {
        // aURLTypeTemplate, and aURLTypeUNCTemplate when a host follows.
        parseAfterAuthorityMark(b, scheme, rest.substr(2));
    } else if (!rest.empty() && rest[0] == '/') {
        // aURLType2Template: "scheme:/path", read as "scheme:///path".
        parseAfterAuthorityMark(b, scheme, rest);
    } else {
        // "scheme:path": a relative path, with a drive for "file".
        Tail t = splitTail(rest);
        string_view p = equalsNoCase(scheme, "file") ? takeDrive(b, t.path) : t.path;
        parseURLPath(b, t, p, false);
        addTail(b, t);
    }
}

void parsePortable(Builder& b, string_view s) {
    Tail t = splitTail(s);
    string_view p = t.path;
    Kind firstKind = vComponentType::eName;
    bool afterServer = false;  // a "/" followed the server
    if (p.size() > 2 && p.substr(0, 2) == "//" && p[2] != '/') {
        size_t end = p.find('/', 2);
        if (end == string_view::npos) end = p.size();
        b.add(vComponentType::eServer, p.substr(2, end - 2));
        afterServer = end < p.size();
        p = afterServer ? p.substr(end + 1) : string_view();
        firstKind = vComponentType::eShare;
    } else if (!p.empty() && p[0] == '/') {
        b.add(vComponentType::eRoot);
        p.remove_prefix(1);
    } else {
        p = takeDrive(b, p);
    }
    bool slash = b.entries(p, '/', true, firstKind) || (p.empty() && afterServer);
    endWithSlash(b, slash, t.hasQuery || t.hasFragment);
    addTail(b, t);
}

void parse(vPathType::TypeEnum notation, string_view s, vPathComponentList& out) {
    Builder b(notation, out);
    Notation n = vfc::path::classify(notation);
    switch (n.family) {
        case Family::kFileSystem:
            if (n.member == Member::kDOS)
                parseDOS(b, s);
            else if (n.member == Member::kMac)
                parseMac(b, s);
            else
                parseUNIX(b, s);
            break;
        case Family::kMIF:
            parseMIF(b, s, false);
            break;
        case Family::kMIFEscaped:
            parseMIF(b, s, true);
            break;
        case Family::kURL:
            parseURL(b, s);
            break;
        case Family::kPortable:
            parsePortable(b, s);
            break;
        case Family::kUnknown:
            parseUNIX(b, s);
            break;
    }
}

// ---- generators ------------------------------------------------------------------------------

// Walks a list for a generator: the kind of each component and its text as the target notation
// writes it.
template <class Visit>
void walk(vPathType::TypeEnum notation, const vPathComponentList& in, Visit visit) {
    const bool flagged = vfc::path::classify(notation).flagged;
    vPathComponentListIter it(in);
    vString escaped;
    while (it.fAdvance()) {
        const vPathComponent& c = it.aKey();
        const vString& text = flagged ? c.fComponent(notation, escaped) : c.aText();
        visit(c.fComponentType(), text);
    }
}

// Room for the texts and a few separator bytes per component, so that writing a path does not
// grow the output string step by step.
size_t roughLength(const vPathComponentList& in) {
    size_t length = 0;
    vPathComponentListIter it(in);
    while (it.fAdvance())
        length += it.aKey().aText().length() + 4;
    return length + 8;
}

// The entries of a path written with "/" between them: names, shares, ".." and ".".
struct SlashEntries {
    vString& out;
    bool needSep = false;  // the next entry needs a "/" in front

    void add(const char* s, size_t n) {
        if (needSep) out.append('/');
        out.append(s, n);
        needSep = true;
    }
    // Writes the component when it is an entry; false for every other kind.
    bool write(Kind kind, const vString& text) {
        switch (kind) {
            case vComponentType::eName:
            case vComponentType::eShare:
                add(text.data(), text.length());
                return true;
            case vComponentType::eUp:
                add("..", 2);
                return true;
            case vComponentType::eCurrent:
                add(".", 1);
                return true;
            default:
                return false;
        }
    }
};

// DOS, UNIX and the portable notation: entries joined with "/".
void generateSlashed(vPathType::TypeEnum notation, Member member, bool portable,
                     const vPathComponentList& in, vString& out) {
    SlashEntries entries{out};
    walk(notation, in, [&](Kind kind, const vString& text) {
        if (entries.write(kind, text)) return;
        switch (kind) {
            case vComponentType::eRoot:
            case vComponentType::eCurrentRoot:
                if (!out.fLastCharIsEqual('/') || out.isNull()) out.append('/');
                entries.needSep = false;
                break;
            case vComponentType::eDrive:
                if (member == Member::kUNIX && !portable) out.append('/');
                out.append(text);
                entries.needSep = true;
                break;
            case vComponentType::eServer:
            case vComponentType::eHost:
                out.append(member == Member::kDOS && !portable ? "\\\\" : "//");
                out.append(text);
                entries.needSep = true;
                break;
            case vComponentType::eQuery:
                if (portable) {
                    out.append('?');
                    out.append(text);
                }
                break;
            case vComponentType::eFragment:
                if (portable) {
                    out.append('#');
                    out.append(text);
                }
                break;
            case vComponentType::eScheme:
            case vComponentType::ePort:
            default:  // the entries are written above
                break;
        }
    });
}

void generateMac(vPathType::TypeEnum notation, const vPathComponentList& in, vString& out) {
    bool anchored = false;     // a volume or a root has been seen
    bool rootPending = false;  // a root was seen: the next name stands for the volume
    bool lastIsVolume = false;
    Kind lastKind = vComponentType::eName;
    size_t written = 0;  // components that put something into the path
    walk(notation, in, [&](Kind kind, const vString& text) {
        switch (kind) {
            case vComponentType::eDrive:
            case vComponentType::eServer:
            case vComponentType::eHost:
                if (!out.isNull()) out.append(':');
                out.append(text);
                anchored = true;
                lastIsVolume = true;
                break;
            case vComponentType::eRoot:
                rootPending = !anchored;
                anchored = true;
                break;
            case vComponentType::eName:
            case vComponentType::eShare:
                if (rootPending && out.isNull()) {
                    out.append(text);
                    lastIsVolume = true;
                } else {
                    out.append(':');
                    out.append(text);
                    lastIsVolume = false;
                }
                rootPending = false;
                break;
            case vComponentType::eUp:
                out.append(':');
                lastIsVolume = false;
                break;
            default:
                return;
        }
        lastKind = kind;
        ++written;
    });
    if (!anchored && written == 1 && lastKind == vComponentType::eName) {
        out.remove(0, 1);  // a lone relative name stands without a colon
        return;
    }
    if (lastIsVolume || lastKind == vComponentType::eUp || (written == 0 && in.fEntries() > 0))
        out.append(':');
}

void generateMIF(vPathType::TypeEnum notation, bool escapedMarkers, const vPathComponentList& in,
                 vString& out) {
    const char* close = escapedMarkers ? "\\>" : ">";
    auto marker = [&](char m) {
        out.append('<');
        out.append(m);
        out.append(close);
    };
    // A scheme is written only when no host or server follows it, which then names the machine.
    vPathComponentListIter ahead(in);
    ahead.fAdvance();
    walk(notation, in, [&](Kind kind, const vString& text) {
        bool hostFollows = false;
        if (ahead.fAdvance()) {
            Kind next = ahead.aKey().fComponentType();
            hostFollows = next == vComponentType::eHost || next == vComponentType::eServer;
        }
        switch (kind) {
            case vComponentType::eScheme:
                if (hostFollows) break;
                [[fallthrough]];
            case vComponentType::eHost:
            case vComponentType::eServer:
                marker('h');
                out.append(text);
                break;
            case vComponentType::eRoot:
            case vComponentType::eCurrentRoot:
                marker('r');
                break;
            case vComponentType::eDrive:
                marker('v');
                out.append(text);
                break;
            case vComponentType::eName:
            case vComponentType::eShare:
                marker('c');
                out.append(text);
                break;
            case vComponentType::eUp:
                marker('u');
                break;
            default:
                break;
        }
    });
}

void generateURL(vPathType::TypeEnum notation, const vPathComponentList& in, vString& out) {
    SlashEntries entries{out};
    bool schemeWritten = false;
    bool schemePending = false;  // its "://" or ":" waits for the next component
    vString scheme;
    auto fileScheme = [&] {
        if (schemeWritten) return;
        out.append("file://");
        scheme = "file";
        schemeWritten = true;
    };
    // "scheme://" before a host or an absolute path and at the end, "scheme:" before a relative
    // path (and always for news and mailto).
    auto endScheme = [&](Kind next, bool atEnd) {
        if (!schemePending) return;
        schemePending = false;
        bool authority = atEnd || next == vComponentType::eHost || next == vComponentType::eRoot ||
                         next == vComponentType::eDrive || next == vComponentType::eServer ||
                         next == vComponentType::ePort || next == vComponentType::eScheme ||
                         next == vComponentType::eCurrentRoot;
        out.append(authority && !isOpaqueScheme(scheme.view()) ? "://" : ":");
    };
    walk(notation, in, [&](Kind kind, const vString& text) {
        endScheme(kind, false);
        if (entries.write(kind, text)) return;
        switch (kind) {
            case vComponentType::eScheme:
                out.append(text);
                scheme = text;
                schemeWritten = true;
                schemePending = true;
                entries.needSep = false;
                break;
            case vComponentType::eHost:
                if (!schemeWritten) out.append("//");
                out.append(text);
                entries.needSep = true;
                break;
            case vComponentType::ePort:
                if (!isDefaultPort(scheme.view(), text.view())) {
                    out.append(':');
                    out.append(text);
                }
                entries.needSep = true;
                break;
            case vComponentType::eRoot:
                out.append('/');
                entries.needSep = false;
                break;
            case vComponentType::eCurrentRoot:
                // After a host the next entry brings its own "/".
                if (out.isNull()) {
                    out.append('/');
                    entries.needSep = false;
                }
                break;
            case vComponentType::eDrive:
                fileScheme();
                out.append('/');
                out.append(text);
                entries.needSep = true;
                break;
            case vComponentType::eServer:
                fileScheme();
                out.append("///");
                out.append(text);
                entries.needSep = true;
                break;
            case vComponentType::eQuery:
                out.append('?');
                out.append(text);
                break;
            case vComponentType::eFragment:
                out.append('#');
                out.append(text);
                break;
            default:  // the entries are written above
                break;
        }
    });
    endScheme(vComponentType::eName, true);
}

vHashvStringvPathComponentList& listCache() {
    static auto* cache = new vHashvStringvPathComponentList;  // never freed
    return *cache;
}

constexpr size_t kCacheLimit = 1024;

}  // namespace

void vcListComponents(vPathType::TypeEnum notation, const vString& path, vPathComponentList& out,
                      bool isDirectory) {
    vHashvStringvPathComponentList& cache = listCache();
    if (cache.fEntries() > kCacheLimit) cache.fClearAndDestroy();
    if (notation == vPathType::eHost && cache.fLookup(path)) {
        out = cache.aValue();
    } else {
        parse(notation, path.view(), out);
        if (notation == vPathType::eHost && out.fEntries() > 1) cache.fInsert(path, out);
    }
    if (isDirectory) out.fSetTrailingSeparator(true);
}

vString& vcGeneratePath(vPathType::TypeEnum notation, const vPathComponentList& in, vString& out) {
    out.remove(0);
    out.reserve(roughLength(in));
    Notation n = vfc::path::classify(notation);
    switch (n.family) {
        case Family::kFileSystem:
            if (n.member == Member::kMac)
                generateMac(notation, in, out);
            else
                generateSlashed(notation, n.member, false, in, out);
            break;
        case Family::kMIF:
            generateMIF(notation, false, in, out);
            break;
        case Family::kMIFEscaped:
            generateMIF(notation, true, in, out);
            break;
        case Family::kURL:
            generateURL(notation, in, out);
            break;
        case Family::kPortable:
            generateSlashed(notation, n.member, true, in, out);
            break;
        case Family::kUnknown:
            generateSlashed(notation, Member::kUNIX, false, in, out);
            break;
    }
    // The URL-like notations write a directory's trailing "/".
    bool urlLike = n.family == Family::kURL || n.family == Family::kPortable;
    if (urlLike && in.fTrailingSeparator() && !out.isNull() && !out.fLastCharIsEqual('/'))
        out.append('/');
    return out;
}

vString& vcPathTrans(vPathType::TypeEnum from, const vString& path, vPathType::TypeEnum to,
                     vString& out, bool isDirectory) {
    vPathComponentList list;
    vcListComponents(from, path, list, isDirectory);
    return vcGeneratePath(to, list, out);
}

bool vcIsRelative(const vPathComponentList& list) {
    vPathComponentListIter it(list);
    if (!it.fAdvance()) return true;
    switch (it.aKey().fComponentType()) {
        case vComponentType::eScheme:
        case vComponentType::eHost:
        case vComponentType::eRoot:
        case vComponentType::eDrive:
        case vComponentType::eServer:
            return false;
        default:
            return true;
    }
}
