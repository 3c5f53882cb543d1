#ifndef VFC_RW_RWFILE_H
#define VFC_RW_RWFILE_H

#include <cstddef>
#include <cstdio>
#include <memory>

#include "vfc/base/export.h"
#include "vfc/rw/RWCString.h"

namespace vfc::rw {
class SaveTable;
struct RestoreTable;
}  // namespace vfc::rw

/// A binary file of persistent objects, read and written item by item.
///
/// Items are little-endian binary: char and bool in 8 bits, short integers in 16 bits, other
/// integers and string lengths in 32 bits, doubles as IEEE-754 in 64 bits, a string as its length
/// and the raw bytes. The object owns its C stream and closes it when destroyed; call Flush()
/// first to learn whether buffered writes reached the file. As with any C stream opened for update,
/// seek or flush between writing and reading.
///
/// Failure: a file that could not be opened is not isValid(). Every Read and Write reports success
/// by its result; after the first failure the file stays failed (good() is false until Erase()),
/// further reads and writes do nothing and reads leave their targets unchanged (a raw-bytes Read
/// may have filled part of its buffer). Reads never trust a length: a string length or collection
/// count that exceeds the bytes left in the file fails. Object readers mark malformed data with
/// setFailed().
class VFC_API RWFile {
  public:
    // Opens filename with the C library mode given ("rb", "wb+", ...). Without a mode an existing
    // file is opened for reading and writing and a missing one is created.
    explicit RWFile(const char* filename, const char* mode = nullptr);
    RWFile(const RWFile&) = delete;
    RWFile& operator=(const RWFile&) = delete;
    ~RWFile();

    const char* GetName() const { return name_.data(); }
    // Whether the file was opened.
    bool isValid() const { return fp_ != nullptr; }
    bool Exists() const { return isValid(); }
    // Opened and no operation has failed.
    bool good() const { return fp_ != nullptr && !failed_; }
    bool Error() const { return !good(); }
    void setFailed() { failed_ = true; }
    bool Eof();
    bool IsEmpty();

    bool Read(char& v);
    bool Read(bool& v);
    bool Read(short& v);
    bool Read(unsigned short& v);
    bool Read(int& v);
    bool Read(unsigned& v);
    bool Read(double& v);
    bool Read(char* p, size_t n);  // n raw bytes
    bool Write(char v);
    bool Write(bool v);
    bool Write(short v);
    bool Write(unsigned short v);
    bool Write(int v);
    bool Write(unsigned v);
    bool Write(double v);
    bool Write(const char* p, size_t n);  // n raw bytes
    // A string item: 32-bit length, then the bytes.
    bool WriteString(const char* p, size_t n);
    bool ReadString(RWCString& s);
    // A collection count, refused (with failure) when it cannot be right.
    bool ReadCount(size_t& n);

    bool Flush();
    bool SeekTo(long offset);
    bool SeekToBegin() { return SeekTo(0); }
    bool SeekToEnd();
    long CurOffset();
    // Truncates the file to nothing.
    bool Erase();

    vfc::rw::SaveTable& saveTable();
    vfc::rw::RestoreTable& restoreTable();
    // The bytes read from the file so far; the object reader's allowance (see RWvistream)
    // grows with it.
    unsigned long long BytesRead() const { return bytesRead_; }

  private:
    bool readBytes(void* p, size_t n);
    bool writeBytes(const void* p, size_t n);
    // Bytes between the current position and the end of the file.
    long remaining();

    RWCString name_;
    std::FILE* fp_ = nullptr;
    bool failed_ = false;
    unsigned long long bytesRead_ = 0;
    std::unique_ptr<vfc::rw::SaveTable> save_;
    std::unique_ptr<vfc::rw::RestoreTable> restore_;
};

#endif  // VFC_RW_RWFILE_H
