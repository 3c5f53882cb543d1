// The subcommands of the vfc tool. Each one takes its own arguments (after the subcommand name)
// and returns the process exit code: 0 success, 1 failure (for grep: nothing matched), 2 bad
// usage.
#ifndef VFC_TOOLS_VFC_VFCTOOL_H
#define VFC_TOOLS_VFC_VFCTOOL_H

#include <iosfwd>
#include <string>
#include <vector>

#include <vfc/vfc.h>

namespace vfctool {

using Args = std::vector<std::string>;

constexpr int kSuccess = 0;
constexpr int kFailure = 1;
constexpr int kUsage = 2;

struct Command {
    const char* name;
    const char* synopsis;  // the arguments, as shown by "vfc -help"
    const char* summary;   // one line
    // Shown by "vfc NAME -help" after the synopsis; null for a command that reads its options
    // with vArgList and prints that usage screen itself.
    const char* details;
    int (*run)(const Args& args);
};

// Every subcommand, in the order "vfc -help" lists them.
const std::vector<Command>& commands();

// Prints "usage: vfc NAME SYNOPSIS" and the details of command to out.
void printUsage(std::ostream& out, const Command& command);
// Reports bad usage of the named command through the application's log (an error, on
// std::cerr); returns kUsage.
int usageError(const char* name, const std::string& message);
// Logs an error of the named command through the application object.
void reportError(const char* name, const std::string& message);

// Every subcommand takes "--" as the end of its options: the words after it are arguments as
// they stand, even those that begin with "-". Each usage screen says so with this line.
extern const char* const kEndOfOptionsNote;
// Where a subcommand's arguments begin: past the first "--" at or after first, or first itself
// when args[first] is no "--".
size_t skipEndOfOptions(const Args& args, size_t first);

// A subcommand's command line: its options, read with vArgList from the words before the first
// "--", and its operands, the words that are neither options nor option arguments followed by
// every word after that "--", in order.
struct ParsedArgs {
    vArgList options;
    std::vector<vString> operands;
};

// Reads the command line of "vfc NAME ARGS...". Returns -1 when the command is to go on;
// otherwise the usage screen (followed by notes, when given, and kEndOfOptionsNote) has been
// printed and the result is the exit code: kSuccess for "-help" (screen on std::cout), kUsage
// for a bad command line (screen on std::cerr).
int parseOptions(const char* name, const Args& args, const vpArgListItem* table,
                 const char* trailing, ParsedArgs& out, const char* notes = nullptr);

int runDump(const Args& args);
int runExpand(const Args& args);
int runFind(const Args& args);
int runInfo(const Args& args);
int runIni(const Args& args);
int runMatch(const Args& args);
int runOpen(const Args& args);
int runType(const Args& args);
int runGrep(const Args& args);
int runPath(const Args& args);
int runRel(const Args& args);
int runResolve(const Args& args);
int runRun(const Args& args);
int runUrlEncode(const Args& args);
int runUrlDecode(const Args& args);

}  // namespace vfctool

#endif  // VFC_TOOLS_VFC_VFCTOOL_H
