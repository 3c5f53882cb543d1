// The vfc tool's application object: the library's console application with a one-line
// progress indicator. On a terminal the innermost progress level is drawn on standard error as
//   "vfc type [##########..........]  50%"
// and wiped when the outermost level ends or a message is logged; when standard error is not a
// terminal nothing is drawn, so redirected output stays clean.
//
// An interrupt (Ctrl-C) while a progress level is open sets the abort flag, and the operation
// stops at its next fUpdateAbort; outside any progress level nothing polls the flag, so the
// tool ends at once with status 130, as a console program is expected to.
#ifndef VFC_TOOLS_VFC_CONSOLEAPP_H
#define VFC_TOOLS_VFC_CONSOLEAPP_H

#include <csignal>
#include <string>

#include <vfc/vfc.h>

namespace vfctool {

class ConsoleApp : public vApp {
  public:
    ConsoleApp();
    // The text drawn before the bar (the subcommand's name).
    void setLabel(const std::string& label) { aLabel = label; }
    bool drawsProgress() const { return aTerminal; }

    void fNotifyAbort() override;
    void fStartProgress(int count) override;
    using vApp::fStartProgress;
    void fSetProgress(int value) override;
    void fEndProgress() override;
    using vApp::fEndProgress;
    void fLogMsg(const vString& text, int level) override;

  private:
    void erase();

    std::string aLabel = "vfc";
    bool aTerminal = false;
    bool aDrawn = false;
    int aShown = -1;  // the percentage on screen
    // Whether a progress level is open, for the signal handler.
    volatile std::sig_atomic_t aPolled = 0;
};

}  // namespace vfctool

#endif  // VFC_TOOLS_VFC_CONSOLEAPP_H
