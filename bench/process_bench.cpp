// Starting a child and capturing its output: vProcess::fReadPipe beside hand-written captures in
// the same run, on two children:
//  - true: `/bin/true`, which writes nothing: the cost of a start, a capture and the exit code.
//  - 1mb:  `head -c 1048576 /dev/zero`: the same plus one MiB through the pipe.
// The peers: "spawn-256" is posix_spawnp with the same set-up as the library (standard input
// from /dev/null, standard output and error on one pipe, no other descriptor inherited), a read
// loop of 256-byte reads like the library's and a blocking waitpid: the floor for what the
// library does. "spawn-64k" is the same with 64 KiB reads. "popen" is popen and fread of 64 KiB
// with pclose, which also goes through /bin/sh.
//
// The libraries' process classes are peers too. "poco" is Poco::Process::launch with one
// Poco::Pipe for standard output and error and another for standard input, whose writing end is
// closed at once (the child reads end of file, as from /dev/null), read with Pipe::readBytes in
// 64 KiB reads and waited for with ProcessHandle::wait. Before the exec, POCO's child closes
// every descriptor number from 3 up to the open-file limit, one close call each, so its start
// costs grow with that limit (printed at the start). "qt" is QProcess with merged channels and
// standard input from the null device: start, waitForFinished, readAllStandardOutput; QProcess
// reads the pipe into its own buffer while it waits. Qt is given the program and arguments as
// QString and QStringList converted before timing.
//
// Every engine's output is checked against the expected bytes before anything is timed.
#include <Poco/Pipe.h>
#include <Poco/Process.h>
#include <QByteArray>
#include <QProcess>
#include <QString>
#include <QStringList>

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include <vfc/vfc.h>

#include "benchCommon.h"

extern char** environ;

namespace {

struct Child {
    std::string kase;
    std::vector<std::string> argv;
    size_t bytes;  // what it writes

