// The message, logging, progress, status and busy operations of vApp, and the library's own
// message catalogue.
#include "vfc/app/vApp.h"

#include <atomic>
#include <climits>
#include <cstring>
#include <iostream>
#include <string>

#include "vfc/os/os.h"

namespace {

// The catalogue fLoadString reads; the library's own one until a tool names another.
std::atomic<vpMessageCatalog> gCatalogue{&vpcLibraryMessages};

// A message text is cut to what a 4096-byte buffer holds with its terminating zero.
constexpr size_t kMessageBufferSize = 4096;

// "%s" slots filled by fGenMessage; further slots are dropped.
constexpr int kMessageParameters = 6;

}  // namespace

const char* vpcLibraryMessages(unsigned id) {
    if (vfc::os::kWindows) {
        // The string resources of the library's own module; the text stays valid until this
        // thread asks for the next one.
        thread_local char buffer[kMessageBufferSize];
        return vfc::os::LoadStringResource(id, buffer, sizeof buffer) ? buffer : nullptr;
    }
    switch (id) {
#define VFC_MESSAGE(number, text) \
    case number: return text;
#include "vfc/app/internal/vpMessageTexts.def"
#undef VFC_MESSAGE
        default: return nullptr;
    }
}

vAppProgressStackDepth::~vAppProgressStackDepth() = default;

vAppStatusStackDepth::~vAppStatusStackDepth() = default;

// ---- catalogue and messages ----------------------------------------------------------------

void vApp::fSetHINSTANCE(vpMessageCatalog catalogue) {
    gCatalogue.store(catalogue);
}

vpMessageCatalog vApp::fGetHINSTANCE() {
    return gCatalogue.load();
}

const vString& vApp::fLoadString(unsigned id) {
    const vpMessageCatalog catalogue = fGetHINSTANCE();
    const char* text = catalogue ? catalogue(id) : nullptr;
    if (text)
        aMessageBuffer = vString(text, strnlen(text, kMessageBufferSize - 1));
    else
        aMessageBuffer = vString();
    return aMessageBuffer;
}

const vString& vApp::fGenMessage(unsigned id, const vString& p1, const vString& p2,
                                 const vString& p3, const vString& p4, const vString& p5,
                                 const vString& p6) {
    // Copied first: a parameter may be the message buffer itself, which fLoadString overwrites.
    const vString params[kMessageParameters] = {p1, p2, p3, p4, p5, p6};
    const vString templ = fLoadString(id);
    if (templ.isNull()) {
        aMessageBuffer = vString();
        return aMessageBuffer;
    }
    // Left to right, each "%s" takes the next parameter; a replacement is never searched again.
    vString out;
    out.reserve(templ.length());
    int used = 0;
    const size_t n = templ.length();
    const char* t = templ.data();
    size_t start = 0;
    for (size_t i = 0; i + 1 < n; ++i) {
        if (t[i] != '%' || t[i + 1] != 's') continue;
        out.append(t + start, i - start);
        if (used < kMessageParameters) out.append(params[used]);
        ++used;
        start = i + 2;
        ++i;
    }
    out.append(t + start, n - start);
    aMessageBuffer = out;
    return aMessageBuffer;
}

void vApp::fFormatLogMessageForConsole(const vString& text, int level, vString& result) {
    vString message;
    message.reserve(text.length());
    for (size_t i = 0; i < text.length(); ++i)
        if (text(i) != '\r') message.append(text(i));
    if (level == 0) {
        result = message;
        return;
    }

    vString prefix;
    if (level == 1)
        prefix = fGenMessage(6050);
    else if (level == 2)
        prefix = fGenMessage(6051);
    else
        prefix = vString("CODE == ") + vString(std::to_string(level).c_str());

    size_t leadLength = 0;
    while (leadLength < message.length() && message(leadLength) == '\n')
        ++leadLength;

    // Continuation lines start under the first character after "P: ".
    vString indent("\n");
    indent.append(' ', prefix.length() + 2);

    vString out(message.data(), leadLength);
    out.append(prefix);
    out.append(": ");
    for (size_t i = leadLength; i < message.length(); ++i) {
        if (message(i) == '\n')
            out.append(indent);
        else
            out.append(message(i));
    }
    result = out;
}

