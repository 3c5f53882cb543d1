// convert: the shape of a converter built on vfc. It turns a plain-text file into a small web
// site of two pages that link to each other: OUT/index.html and OUT/text/NAME.html, with a logo
// image copied into OUT/img/ when one is given. On the way it shows the application object with
// its options, variable expansion, path components, type detection, line reading, relative
// links, output streams, file operations, progress and error reporting. The site is built in a
// temporary folder beside OUT and renamed into place when it is complete, so a failed run leaves
// the previous site as it was.
//
//   convert -in %HOME%/notes.txt -out site       (the program expands %HOME%, not the shell)
//
// Exit status: 0 when both pages were written, 1 when the conversion failed, 2 on bad usage.
#include <iostream>

#include <vfc/vfc.h>

namespace {

// The application's options with their defaults. A user may override them in convert.ini in the
// configuration folder; "%...%" references in defaults are expanded when the table is read.
const vpOption kOptions[] = {
    {"input", "", 0},
    {"outdir", "%CSIDL_PERSONAL%/converted", 0},
    {nullptr, nullptr, 0},
};

// The command line; a value given here wins over the option's default.
const vpArgListItem kArguments[] = {
    {"-in", "FILE", "the text file to convert (%VAR% and $VAR are expanded)", true},
    {"-out", "DIR", "the output folder (default: the outdir option)", false},
    {"-logo", "IMAGE", "an image to copy into the site and show on the index page", false},
    {nullptr, nullptr, nullptr, false},
};

// vApp shows no progress on a console; a tool that wants figures overrides fSetProgress.
class ConvertApp : public vApp {
  public:
    ConvertApp() : vApp("Vorlandix", "Convert", "1.0", "convert", kOptions) {}
    void fSetProgress(int percent) override { std::cout << "  " << percent << "%\n"; }
};

// Logs an error through the current application and gives the failure status.
int fail(const vString& message) {
    vAppInfo().fLogMsg(message, 2);
    return 1;
}

// The page at sitePath (a UNIX path from the site's root, such as "/text/a.html") as a path in
// the host notation under the output folder: the names are appended as components.
vString fileOf(const vPathComponentList& outDir, const vString& sitePath) {
    vPathComponentList full(outDir), site;
    vcListComponents(vPathType::eUNIX, sitePath, site);
    vPathComponentListIter it(site);
    while (it.fAdvance())
        if (it.aKey().fComponentType() == vComponentType::eName) full.fInsert(it.aKey());
    full.fSetTrailingSeparator(false);
    vString path;
    return vcGeneratePath(vPathType::eHost, full, path);
}

// The link from the page at fromPage to the page at toPage, both site paths, as a relative URL
// with its special characters escaped ("Release Notes.html" becomes "Release%20Notes.html").
vString linkFrom(const vString& fromPage, const vString& toPage) {
    vPathComponentList from, to, rel;
    vPathComponent page;
    vcListComponents(vPathType::eUNIX, fromPage, from);
    vcTrimLastComponent(from, page);  // a link is relative to the page's folder
    vcListComponents(vPathType::eUNIX, toPage, to);
    vcMakeRelative(false, from, to, rel);
    vString href;
    return vcGeneratePath(vPathType::eURLHostFlagged, rel, href);
}

// Writes one page; the stream reports a failed write at fClose at the latest. Opened binary, so
// that its lines end in CR LF as written on every platform (a text open on Windows would write
// each LF as CR LF again).
bool writePage(const vString& file, const vString& title, const vSlistvString& body) {
    vOfstream out;
    if (!out.fOpenBinary(vFile(file))) return false;
    out.fWriteLine("<html><head><title>" + title + "</title></head><body>");
    vSlistvStringIter it(body);
    while (it.fAdvance())
        out.fWriteLine(it.aKey());
    out.fWriteLine(vString("</body></html>"));
    return out.fClose();
}

// Escapes the three characters that HTML text cannot hold as they are.
void escapeHtml(vString& text) {
    static const vRegExp amp(vString("&")), lt(vString("<")), gt(vString(">"));
    text.fReplaceAll(amp, "&amp;");
    text.fReplaceAll(lt, "&lt;");
    text.fReplaceAll(gt, "&gt;");
}

}  // namespace

