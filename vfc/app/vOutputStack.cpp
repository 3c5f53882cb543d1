#include "vfc/app/vOutputStack.h"

#include <fstream>
#include <iostream>
#include <streambuf>

#include "vfc/app/vOutputAppend.h"
#include "vfc/text/vOfstream.h"

// Where the output goes: a string (through a small buffer that appends) or a file stream.
struct vOutputStack::Target {
    // Appends every character written to the string it was given.
    class StringBuffer : public std::streambuf {
      public:
        explicit StringBuffer(vString& text) : aText(text) {}

      protected:
        int_type overflow(int_type c) override {
            if (traits_type::eq_int_type(c, traits_type::eof())) return traits_type::not_eof(c);
            aText.append(traits_type::to_char_type(c));
            return c;
        }
        std::streamsize xsputn(const char* s, std::streamsize n) override {
            aText.append(s, static_cast<size_t>(n));
            return n;
        }

      private:
        vString& aText;
    };

    explicit Target(vString& text) : aString(new StringBuffer(text)) {}
    Target() = default;

    std::streambuf* buffer() {
        if (aString) return aString.get();
        return aFile.rdbuf();
    }

    std::unique_ptr<StringBuffer> aString;
    vOfstream aFile;
};

vOutputStack::vOutputStack(vString& text, bool errorsToo) : aTarget(new Target(text)) {
    fRedirect(errorsToo);
}

vOutputStack::vOutputStack(const vFile& file, bool errorsToo)
    : vOutputStack(file, errorsToo, false) {}

vOutputStack::vOutputStack(const vFile& file, bool errorsToo, bool append) : aTarget(new Target) {
    // Binary, so that the bytes written are the bytes in the file on every platform.
    if (!(append ? aTarget->aFile.fOpenBinaryAppend(file) : aTarget->aFile.fOpenBinary(file)))
        return;
    fRedirect(errorsToo);
}

void vOutputStack::fRedirect(bool errorsToo) {
    std::cout.flush();
    aOldOut = std::cout.rdbuf(aTarget->buffer());
    if (errorsToo) {
        std::cerr.flush();
        aOldErr = std::cerr.rdbuf(aTarget->buffer());
    }
    aOK = true;
}

vOutputStack::~vOutputStack() {
    fClose();
}

bool vOutputStack::fClose() {
    if (!aOK) return false;
    aOK = false;
    std::cout.flush();
    std::cout.rdbuf(aOldOut);
    if (aOldErr) {
        std::cerr.flush();
        std::cerr.rdbuf(aOldErr);
    }
    const bool written = std::cout.good() && (!aOldErr || std::cerr.good());
    std::cout.clear();
    std::cerr.clear();
    return aTarget->aString ? written : aTarget->aFile.fClose() && written;
}

vOutputAppend::vOutputAppend(const vFile& file, bool errorsToo)
    : vOutputStack(file, errorsToo, true) {}

vOutputAppend::~vOutputAppend() = default;
