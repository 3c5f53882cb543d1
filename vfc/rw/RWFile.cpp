#include "vfc/rw/RWFile.h"

#include <cstdint>
#include <cstring>

#include "vfc/rw/RWvistream.h"
#include "vfc/rw/internal/StoreTable.h"

namespace {

template <class U>
void storeLE(unsigned char* out, U v) {
    for (size_t i = 0; i < sizeof(U); ++i) out[i] = static_cast<unsigned char>(v >> (8 * i));
}

template <class U>
U loadLE(const unsigned char* in) {
    U v = 0;
    for (size_t i = 0; i < sizeof(U); ++i) v |= static_cast<U>(static_cast<U>(in[i]) << (8 * i));
    return v;
}

}  // namespace

RWFile::RWFile(const char* filename, const char* mode) : name_(filename) {
    if (!filename) return;
    if (mode) {
        fp_ = std::fopen(filename, mode);
    } else {
        fp_ = std::fopen(filename, "rb+");
        if (!fp_) fp_ = std::fopen(filename, "wb+");
    }
}

RWFile::~RWFile() {
    if (fp_) std::fclose(fp_);
}

bool RWFile::readBytes(void* p, size_t n) {
    if (!good()) return false;
    if (n && std::fread(p, 1, n, fp_) != n) {
        failed_ = true;
        return false;
    }
    bytesRead_ += n;
    return true;
}

bool RWFile::writeBytes(const void* p, size_t n) {
    if (!good()) return false;
    if (n && std::fwrite(p, 1, n, fp_) != n) {
        failed_ = true;
        return false;
    }
    return true;
}

bool RWFile::Eof() {
    if (!fp_) return true;
    int c = std::fgetc(fp_);
    if (c == EOF) return true;
    std::ungetc(c, fp_);
    return false;
}

bool RWFile::IsEmpty() {
    if (!fp_) return true;
    long here = std::ftell(fp_);
    if (std::fseek(fp_, 0, SEEK_END) != 0) return true;
    long end = std::ftell(fp_);
    std::fseek(fp_, here, SEEK_SET);
    return end <= 0;
}

long RWFile::remaining() {
    long here = std::ftell(fp_);
    if (here < 0 || std::fseek(fp_, 0, SEEK_END) != 0) return -1;
    long end = std::ftell(fp_);
    if (std::fseek(fp_, here, SEEK_SET) != 0) return -1;
    return end - here;
}

bool RWFile::Read(char& v) {
    return readBytes(&v, 1);
}

bool RWFile::Read(bool& v) {
    unsigned char b;
    if (!readBytes(&b, 1)) return false;
    if (b > 1) {
        failed_ = true;
        return false;
    }
    v = b != 0;
    return true;
}

bool RWFile::Read(short& v) {
    unsigned short u;
    if (!Read(u)) return false;
    v = static_cast<short>(u);
    return true;
}

bool RWFile::Read(unsigned short& v) {
    unsigned char b[2];
    if (!readBytes(b, 2)) return false;
    v = loadLE<uint16_t>(b);
    return true;
}

bool RWFile::Read(int& v) {
    unsigned u;
    if (!Read(u)) return false;
    v = static_cast<int>(u);
    return true;
}

bool RWFile::Read(unsigned& v) {
    unsigned char b[4];
    if (!readBytes(b, 4)) return false;
    v = loadLE<uint32_t>(b);
    return true;
}

bool RWFile::Read(double& v) {
    unsigned char b[8];
    if (!readBytes(b, 8)) return false;
    uint64_t bits = loadLE<uint64_t>(b);
    std::memcpy(&v, &bits, sizeof v);
    return true;
}

bool RWFile::Read(char* p, size_t n) {
    return readBytes(p, n);
}

bool RWFile::Write(char v) {
    return writeBytes(&v, 1);
}

bool RWFile::Write(bool v) {
    unsigned char b = v ? 1 : 0;
    return writeBytes(&b, 1);
}

bool RWFile::Write(short v) {
    return Write(static_cast<unsigned short>(v));
}

bool RWFile::Write(unsigned short v) {
    unsigned char b[2];
    storeLE<uint16_t>(b, v);
    return writeBytes(b, 2);
}

bool RWFile::Write(int v) {
    return Write(static_cast<unsigned>(v));
}

bool RWFile::Write(unsigned v) {
    unsigned char b[4];
    storeLE<uint32_t>(b, v);
    return writeBytes(b, 4);
}

bool RWFile::Write(double v) {
    uint64_t bits;
    std::memcpy(&bits, &v, sizeof bits);
    unsigned char b[8];
    storeLE<uint64_t>(b, bits);
    return writeBytes(b, 8);
}

bool RWFile::Write(const char* p, size_t n) {
    return writeBytes(p, n);
}

bool RWFile::WriteString(const char* p, size_t n) {
    if (n > 0xFFFFFFFFu) {
        failed_ = true;
        return false;
    }
    return Write(static_cast<unsigned>(n)) && writeBytes(p, n);
}

bool RWFile::ReadString(RWCString& s) {
    unsigned n;
    if (!Read(n)) return false;
    long left = remaining();
    if (left < 0 || n > static_cast<unsigned long>(left)) {
        failed_ = true;
        return false;
    }
    RWCString text;
    bool ok = true;
    text.resizeAndOverwrite(n, [&](char* p, size_t cap) {
        ok = readBytes(p, cap);
        return ok ? cap : 0;
    });
    if (!ok) return false;
    s = std::move(text);
    return true;
}

bool RWFile::ReadCount(size_t& n) {
    unsigned count;
    if (!Read(count)) return false;
    // Every element takes at least one byte, so a count beyond what is left cannot be right.
    long left = remaining();
    if (count > RWvistream::kMaxCount || left < 0 || count > static_cast<unsigned long>(left)) {
        failed_ = true;
        return false;
    }
    n = count;
    return true;
}

bool RWFile::Flush() {
    if (!good()) return false;
    if (std::fflush(fp_) != 0) failed_ = true;
    return good();
}

bool RWFile::SeekTo(long offset) {
    if (!fp_ || std::fseek(fp_, offset, SEEK_SET) != 0) return false;
    std::clearerr(fp_);
    return true;
}

bool RWFile::SeekToEnd() {
    return fp_ && std::fseek(fp_, 0, SEEK_END) == 0;
}

long RWFile::CurOffset() {
    return fp_ ? std::ftell(fp_) : -1;
}

bool RWFile::Erase() {
    if (!fp_) return false;
    std::FILE* fresh = std::freopen(name_.data(), "wb+", fp_);
    if (!fresh) {
        fp_ = nullptr;
        return false;
    }
    fp_ = fresh;
    failed_ = false;
    return true;
}

vfc::rw::SaveTable& RWFile::saveTable() {
    if (!save_) save_ = std::make_unique<vfc::rw::SaveTable>();
    return *save_;
}

vfc::rw::RestoreTable& RWFile::restoreTable() {
    if (!restore_) restore_ = std::make_unique<vfc::rw::RestoreTable>();
    return *restore_;
}