int main(int argc, char** argv) {
    ConvertApp app;  // first: everything below reports through it
    vArgList args(argc, argv, kArguments, "");
    if (args.fFailed()) {
        args.usage();                              // messages and usage on standard error
        return args.fErrorlog().isNull() ? 0 : 2;  // "-help" fails without a message
    }
    vString value;
    if (args.fGetOption("-in", value)) app.fSetOption("input", value);
    if (args.fGetOption("-out", value)) app.fSetOption("outdir", value);

    vString input, outDir, logo;
    args.fGetOption("-logo", logo);
    app.fGetOption("input", input);
    app.fGetOption("outdir", outDir);
    vpcUserEnvExpand(input);  // "%HOME%/notes.txt" -> "/home/ann/notes.txt"
    vpcUserEnvExpand(outDir);

    // The input's last component is the file name; the pages are named after it.
    vPathComponentList inputPath, outPath;
    vPathComponent name;
    vcListComponents(vPathType::eHost, input, inputPath);
    vcTrimLastComponent(inputPath, name);
    if (name.aText().isNull()) return fail("\"" + input + "\" names no file.");
    vString stem(name.aText()), title;
    vcSetPathExtension("", stem);
    escapeHtml(title = stem);

    // A binary open detects the content type; only plain text is converted.
    vIfstream in;
    if (!in.fOpenBinary(vFile(input))) return fail("Cannot open \"" + input + "\".");
    const vString type(in.fFileInfo().fTypeName());
    std::cout << name.aText() << ": " << type << '\n';
    if (in.fFileInfo().fType() != vFile::eText)
        return fail(name.aText() + " is " + type + ", not plain text.");
    vSlistvString lines;
    vString line;
    while (in.fGetLine(line))
        lines.fInsert(line);  // LF, CR LF and CR all end a line
    in.fClose();

    // The site is built in a temporary folder next to the output folder (one file system, so
    // that the folder can be renamed into place); it goes again when anything fails.
    vcListComponents(vPathType::eHost, outDir, outPath, true);
    vPathComponent last;
    vcTrimLastComponent(outPath, last);
    vString parent;
    vcGeneratePath(vPathType::eHost, outPath, parent);
    if (parent.isNull() || parent == ".") parent = ".";
    if (!vcMakeDirectoryTree(vFile(parent))) return fail("Cannot create \"" + parent + "\".");
    vTempDir work(".convert-", vFile(parent));
    if (!work.fOK()) return fail("Cannot create a folder in \"" + parent + "\".");
    vPathComponentList workPath;
    vcListComponents(vPathType::eHost, work.fDir().fPath(), workPath, true);

    // The pages by their place in the site, then as files under the work folder.
    const vString indexPage("/index.html"), textPage("/text/" + stem + ".html");
    const vString down = linkFrom(indexPage, textPage), up = linkFrom(textPage, indexPage);
    const vString indexFile = fileOf(workPath, indexPage), textFile = fileOf(workPath, textPage);
    const vString textDir = fileOf(workPath, "/text");
    if (!vcMakeDirectoryTree(vFile(textDir))) return fail("Cannot create \"" + textDir + "\".");

    // The logo, copied with its modification time into img/.
    vString logoPage;
    if (!logo.isNull()) {
        vPathComponentList logoPath;
        vPathComponent logoName;
        vcListComponents(vPathType::eHost, logo, logoPath);
        vcTrimLastComponent(logoPath, logoName);
        logoPage = "/img/" + logoName.aText();
        if (!vcMakeDirectoryTree(vFile(fileOf(workPath, "/img"))) ||
            !vcCopyFile(vFile(logo), vFile(fileOf(workPath, logoPage))))
            return fail("Cannot copy \"" + logo + "\".");
    }

    // The text page, with progress by line; a level is always ended through its mark.
    vSlistvString body;
    body.fInsert("<p><a href=\"" + up + "\">Contents</a></p>");
    body.fInsert(vString("<pre>"));
    vAppProgressStackDepth mark;
    app.fStartProgress(mark, static_cast<int>(lines.fEntries()));
    vSlistvStringIter it(lines);
    while (it.fAdvance()) {
        if (app.fUpdateAbort()) {  // Ctrl-C sets the flag; long loops poll it
            app.fEndProgress(mark);
            return fail("Interrupted.");
        }
        vString text(it.aKey());
        escapeHtml(text);
        body.fInsert(text);
        app.fStepProgress();
    }
    app.fEndProgress(mark);
    body.fInsert(vString("</pre>"));
    if (!writePage(textFile, title, body)) return fail("Cannot write \"" + textFile + "\".");

    // The index page links down to the text page.
    vString count;
    vInt(static_cast<int>(lines.fEntries())).fAsString(count);
    body.fClearAndDestroy();
    body.fInsert("<h1>" + title + "</h1>");
    if (!logoPage.isNull())
        body.fInsert("<p><img src=\"" + linkFrom(indexPage, logoPage) + "\" alt=\"\"></p>");
    body.fInsert("<p><a href=\"" + down + "\">" + title + "</a>: " + count + " lines of " + type +
                 "</p>");
    if (!writePage(indexFile, title, body)) return fail("Cannot write \"" + indexFile + "\".");

    // Complete: the site replaces what was at the output folder.
    vFile site(outDir);
    if (site.QueryStat() && !vcRemoveTree(site)) return fail("Cannot replace \"" + outDir + "\".");
    if (!vcRenameFile(work.fDir(), site)) return fail("Cannot move the site to \"" + outDir + "\".");
    work.fKeep();

    app.fLogMsg("index.html -> " + down, 0);
    app.fLogMsg(down + " -> " + up, 0);
    return 0;
}
