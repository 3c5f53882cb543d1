#include "vfc/files/vURLAlgebra.h"

#include <cstring>
#include <string>
#include <vector>

namespace {

// A reference split into its five parts (appendix B of the standard); a part that is absent
// differs from one that is present and empty ("http://a" has no query, "http://a?" an empty
// one).
struct Reference {
    std::string scheme, authority, path, query, fragment;
    bool hasScheme = false, hasAuthority = false, hasQuery = false, hasFragment = false;
};

bool isAlpha(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isControl(char c) {
    unsigned char u = static_cast<unsigned char>(c);
    return u < 0x20 || u == 0x7f;
}

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool isScheme(const std::string& s, size_t end) {
    if (end == 0 || !isAlpha(s[0])) return false;
    for (size_t i = 1; i < end; ++i) {
        char c = s[i];
        if (!isAlpha(c) && !isDigit(c) && c != '+' && c != '-' && c != '.') return false;
    }
    return true;
}

// Splits text; false when it holds a control character. A colon that does not end a valid
// scheme leaves the text a path (the standard's grammar has no other reading for it).
bool split(const std::string& text, Reference& r) {
    for (char c : text)
        if (isControl(c)) return false;
    size_t i = 0;
    const size_t n = text.size();
    size_t colon = text.find_first_of(":/?#");
    if (colon != std::string::npos && text[colon] == ':' && isScheme(text, colon)) {
        r.hasScheme = true;
        r.scheme = text.substr(0, colon);
        i = colon + 1;
    }
    if (text.compare(i, 2, "//") == 0) {
        size_t end = text.find_first_of("/?#", i + 2);
        if (end == std::string::npos) end = n;
        r.hasAuthority = true;
        r.authority = text.substr(i + 2, end - i - 2);
        i = end;
    }
    size_t end = text.find_first_of("?#", i);
    if (end == std::string::npos) end = n;
    r.path = text.substr(i, end - i);
    i = end;
    if (i < n && text[i] == '?') {
        end = text.find('#', i);
        if (end == std::string::npos) end = n;
        r.hasQuery = true;
        r.query = text.substr(i + 1, end - i - 1);
        i = end;
    }
    if (i < n && text[i] == '#') {
        r.hasFragment = true;
        r.fragment = text.substr(i + 1);
    }
    return true;
}

// Recomposition, section 5.3. A path that begins with "//" without an authority (removing dot
// segments can make one: "s:/.//x") would read back as an authority: it is written with "/."
// in front, which reads back as the same path.
std::string join(const Reference& r) {
    std::string out;
    out.reserve(r.scheme.size() + r.authority.size() + r.path.size() + r.query.size() +
                r.fragment.size() + 8);
    if (r.hasScheme) out.append(r.scheme).append(1, ':');
    if (r.hasAuthority)
        out.append("//").append(r.authority);
    else if (r.path.compare(0, 2, "//") == 0)
        out.append("/.");
    out.append(r.path);
    if (r.hasQuery) out.append(1, '?').append(r.query);
    if (r.hasFragment) out.append(1, '#').append(r.fragment);
    return out;
}

// Drops the last segment of out and the "/" before it.
void dropLastSegment(std::string& out) {
    size_t slash = out.rfind('/');
    out.erase(slash == std::string::npos ? 0 : slash);
}

// remove_dot_segments of section 5.2.4, step by step on one pass over the input: each step
// takes a prefix of what is left, so the work is linear.
std::string removeDotSegments(std::string in) {
    std::string out;
    out.reserve(in.size());
    const size_t n = in.size();
    size_t i = 0;
    auto at = [&](const char* prefix) { return in.compare(i, std::strlen(prefix), prefix) == 0; };
    while (i < n) {
        if (at("../")) {
            i += 3;  // A
        } else if (at("./")) {
            i += 2;  // A
        } else if (at("/./")) {
            i += 2;  // B: "/./" becomes "/"
        } else if (i + 2 == n && at("/.")) {
            i += 1;  // B: a final "/." becomes "/"
            in[i] = '/';
        } else if (at("/../")) {
            i += 3;  // C
            dropLastSegment(out);
        } else if (i + 3 == n && at("/..")) {
            i += 2;  // C: a final "/.." becomes "/"
            in[i] = '/';
            dropLastSegment(out);
        } else if ((i + 1 == n && in[i] == '.') || (i + 2 == n && at(".."))) {
            i = n;  // D
        } else {
            size_t end = in.find('/', i + 1);  // E: one segment, with its leading "/"
            if (end == std::string::npos) end = n;
            out.append(in, i, end - i);
            i = end;
        }
    }
    return out;
}

// Merging a relative path with the base's, section 5.2.3.
std::string merge(const Reference& base, const std::string& path) {
    if (base.hasAuthority && base.path.empty()) return "/" + path;
    size_t slash = base.path.rfind('/');
    if (slash == std::string::npos) return path;
    return base.path.substr(0, slash + 1) + path;
}

// Transformation of references, section 5.2.2 (strict). base must have a scheme.
Reference resolve(const Reference& base, const Reference& ref) {
    Reference t;
    if (ref.hasScheme) {
        t = ref;
        t.path = removeDotSegments(ref.path);
        return t;
    }
    if (ref.hasAuthority) {
        t.hasAuthority = true;
        t.authority = ref.authority;
        t.path = removeDotSegments(ref.path);
        t.hasQuery = ref.hasQuery;
        t.query = ref.query;
    } else {
        if (ref.path.empty()) {
            t.path = base.path;
            t.hasQuery = ref.hasQuery || base.hasQuery;
            t.query = ref.hasQuery ? ref.query : base.query;
        } else {
            t.path = removeDotSegments(ref.path[0] == '/' ? ref.path : merge(base, ref.path));
            t.hasQuery = ref.hasQuery;
            t.query = ref.query;
        }
        t.hasAuthority = base.hasAuthority;
        t.authority = base.authority;
    }
    t.hasScheme = true;
    t.scheme = base.scheme;
    t.hasFragment = ref.hasFragment;
    t.fragment = ref.fragment;
    return t;
}

bool parseURL(const vString& text, Reference& r) {
    return split(std::string(text.data(), text.length()), r) && r.hasScheme;
}

vString toVString(const std::string& s) {
    return vString(s.data(), s.size());
}

int hexValue(char c) {
    if (isDigit(c)) return c - '0';
    c = lower(c);
    return c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1;
}

bool isUnreserved(char c) {
    return isAlpha(c) || isDigit(c) || c == '-' || c == '.' || c == '_' || c == '~';
}

// Percent-escapes with upper-case digits, those of unreserved characters decoded; with
// lowerCase, letters outside escapes in lower case too (for a host).
std::string normalizeEscapes(const std::string& s, bool lowerCase) {
    static const char kHex[] = "0123456789ABCDEF";
    std::string out;
    out.reserve(s.size());
    for (size_t i = 0; i < s.size(); ++i) {
        char c = s[i];
        if (c == '%' && i + 2 < s.size() && hexValue(s[i + 1]) >= 0 && hexValue(s[i + 2]) >= 0) {
            char decoded = static_cast<char>(hexValue(s[i + 1]) * 16 + hexValue(s[i + 2]));
            // A "%" that starts no escape stays as written; a hex digit decoded right after it
            // would make one ("%a%61" is not "%aa"), so such a digit stays escaped.
            const size_t k = out.size();
            const bool afterStray = hexValue(decoded) >= 0 && ((k >= 1 && out[k - 1] == '%') ||
                                                               (k >= 2 && out[k - 2] == '%'));
            if (isUnreserved(decoded) && !afterStray) {
                out += lowerCase ? lower(decoded) : decoded;
            } else {
                out += '%';
                out += kHex[hexValue(s[i + 1])];
                out += kHex[hexValue(s[i + 2])];
            }
            i += 2;
        } else {
            out += lowerCase ? lower(c) : c;
        }
    }
    return out;
}

// The default port of the schemes whose default the normal form drops; "" for others.
const char* defaultPort(const std::string& scheme) {
    if (scheme == "http" || scheme == "ws") return "80";
    if (scheme == "https" || scheme == "wss") return "443";
    if (scheme == "ftp") return "21";
    return "";
}

std::string normalizeAuthority(const std::string& authority, const std::string& scheme) {
    // userinfo "@" host ":" port; the host may be an IP literal in brackets, with colons.
    size_t at = authority.rfind('@');
    size_t hostStart = at == std::string::npos ? 0 : at + 1;
    size_t portColon = authority.rfind(':');
    size_t bracket = authority.rfind(']');
    if (portColon != std::string::npos &&
        (portColon < hostStart || (bracket != std::string::npos && portColon < bracket)))
        portColon = std::string::npos;
    for (size_t i = portColon == std::string::npos ? authority.size() : portColon + 1;
         i < authority.size(); ++i)
        if (!isDigit(authority[i])) portColon = std::string::npos;  // not a port: leave as is
    // The port follows the host's closing bracket, or its only colon; in any other authority
    // nothing is taken as a port.
    if (portColon != std::string::npos) {
        const bool literal = authority[hostStart] == '[';
        if (literal ? bracket == std::string::npos || portColon != bracket + 1
                    : authority.find(':', hostStart) != portColon)
            portColon = std::string::npos;
    }
    std::string out = normalizeEscapes(authority.substr(0, hostStart), false);
    size_t hostEnd = portColon == std::string::npos ? authority.size() : portColon;
    out += normalizeEscapes(authority.substr(hostStart, hostEnd - hostStart), true);
    if (portColon != std::string::npos) {
        std::string port = authority.substr(portColon + 1);
        if (!port.empty() && port != defaultPort(scheme)) out.append(1, ':').append(port);
    }
    return out;
}

Reference normalize(const Reference& r) {
    Reference n = r;
    for (char& c : n.scheme)
        c = lower(c);
    if (n.hasAuthority) n.authority = normalizeAuthority(r.authority, n.scheme);
    n.path = removeDotSegments(normalizeEscapes(r.path, false));
    if (n.hasAuthority && n.path.empty()) n.path = "/";
    n.query = normalizeEscapes(r.query, false);
    n.fragment = normalizeEscapes(r.fragment, false);
    return n;
}

// The "/"-separated segments of a path that starts with "/" (without the empty one before the
// first "/").
std::vector<std::string> segments(const std::string& path) {
    std::vector<std::string> out;
    size_t i = 1;
    for (;;) {
        size_t slash = path.find('/', i);
        if (slash == std::string::npos) {
            out.push_back(path.substr(i));
            return out;
        }
        out.push_back(path.substr(i, slash - i));
        i = slash + 1;
    }
}

// The query and fragment of t, written after a path.
std::string tail(const Reference& t) {
    std::string out;
    if (t.hasQuery) out.append(1, '?').append(t.query);
    if (t.hasFragment) out.append(1, '#').append(t.fragment);
    return out;
}

// The relative path from the directory base resolves against to target's path, or "" when
// there is none (paths that do not start at a root).
std::string relativePath(const Reference& base, const Reference& target) {
    // The directory a relative path is merged with, after its own dot segments went.
    std::string dir = removeDotSegments(merge(base, "x"));
    if (dir.empty() || dir[0] != '/' || target.path.empty() || target.path[0] != '/') return "";
    dir.pop_back();  // the "x"
    std::vector<std::string> from = segments(dir);
    from.pop_back();  // the empty segment after the last "/"
    std::vector<std::string> to = segments(target.path);
    size_t common = 0;
    while (common < from.size() && common + 1 < to.size() && from[common] == to[common])
        ++common;
    std::string rel;
    for (size_t i = common; i < from.size(); ++i)
        rel += "../";
    for (size_t i = common; i < to.size(); ++i) {
        if (i > common) rel += '/';
        rel += to[i];
    }
    // Nothing left means the directory itself; a first segment that is empty (it would make
    // the path absolute) or holds a colon (it would read as a scheme) needs "./" in front.
    size_t firstEnd = rel.find('/');
    std::string first = rel.substr(0, firstEnd);
    if (rel.empty() || (first.empty() && firstEnd != std::string::npos) ||
        first.find(':') != std::string::npos)
        rel = "./" + rel;
    return rel + tail(target);
}

}  // namespace

bool vcResolveURL(const vString& base, const vString& ref, vString& out) {
    Reference b;
    Reference r;
    if (!parseURL(base, b) || !split(std::string(ref.data(), ref.length()), r)) return false;
    out = toVString(join(resolve(b, r)));
    return true;
}

bool vcNormalizeURL(const vString& url, vString& out) {
    Reference r;
    if (!parseURL(url, r)) return false;
    out = toVString(join(normalize(r)));
    return true;
}

bool vcMakeRelativeURL(const vString& from, const vString& to, vString& out) {
    Reference b;
    Reference t;
    if (!parseURL(from, b) || !parseURL(to, t)) return false;
    t = resolve(t, t);  // the target with its dot segments gone: what a reference can reach
    const std::string target = join(t);

    // Candidates, shortest first wins; each is checked by resolving it, so that the choice
    // never leads elsewhere.
    std::vector<std::string> candidates;
    if (b.scheme == t.scheme && b.hasAuthority == t.hasAuthority && b.authority == t.authority) {
        // The same path: the empty reference keeps the base's query, "?y" brings another.
        if (b.path == t.path) {
            if (t.hasQuery == b.hasQuery && t.query == b.query)
                candidates.push_back(t.hasFragment ? "#" + t.fragment : std::string());
            else if (t.hasQuery)
                candidates.push_back(tail(t));
        }
        std::string rel = relativePath(b, t);
        if (!rel.empty()) candidates.push_back(rel);
        if (!t.path.empty() && t.path[0] == '/' && t.path.compare(0, 2, "//") != 0)
            candidates.push_back(t.path + tail(t));
    }
    if (b.scheme == t.scheme && t.hasAuthority) {
        Reference network = t;
        network.hasScheme = false;
        candidates.push_back(join(network));
    }
    candidates.push_back(target);

    const std::string* best = nullptr;
    for (const std::string& c : candidates) {
        if (best && c.size() >= best->size()) continue;
        Reference r;
        if (split(c, r) && join(resolve(b, r)) == target) best = &c;
    }
    if (!best) return false;
    out = toVString(*best);
    return true;
}
