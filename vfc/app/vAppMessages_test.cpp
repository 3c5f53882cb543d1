#include <gtest/gtest.h>

#include <iostream>
#include <sstream>
#include <string>
#include <vector>

#include "vfc/app/vApp.h"

namespace {

std::string text(const vString& s) {
    return std::string(s.data(), s.length());
}

// Sends std::cout and std::cerr into strings while it lives.
struct CaptureConsole {
    std::ostringstream out, err;
    std::streambuf* oldOut = std::cout.rdbuf(out.rdbuf());
    std::streambuf* oldErr = std::cerr.rdbuf(err.rdbuf());
    ~CaptureConsole() {
        std::cout.rdbuf(oldOut);
        std::cerr.rdbuf(oldErr);
    }
};

// Installs a catalogue for one scope and puts the previous one back. Constructing a vApp names
// the library's catalogue, so tests install theirs after the application.
struct UseCatalogue {
    vpMessageCatalog old = vApp::fGetHINSTANCE();
    explicit UseCatalogue(vpMessageCatalog c) { vApp::fSetHINSTANCE(c); }
    ~UseCatalogue() { vApp::fSetHINSTANCE(old); }
};

const char* testMessages(unsigned id) {
    static const std::string kLong(5000, 'x');
    switch (id) {
        case 1:
            return "%s-%s-%s-%s-%s-%s-%s";
        case 2:
            return "a%sb";
        case 3:
            return "%%s|%s|%";
        case 4:
            return "[%s]";
        case 5:
            return kLong.c_str();
        case 6050:
            return "W";
        default:
            return nullptr;
    }
}

// Records the progress shown and counts the one-level ends the marks go through.
class RecordingApp : public vApp {
  public:
    RecordingApp() : vApp("F", "N", "1.0") {}
    using vApp::fEndProgress;
    using vApp::fEndStatus;
    void fSetProgress(int value) override { aShown.push_back(value); }
    void fEndProgress() override {
        ++aEnds;
        vApp::fEndProgress();
    }
    void fEndStatus() override {
        ++aEnds;
        vApp::fEndStatus();
    }
    std::vector<int> aShown;
    int aEnds = 0;
};

TEST(vAppMessages, GenMessageFillsSixSlotsInOrder) {
    EXPECT_EQ(vApp::fGetHINSTANCE(), &vpcLibraryMessages);
    vApp app("F", "N", "1.0");
    EXPECT_EQ(text(app.fGenMessage(6002, "run x")),
              "The application was unable to execute the command\nrun x\nbecause there were too "
              "many processes already running.");
    EXPECT_EQ(text(app.fLoadString(6004)), "");

    UseCatalogue use(&testMessages);
    EXPECT_EQ(text(app.fGenMessage(1, "1", "2", "3", "4", "5", "6")), "1-2-3-4-5-6-");
    EXPECT_EQ(text(app.fGenMessage(2, "X", "Y")), "aXb");
    // No escape for "%"; a parameter holding "%s" is not searched again.
    EXPECT_EQ(text(app.fGenMessage(3, "A", "B")), "%A|B|%");
    EXPECT_EQ(text(app.fGenMessage(2, "%s", "Q")), "a%sb");
    // The message buffer itself may come back in as a parameter.
    EXPECT_EQ(text(app.fGenMessage(4, app.fLoadString(2))), "[a%sb]");
    // At most what a 4096-byte buffer holds.
    EXPECT_EQ(text(app.fGenMessage(5)), std::string(4095, 'x'));
    EXPECT_EQ(text(app.fGenMessage(99, "p")), "");
}

TEST(vAppMessages, LogMsgRoutesAndLaysOutByLevel) {
    vApp app("F", "N", "1.0");
    CaptureConsole console;
    app.fLogMsg("plain\r\ntext", 0);
    app.fLogMsg("first\nsecond", 1);
    app.fLogMsg("a\r\nb", 2);
    app.fLogMsg("\n\nfailed", 7);
    app.fLogMsg("\r\nx\n\ny", -12);
    EXPECT_EQ(console.out.str(), "plain\ntext\n");
    const std::string pad13(13, ' ');
    EXPECT_EQ(console.err.str(),
              "WARNING: first\n         second\n"
              "ERROR: a\n       b\n"
              "\n\nCODE == 7: failed\n"
              "\nCODE == -12: x\n" +
                  pad13 + "\n" + pad13 + "y\n");
    console.err.str("");
    {
        UseCatalogue use(&testMessages);  // "W" for warnings, no text for errors
        app.fLogMsg("x\ny", 1);
        app.fLogMsg("e", 2);
    }
    {
        UseCatalogue use(nullptr);
        app.fLogMsg("a\nb", 1);
        app.fLogMsg("d", 3);
    }
    EXPECT_EQ(console.err.str(), "W: x\n   y\n: e\n: a\n  b\nCODE == 3: d\n");
    EXPECT_EQ(vApp::fGetHINSTANCE(), &vpcLibraryMessages);
}

TEST(vAppMessages, ProgressLevelsStepMarkAndClearAbort) {
    RecordingApp app;
    app.fStepProgress();  // nothing open: nothing shown
    app.fSetAbort(true);
    app.fStartProgress(4);
    EXPECT_FALSE(app.fAbort());
    app.fStepProgress();
    app.fStepProgress(2);
    app.fStepProgress(10);  // not past the total
    app.fStepProgress(-9);  // nor below zero
    EXPECT_EQ(app.aShown, (std::vector<int>{25, 75, 100, 0}));

    app.fSetAbort(true);
    vAppProgressStackDepth mark;
    app.fStartProgress(mark, -3);  // inner: the abort request stands; negative total is 0
    EXPECT_TRUE(app.fAbort());
    EXPECT_EQ(mark.aDepth, 1);
    EXPECT_EQ(app.fProgressTotal(), 0);
    app.fStartProgress(2);
    app.fStartProgress(1);
    EXPECT_EQ(app.fProgressDepth(), 4);

    vAppProgressStackDepth unstarted;  // a negative depth ends nothing
    app.fEndProgress(unstarted);
    EXPECT_EQ(app.aEnds, 0);
    app.fEndProgress(mark);  // through the overridable end, once per inner level
    EXPECT_EQ(app.aEnds, 3);
    EXPECT_EQ(app.fProgressDepth(), 1);
    EXPECT_EQ(app.fProgressTotal(), 4);
    app.fEndProgress(mark);
    EXPECT_EQ(app.aEnds, 3);
    app.fEndProgress();
    app.fEndProgress();  // one too many: harmless
    EXPECT_FALSE(app.fHasProgress());
    EXPECT_EQ(app.fProgressCount(), 0);
}

TEST(vAppMessages, StatusStackAndBusyCounter) {
    RecordingApp app;
    app.fStartStatus("outer");
    vAppStatusStackDepth mark;
    app.fStartStatus(mark, "middle");
    app.fStartStatus("inner");
    EXPECT_EQ(text(app.fStatusText()), "inner");
    app.fEndStatus(vAppStatusStackDepth());
    EXPECT_EQ(app.fStatusDepth(), 3);
    app.fEndStatus(mark);
    EXPECT_EQ(app.aEnds, 2);
    EXPECT_EQ(text(app.fStatusText()), "outer");
    app.fEndStatus();
    app.fEndStatus();
    EXPECT_EQ(text(app.fStatusText()), "");

    app.fStartBusy();
    app.fStartBusy();
    app.fEndBusy();
    app.fEndBusy();
    app.fEndBusy();  // never below zero
    app.fStartBusy();
    EXPECT_EQ(app.fBusyCount(), 1);
}

}  // namespace