    std::string commandLine() const {
        std::string s;
        for (const std::string& a : argv)
            s += (s.empty() ? "" : " ") + a;
        return s;
    }
};

const std::vector<Child>& children() {
    static const std::vector<Child> all = {
        {"true", {"/bin/true"}, 0},
        {"1mb", {"head", "-c", "1048576", "/dev/zero"}, 1048576},
    };
    return all;
}

// ---- the engines: each returns the captured bytes in out and the exit code -------------------

// Like the peers, which append to the caller's reused std::string, the capture appends to a
// string kept from run to run (emptied first, its buffer kept); the copy into out is outside
// what the peers do, so it is made only when out is to be checked.
bool gCheckingOutput = false;

int vfcCapture(const Child& c, std::string& out) {
    static vString text;
    text.remove(0);
    vProcess p;
    if (!p.fReadPipe(c.commandLine().c_str(), text)) return -1;
    if (gCheckingOutput) out.assign(text.data(), text.length());
    return p.aExitCode().value();
}

int spawnCapture(const Child& c, std::string& out, size_t readSize) {
    out.clear();
    int fds[2];
    if (::pipe2(fds, O_CLOEXEC) != 0) return -1;
    std::vector<char*> args;
    for (const std::string& a : c.argv)
        args.push_back(const_cast<char*>(a.c_str()));
    args.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, fds[1], 1);
    posix_spawn_file_actions_adddup2(&actions, fds[1], 2);
    posix_spawn_file_actions_addclosefrom_np(&actions, 3);
    pid_t pid = 0;
    int rc = ::posix_spawnp(&pid, args[0], &actions, nullptr, args.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    ::close(fds[1]);
    if (rc != 0) {
        ::close(fds[0]);
        return -1;
    }
    std::vector<char> buffer(readSize);
    for (;;) {
        ssize_t n = ::read(fds[0], buffer.data(), buffer.size());
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) break;
        out.append(buffer.data(), static_cast<size_t>(n));
    }
    ::close(fds[0]);
    int status = 0;
    while (::waitpid(pid, &status, 0) < 0 && errno == EINTR) {
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

int popenCapture(const Child& c, std::string& out) {
    out.clear();
    FILE* f = ::popen((c.commandLine() + " 2>&1").c_str(), "r");
    if (!f) return -1;
    std::vector<char> buffer(64 * 1024);
    size_t n;
    while ((n = std::fread(buffer.data(), 1, buffer.size(), f)) > 0)
        out.append(buffer.data(), n);
    int status = ::pclose(f);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

int pocoCapture(const Child& c, std::string& out) {
    out.clear();
    Poco::Pipe input, output;
    Poco::Process::Args args(c.argv.begin() + 1, c.argv.end());
    Poco::ProcessHandle child = Poco::Process::launch(c.argv[0], args, &input, &output, &output);
    input.close(Poco::Pipe::CLOSE_WRITE);
    std::vector<char> buffer(64 * 1024);
    int n;
    while ((n = output.readBytes(buffer.data(), static_cast<int>(buffer.size()))) > 0)
        out.append(buffer.data(), static_cast<size_t>(n));
    output.close();
    return child.wait();
}

// The children's commands for Qt, converted once.
struct QtCommand {
    QString program;
    QStringList arguments;
};

const QtCommand& qtCommand(const Child& c) {
    static const std::vector<QtCommand> all = [] {
        std::vector<QtCommand> v;
        for (const Child& child : children()) {
            QtCommand q{QString::fromStdString(child.argv[0]), {}};
            for (size_t i = 1; i < child.argv.size(); ++i)
                q.arguments << QString::fromStdString(child.argv[i]);
            v.push_back(q);
        }
        return v;
    }();
    return all[static_cast<size_t>(&c - children().data())];
}

// Like vfcCapture, the bytes are copied into out only when they are to be checked: QProcess
// hands them over as a QByteArray.
int qtCapture(const Child& c, std::string& out) {
    const QtCommand& command = qtCommand(c);
    QProcess p;
    p.setProcessChannelMode(QProcess::MergedChannels);
    p.setStandardInputFile(QProcess::nullDevice());
    p.start(command.program, command.arguments, QIODevice::ReadOnly);
    if (!p.waitForFinished(-1)) return -1;
    QByteArray bytes = p.readAllStandardOutput();
    if (gCheckingOutput) out.assign(bytes.constData(), static_cast<size_t>(bytes.size()));
    return p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1;
}

using Engine = std::function<int(const Child&, std::string&)>;

const std::vector<std::pair<std::string, Engine>>& engines() {
    static const std::vector<std::pair<std::string, Engine>> all = {
        {"vfc", vfcCapture},
        {"spawn-256", [](const Child& c, std::string& out) { return spawnCapture(c, out, 256); }},
        {"spawn-64k",
         [](const Child& c, std::string& out) { return spawnCapture(c, out, 64 * 1024); }},
        {"popen", popenCapture},
        {"poco", pocoCapture},
        {"qt", qtCapture},
    };
    return all;
}

bool sameResults() {
    gCheckingOutput = true;
    bool ok = true;
    for (const Child& c : children()) {
        const std::string expected(c.bytes, '\0');
        for (const auto& [name, engine] : engines()) {
            std::string out;
            int code = engine(c, out);
            if (code != 0 || out != expected) {
                std::printf("%s on %s: exit %d, %zu bytes (expected 0 and %zu zero bytes)\n",
                            name.c_str(), c.kase.c_str(), code, out.size(), c.bytes);
                ok = false;
            }
        }
    }
    gCheckingOutput = false;
    return ok;
}

void registerAll() {
    for (const Child& c : children()) {
        for (const auto& [name, engine] : engines()) {
            const Child* child = &c;
            Engine run = engine;
            benchmark::RegisterBenchmark(
                (c.kase + "/" + name).c_str(),
                [child, run](benchmark::State& s) {
                    std::string out;
                    size_t sink = 0;
                    for (auto _ : s) {
                        run(*child, out);
                        sink += out.size();
                    }
                    benchmark::DoNotOptimize(sink);
                    if (child->bytes)
                        s.SetBytesProcessed(static_cast<int64_t>(s.iterations() * child->bytes));
                    else
                        s.SetItemsProcessed(s.iterations());
                })
                ->Unit(benchmark::kMicrosecond)
                ->UseRealTime();
        }
    }
}

}  // namespace

int main(int argc, char** argv) {
    rlimit files{};
    if (::getrlimit(RLIMIT_NOFILE, &files) == 0)
        std::printf("open-file limit: %llu\n", static_cast<unsigned long long>(files.rlim_cur));
    if (!sameResults()) std::printf("WARNING: the engines capture different output\n");
    registerAll();
    vfcbench::setProgram(argv[0]);
    benchmark::Initialize(&argc, argv);
    // MB/s for a child with output, starts per second for one without.
    vfcbench::RatioReporter reporter("vfc", "run/s", 1);
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.printRatios();
    benchmark::Shutdown();
    return 0;
}
