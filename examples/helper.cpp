// helper: runs helper programs with their output captured through vProcess. It sorts a file of
// names with sort (output into a string), counts its lines with wc (output into a file), shows
// what the two kinds of capture do with carriage returns, and reports a program that cannot be
// started through the application's log, as a warning, and carries on. It writes wc.txt and
// crlf.txt into the current folder.
//
//   helper samples/files.txt
//
// Exit status: 0 when every helper behaved as expected, 1 otherwise, 2 on bad usage.
#include <iostream>

#include <vfc/vfc.h>

namespace {

// Logs an error through the current application; false, so that callers can pass it on.
bool logError(const vString& message) {
    vAppInfo().fLogMsg(message, 2);
    return false;
}

// The whole content of a file, or empty.
vString readAll(const vString& file) {
    vIfstream in;
    vString text;
    if (in.fOpenBinary(false, vFile(file))) in.fRead(text, 1 << 20);
    return text;
}

// True when the child ended with the expected status; otherwise logs the command, its status
// and what it wrote.
bool checkStatus(const vProcess& process, const vString& command, const vString& output,
                 int expected) {
    if (process.aExitCode().value() == expected) return true;
    vString status, text(output);
    process.aExitCode().fAsString(status);
    if (text.fLastCharIsEqual('\n')) text.remove(text.length() - 1);
    return logError(command + " ended with status " + status + ":\n" + text);
}

// Runs the command (no shell: the first word is searched in PATH) with its standard output and
// standard error captured together into text. False, with the reason logged, when it cannot be
// started or ends with another status than expected.
bool run(const vString& command, vString& text, int expected) {
    vProcess process;
    if (!process.fReadPipe(command, text)) return logError(process.aError());
    return checkStatus(process, command, text, expected);
}

// The same into a file. A file opened in text mode receives the output without carriage
// returns; one opened in binary mode receives it unchanged.
bool runInto(const vString& command, const vString& file, int expected) {
    vOfstream out;
    vProcess process;
    if (!out.fOpenText(vFile(file))) return logError("Cannot write \"" + file + "\".");
    bool started = process.fExecute(command, &out);
    if (!out.fClose()) return logError("Cannot write \"" + file + "\".");
    if (!started) return logError(process.aError());
    return checkStatus(process, command, readAll(file), expected);
}

}  // namespace

int main(int argc, char** argv) {
    vApp app("Vorlandix", "Helper", "1.0");
    vArgList args(argc, argv, nullptr, "FILE");  // no options, one file
    if (args.fFailed() || args.fUnassigned().fEntries() != 1) {
        args.usage();
        return 2;
    }
    args.fUnassigned().fFirst();
    const vString file = args.fUnassigned().aKey();
    // The children inherit the environment: fix sort's collation so that the order is the same
    // on every machine. A command line is cut into words without escapes; double quotes keep a
    // path with blanks in one word.
    vpcPutEnv("LC_ALL", "C");
    const vString quoted = "\"" + file + "\"";

    // 1. Into a string: sort's output, split into lines.
    vString sorted;
    if (!run("sort " + quoted, sorted, 0)) return 1;
    vSlistvString names;
    names.fConstruct(sorted);  // one element per line; empty lines vanish
    std::cout << "sorted:";
    vSlistvStringIter it(names);
    while (it.fAdvance())
        std::cout << ' ' << it.aKey();
    std::cout << '\n';

    // 2. Into a file: wc's count, read back and compared with the number of lines sort gave.
    if (!runInto("wc -l " + quoted, "wc.txt", 0)) return 1;
    vInt count(readAll("wc.txt"), 10);  // "8 samples/files.txt": the number comes first
    std::cout << "wc counts " << count.value() << " lines, sort gave " << names.fEntries() << '\n';
    if (count.value() != static_cast<int>(names.fEntries())) {
        logError(vString("wc and sort disagree."));
        return 1;
    }

    // 3. Carriage returns: kept in a string, removed on the way into a text file; the child's
    //    exit status is known either way.
    const vString crlf("sh -c \"printf 'one\\r\\ntwo\\r\\n'; exit 3\"");
    vString raw;
    if (!run(crlf, raw, 3) || !runInto(crlf, "crlf.txt", 3)) return 1;
    std::cout << "string " << raw.length() << " bytes, text file " << readAll("crlf.txt").length()
              << " bytes, exit status 3 both times\n";

    // 4. A program that does not exist: the start fails, and the message names the command.
    //    Here that is expected, so it is only a warning.
    vProcess missing;
    vString nothing;
    if (missing.fReadPipe("vfc-example-missing-helper --version", nothing)) {
        logError(vString("A missing program started."));
        return 1;
    }
    app.fLogMsg(missing.aError(), 1);
    std::cout << "the missing helper was reported\n";
    return 0;
}