void vApp::fLogMsg(const vString& text, int level) {
    vString line;
    fFormatLogMessageForConsole(text, level, line);
    std::ostream& out = level == 0 ? std::cout : std::cerr;
    out << line << std::endl;
}

void vApp::fClearLogMsg() {}

// ---- progress --------------------------------------------------------------------------------

void vApp::fStartProgress(vAppProgressStackDepth& mark, int count) {
    mark.aDepth = fProgressDepth();
    fStartProgress(count);
}

void vApp::fStartProgress(int count) {
    fSetStartProgress(count);
}

void vApp::fEndProgress(const vAppProgressStackDepth& mark) {
    if (mark.aDepth < 0) return;
    while (fProgressDepth() > mark.aDepth) {
        const int before = fProgressDepth();
        fEndProgress();
        if (fProgressDepth() >= before) break;  // an override that does not close a level
    }
}

void vApp::fEndProgress() {
    fSetEndProgress();
}

void vApp::fSetProgress(int) {}

bool vApp::fSetStartProgress(int count) {
    const bool outermost = aProgressTotals.empty();
    if (outermost) {
        aProgressCounter = 0;
        fSetAbort(false);
    }
    aProgressCounts.push_back(0);
    aProgressTotals.push_back(count < 0 ? 0 : count);
    return outermost;
}

void vApp::fSetEndProgress() {
    if (aProgressTotals.empty()) return;
    aProgressCounts.pop_back();
    aProgressTotals.pop_back();
}

void vApp::fStepProgress(int n) {
    if (aProgressTotals.empty()) return;
    const long long total = aProgressTotals.back();
    long long count = static_cast<long long>(aProgressCounts.back()) + n;
    if (count > total) count = total;
    if (count < 0) count = 0;
    const long long counter = aProgressCounter + (count - aProgressCounts.back());
    aProgressCounter = static_cast<int>(counter > INT_MAX ? INT_MAX : counter);
    aProgressCounts.back() = static_cast<int>(count);
    // A level of no steps is complete from the start.
    fSetProgress(total > 0 ? static_cast<int>(count * 100 / total) : 100);
}

int vApp::fProgressCount() const {
    return aProgressCounts.empty() ? 0 : aProgressCounts.back();
}

int vApp::fProgressTotal() const {
    return aProgressTotals.empty() ? 0 : aProgressTotals.back();
}

// ---- status ----------------------------------------------------------------------------------

void vApp::fStartStatus(vAppStatusStackDepth& mark, const vString& text) {
    mark.aDepth = fStatusDepth();
    fStartStatus(text);
}

void vApp::fStartStatus(const vString& text) {
    fSetStartStatus(text);
}

void vApp::fEndStatus(const vAppStatusStackDepth& mark) {
    if (mark.aDepth < 0) return;
    while (fStatusDepth() > mark.aDepth) {
        const int before = fStatusDepth();
        fEndStatus();
        if (fStatusDepth() >= before) break;  // an override that does not close a level
    }
}

void vApp::fEndStatus() {
    fSetEndStatus();
}

void vApp::fSetStartStatus(const vString& text) {
    aStatusStack.push_back(text);
}

void vApp::fSetEndStatus() {
    if (!aStatusStack.empty()) aStatusStack.pop_back();
}

const vString& vApp::fStatusText() const {
    return aStatusStack.empty() ? vString::nullString() : aStatusStack.back();
}

// ---- busy ------------------------------------------------------------------------------------

void vApp::fStartBusy() {
    fSetStartBusy();
}

void vApp::fEndBusy() {
    fSetEndBusy();
}

void vApp::fSetStartBusy() {
    ++aBusyCount;
}

void vApp::fSetEndBusy() {
    if (aBusyCount > 0) --aBusyCount;
}

void vlogF(const vString&) {}

void vlogF(const vString&, const vString&) {}
