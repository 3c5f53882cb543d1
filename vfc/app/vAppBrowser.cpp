// The web browser and the mail program of vApp: finding the user's program for a URL, the
// "file:" and "mailto:" URLs handed to it, and starting it detached.
#include <cstring>
#include <string>
#include <vector>

#include "vfc/app/vApp.h"
#include "vfc/app/vArgList.h"
#include "vfc/app/vpcEnv.h"
#include "vfc/os/os.h"
#include "vfc/system/vProcess.h"

namespace {

// A program to start: its words (POSIX) and its command line (Windows runs it; POSIX shows it).
struct HandlerCommand {
    std::vector<std::string> words;
    std::string line;
};

std::string toStd(const vString& s) {
    return std::string(s.data(), s.length());
}

vString fromStd(const std::string& s) {
    return vString(s.data(), s.size());
}

bool isAlpha(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isUnreserved(char c) {
    return isAlpha(c) || isDigit(c) || c == '-' || c == '.' || c == '_' || c == '~';
}

void appendEscaped(std::string& out, unsigned char c) {
    static const char kHex[] = "0123456789ABCDEF";
    out += '%';
    out += kHex[c >> 4];
    out += kHex[c & 15];
}

// bytes with every byte but the unreserved ones and those of kept written %XX.
std::string escaped(const std::string& bytes, const char* kept) {
    std::string out;
    for (char c : bytes) {
        if (isUnreserved(c) || (c != '\0' && std::strchr(kept, c)))
            out += c;
        else
            appendEscaped(out, static_cast<unsigned char>(c));
    }
    return out;
}

// A scheme name of RFC 3986: a letter, then letters, digits, "+", "-" and ".".
bool isSchemeName(const std::string& name) {
    if (name.empty() || !isAlpha(name[0])) return false;
    for (char c : name)
        if (!isAlpha(c) && !isDigit(c) && c != '+' && c != '-' && c != '.') return false;
    return true;
}

// Whether text begins with a scheme and ":". One letter is a drive ("C:\..."), not a scheme.
bool hasScheme(const std::string& text) {
    size_t colon = text.find(':');
    return colon != std::string::npos && colon >= 2 && isSchemeName(text.substr(0, colon));
}

// The URL as it goes on a command line: nothing in it can end or split a word.
std::string commandSafe(const std::string& url) {
    std::string out;
    for (char c : url) {
        const unsigned char u = static_cast<unsigned char>(c);
        if (u <= 0x20 || u == 0x7f || c == '"')
            appendEscaped(out, u);
        else
            out += c;
    }
    return out;
}

// The words joined by blanks, a word holding white space (or none at all) in double quotes, as
// the tokenizer reads them back.
std::string displayLine(const std::vector<std::string>& words) {
    std::string line;
    for (const std::string& w : words) {
        if (!line.empty()) line += ' ';
        if (w.empty() || w.find_first_of(" \t\r\n") != std::string::npos)
            line += '"' + w + '"';
        else
            line += w;
    }
    return line;
}

// A POSIX command for url: the words of command with "%s" and "%%" replaced, the program as
// found in PATH. False when the command has no word or its program is not there.
bool commandFor(const vString& command, const std::string& url, HandlerCommand& out) {
    vSlistvString words;
    vString errors;
    if (!vArgList::fParseStringIntoSlist(command, words, errors) || words.fEntries() == 0)
        return false;
    out.words.clear();
    bool placed = false;
    vSlistvStringIter it(words);
    while (it.fAdvance()) {
        if (out.words.empty()) {
            vFile program;
            if (!vProcess::IsExecutable(it.aKey(), program)) return false;
            out.words.push_back(toStd(program.fPath()));
            continue;
        }
        const std::string word = toStd(it.aKey());
        std::string replaced;
        for (size_t i = 0; i < word.size(); ++i) {
            if (word[i] == '%' && i + 1 < word.size() &&
                (word[i + 1] == 's' || word[i + 1] == '%')) {
                placed = placed || word[i + 1] == 's';
                replaced += word[i + 1] == 's' ? url : "%";
                ++i;
            } else {
                replaced += word[i];
            }
        }
        out.words.push_back(replaced);
    }
    if (!placed) out.words.push_back(url);
    out.line = displayLine(out.words);
    return true;
}

bool posixHandler(const std::string& scheme, const std::string& url, HandlerCommand& out) {
    if (scheme == "mailto") {
        if (commandFor("xdg-email", url, out)) return true;
    } else {
        vString browsers;
        if (vpcGetEnv("BROWSER", browsers)) {
            const std::string list = toStd(browsers);
            size_t start = 0;
            while (start <= list.size()) {
                size_t end = list.find(':', start);
                if (end == std::string::npos) end = list.size();
                if (end > start && commandFor(fromStd(list.substr(start, end - start)), url, out))
                    return true;
                start = end + 1;
            }
        }
    }
    return commandFor("xdg-open", url, out);
}

// The command registered for scheme on Windows, "%1" and "%L" replaced by url.
bool windowsHandler(const std::string& scheme, const std::string& url, HandlerCommand& out) {
    const std::string key = scheme + "\\shell\\open\\command";
    std::string command;
    if (!vfc::os::RegistryString(vfc::os::RegistryRoot::eCurrentUser,
                                 ("Software\\Classes\\" + key).c_str(), "", command) &&
        !vfc::os::RegistryString(vfc::os::RegistryRoot::eClassesRoot, key.c_str(), "", command))
        return false;
    size_t first = command.find_first_not_of(" \t");
    size_t last = command.find_last_not_of(" \t");
    if (first == std::string::npos) return false;
    command = command.substr(first, last - first + 1);
    std::string line;
    bool placed = false;
    for (size_t i = 0; i < command.size(); ++i) {
        const char next = i + 1 < command.size() ? command[i + 1] : '\0';
        if (command[i] == '%' && (next == '1' || next == 'L' || next == 'l')) {
            line += url;
            placed = true;
            ++i;
        } else {
            line += command[i];
        }
    }
    if (!placed) line += " \"" + url + '"';
    out.words.clear();
    out.line = line;
    return true;
}

bool findHandler(const vString& scheme, const vString& url, HandlerCommand& out) {
    std::string name = toStd(scheme);
    if (!isSchemeName(name)) return false;
    for (char& c : name)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    const std::string safe = commandSafe(toStd(url));
    return vfc::os::kWindows ? windowsHandler(name, safe, out) : posixHandler(name, safe, out);
}

// What the warning says when no program was found.
std::string noHandlerMessage(const std::string& scheme, const char* what) {
    if (vfc::os::kWindows)
        return std::string("no ") + what + " found: no program is registered for \"" + scheme +
               "\" URLs (" + scheme + "\\shell\\open\\command)";
    if (scheme == "mailto")
        return std::string("no ") + what + " found: neither xdg-email nor xdg-open is in PATH";
    return std::string("no ") + what + " found: no command of BROWSER exists and xdg-open is not " +
           "in PATH";
}

// Starts the program of scheme for url; false, with the reason logged through app, when there
// is none or it does not start.
bool startHandler(vApp& app, const char* scheme, const vString& url, const char* what) {
    HandlerCommand command;
    if (!findHandler(scheme, url, command)) {
        app.fLogMsg(fromStd(noHandlerMessage(scheme, what)), 1);
        return false;
    }
    const vfc::os::SpawnError e = vfc::os::SpawnDetached(command.line, command.words);
    if (e == vfc::os::SpawnError::eNone) return true;
    unsigned id = 6003;
    if (e == vfc::os::SpawnError::eNotFound) id = 6000;
    if (e == vfc::os::SpawnError::eNoResources) id = 6001;
    const vString message = app.fGenMessage(id, fromStd(command.line));
    app.fLogMsg(message, 1);
    return false;
}

}  // namespace

bool vApp::sfFindURLHandler(const vString& scheme, const vString& url, vString& commandLine) {
    HandlerCommand command;
    if (!findHandler(scheme, url, command)) return false;
    commandLine = fromStd(command.line);
    return true;
}

bool vApp::sfFindBrowser(const vString& url, vString& commandLine) {
    return sfFindURLHandler("http", url, commandLine);
}

bool vApp::sfMakeBrowserURL(const vString& urlOrFile, vString& url) {
    if (hasScheme(toStd(urlOrFile))) {
        url = urlOrFile;
        return true;
    }
    return vfc::os::PathExists(urlOrFile.data()) && sfMakeFileURL(urlOrFile, url);
}

bool vApp::fOpenURL(const vString& urlOrFile) {
    vString url;
    if (!sfMakeBrowserURL(urlOrFile, url)) {
        vString message("cannot show \"");
        message.append(urlOrFile).append("\" in the web browser: no such file");
        fLogMsg(message, 1);
        return false;
    }
    return startHandler(*this, "http", url, "web browser");
}

bool vApp::fSendMail(const vSlistvString& to, const vString& subject, const vString& body) {
    return startHandler(*this, "mailto", sfMakeMailtoURL(to, subject, body), "mail program");
}

vString vApp::sfMakeMailtoURL(const vSlistvString& to, const vString& subject,
                              const vString& body) {
    // What RFC 6068 lets stand in a header value besides the unreserved characters; "+" is
    // escaped all the same, since some programs read it as a blank.
    static const char kValueDelims[] = "!$'()*,;:@";
    static const char kAddressDelims[] = "!$'()*;:@";
    std::string url = "mailto:";
    vSlistvStringIter it(to);
    bool first = true;
    while (it.fAdvance()) {
        if (!first) url += ',';
        url += escaped(toStd(it.aKey()), kAddressDelims);
        first = false;
    }
    char separator = '?';
    if (!subject.isNull()) {
        url += separator;
        url += "subject=" + escaped(toStd(subject), kValueDelims);
        separator = '&';
    }
    if (!body.isNull()) {
        // Every line break becomes CR LF before the escaping.
        const std::string text = toStd(body);
        std::string lines;
        for (size_t i = 0; i < text.size(); ++i) {
            if (text[i] == '\r' || text[i] == '\n') {
                lines += "\r\n";
                if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') ++i;
            } else {
                lines += text[i];
            }
        }
        url += separator;
        url += "body=" + escaped(lines, kValueDelims);
    }
    return fromStd(url);
}

bool vApp::sfMakeFileURL(const vString& path, vString& url) {
    std::string given = toStd(path);
    if (given.empty()) return false;
    for (char& c : given)
        if (vfc::os::IsPathSeparator(c)) c = '/';
    // What the path starts from: a UNC share ("//server"), a drive ("C:"), the root, or the
    // current directory.
    const bool unc = vfc::os::kWindows && given.compare(0, 2, "//") == 0;
    const bool drive = vfc::os::kWindows && given.size() >= 3 && isAlpha(given[0]) &&
                       given[1] == ':' && given[2] == '/';
    if (!unc && !drive && given[0] != '/') {
        std::string current;
        if (!vfc::os::CurrentDirectory(current)) return false;
        for (char& c : current)
            if (vfc::os::IsPathSeparator(c)) c = '/';
        given = current + '/' + given;
    } else if (vfc::os::kWindows && !unc && !drive) {
        // "\dir" is on the current directory's drive.
        std::string current;
        if (vfc::os::CurrentDirectory(current) && current.size() >= 2 && current[1] == ':')
            given = current.substr(0, 2) + given;
    }
    // The prefix that ".." never climbs over, then the names.
    std::string prefix;
    size_t pos = 0;
    if (vfc::os::kWindows && given.compare(0, 2, "//") == 0) {
        size_t server = given.find('/', 2);
        if (server == std::string::npos) server = given.size();
        prefix = "file://" + escaped(given.substr(2, server - 2), "!$&'()*+,;=");
        pos = server;
    } else if (vfc::os::kWindows && given.size() >= 2 && given[1] == ':') {
        prefix = "file:///" + given.substr(0, 2);
        pos = 2;
    } else {
        prefix = "file://";
    }
    std::vector<std::string> names;
    const bool directory = given.back() == '/';
    while (pos < given.size()) {
        size_t end = given.find('/', pos);
        if (end == std::string::npos) end = given.size();
        const std::string name = given.substr(pos, end - pos);
        if (name == "..") {
            if (!names.empty()) names.pop_back();
        } else if (!name.empty() && name != ".") {
            names.push_back(name);
        }
        pos = end + 1;
    }
    std::string out = prefix;
    for (const std::string& name : names)
        out += '/' + escaped(name, "!$&'()*+,;=:@");
    if (names.empty() || directory) out += '/';
    url = fromStd(out);
    return true;
}
