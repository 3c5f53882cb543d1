#include "vfc/app/vOutputStack.h"

#include <gtest/gtest.h>

#include <iostream>
#include <string>

#include "vfc/app/vApp.h"
#include "vfc/app/vOutputAppend.h"
#include "vfc/app/vpDebug.h"
#include "vfc/testing/ScopedEnv.h"
#include "vfc/testing/TempDir.h"

namespace {

using vfc::testing::ScopedEnv;
using vfc::testing::TempDir;

std::string str(const vString& s) {
    return std::string(s.data(), s.length());
}

TEST(vOutputStack, RedirectsTheLogIntoStringsAndFilesNested) {
    vApp app("F", "N", "1.0");
    vString outer("kept:"), inner, errors;
    {
        vOutputStack a(outer);
        ASSERT_TRUE(a.fOK());
        app.fLogMsg("one", 0);
        {
            vOutputStack b(inner, true);
            app.fLogMsg("two", 0);
            app.fLogMsg("bad", 2);  // errors too
        }
        app.fLogMsg("three", 0);
        {
            vOutputStack c(errors);  // standard output only
            testing::internal::CaptureStderr();
            app.fLogMsg("to stderr", 1);
            EXPECT_EQ(testing::internal::GetCapturedStderr(), "WARNING: to stderr\n");
        }
        EXPECT_TRUE(a.fClose());
        app.fLogMsg("four", 0);  // after fClose: the console again
        EXPECT_FALSE(a.fClose());
    }
    EXPECT_EQ(str(outer), "kept:one\nthree\n");
    EXPECT_EQ(str(inner), "two\nERROR: bad\n");
    EXPECT_EQ(str(errors), "");
}

TEST(vOutputStack, FilesAreTruncatedOrAppended) {
    TempDir dir;
    const std::string path = dir.write("log.txt", "old\n");
    {
        vOutputAppend log(vFile(path.c_str()), true);
        ASSERT_TRUE(log.fOK());
        std::cout << "a\n";
        std::cerr << "b\n";
    }
    EXPECT_EQ(TempDir::read(path), "old\na\nb\n");
    {
        vOutputStack fresh(vFile(path.c_str()));
        std::cout << "new\n";
        EXPECT_TRUE(fresh.fClose());
    }
    EXPECT_EQ(TempDir::read(path), "new\n");
    vOutputStack missing(vFile(dir.file("no/such/dir/x").c_str()));
    EXPECT_FALSE(missing.fOK());
    testing::internal::CaptureStdout();
    std::cout << "console";
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "console");  // nothing redirected
}

TEST(vpDebug, OffUnlessTheVariableSaysWhere) {
    ScopedEnv var("VFC_DEBUG", nullptr);
    vpDebug::sfReset();
    EXPECT_FALSE(vpDebug::sfOn());
    vString errors;
    {
        vOutputStack capture(errors, true);
        vpDebug::sfPrint("hidden");
        var.set("0");
        vpDebug::sfReset();
        vpDebug::sfPrint("hidden too");
        var.set("stderr");
        vpDebug::sfPrint("still off: the variable is read once");
        vpDebug::sfReset();
        EXPECT_TRUE(vpDebug::sfOn());
        vpDebug::sfPrint("shown");
    }
    EXPECT_EQ(str(errors), "shown\n");

    TempDir dir;
    const std::string path = dir.write("debug.log", "before\n");
    var.set(path.c_str());
    vpDebug::sfReset();
    vpDebug::sfPrint("line 1");
    EXPECT_EQ(TempDir::read(path), "before\nline 1\n");  // flushed at once
    var.set(dir.file("no/such/dir/debug.log").c_str());
    vpDebug::sfReset();
    EXPECT_FALSE(vpDebug::sfOn());
    var.set(nullptr);
    vpDebug::sfReset();
}

}  // namespace
