#ifndef VFC_TEXT_VIFSTREAM_H
#define VFC_TEXT_VIFSTREAM_H

#include <fstream>
#include <iosfwd>
#include <memory>

#include "vfc/base/export.h"
#include "vfc/collections/vTypedFamily.h"
#include "vfc/core/vString.h"
#include "vfc/files/vFile.h"
#include "vfc/rw/RWCollectable.h"

class vRegExp;

/// The library's file reader: a standard input file stream opened from a vFile, in text or
/// binary mode.
///
/// The binary open can type the file from its first bytes and its name (fFileInfo().fType()
/// afterwards). On top of the stream it reads lines with any of the line ends LF, CR LF and CR,
/// cuts lines into tokens by a pattern or by a quoting tokenizer, reads INI text into a hash of
/// sections and reads bytes in bulk. As a collectable it persists nothing of the stream.
///
/// \code
/// vIfstream in;
/// vString line;
/// if (in.fOpenText(vFile("notes.txt")))
///     while (in.fGetLine(line))
///         use(line);
/// \endcode
///
/// Ownership: the stream owns its open file and its read buffer and closes the file when it is
/// destroyed; it keeps its own copy of the vFile it was opened from (fFileInfo()). A copy takes
/// the mode and the file description, never the open file. The results of the reading functions
/// are written into the caller's objects.
///
/// Failure: nothing throws. Opens return false, with the stream failed. Reads return false at
/// the end of the input or once the stream has failed (aFail() then tells, as do the standard
/// state functions); the tokenizer reports a malformed line through its error flag and message.
class VFC_API vIfstream : public std::basic_ifstream<char>, public RWCollectable {
  public:
    // Unopened.
    vIfstream();
    // Unopened, with the other's mode flag and file.
    vIfstream(const vIfstream& other);
    vIfstream& operator=(const vIfstream&) = delete;
    ~vIfstream() override;

    // Opens f for reading in text mode. False, with the stream closed and failed, when f does
    // not exist (checked before any attempt), names a directory or cannot be opened.
    bool fOpenText(const vFile& f);
    // fOpenBinary(true, f).
    bool fOpenBinary(const vFile& f);
    // Opens f for reading in binary mode. With detectType the first 1024 bytes are read, the
    // file is opened again from its start and its type is stored in fFileInfo(); false when
    // the file cannot be opened (either time) or names a directory. A file that is not regular
    // (a FIFO, a device) is never opened twice: the bytes of its first read, up to 1024, are
    // typed and then read as the start of the input, so nothing is lost. Opening a FIFO waits
    // for a writer, as any reader of one does.
    bool fOpenBinary(bool detectType, const vFile& f);
    void fClose();
    // True when the fail or bad bit is set (so also after the end of the input was read).
    bool aFail() const { return fail(); }

    // The next line without its line end; LF, CR LF and CR each end a line, and a last line
    // without a line end counts. False (line empty) at the end of the input or when the stream
    // had failed.
    //   "a\r\nb\rc\n\nd"  gives  "a", "b", "c", "", "d", then false
    bool fGetLine(vString& line);
    // The next line cut into the texts that token matches, in order; the list is emptied
    // first. False when no line was left.
    bool fGetLineTokens(vSlistvString& tokens, const vRegExp& token);
    // The next line cut at blanks, tabs and line-end characters; double quotes keep white space
    // in a token and a backslash takes the next character literally. On a malformed line error
    // becomes true and a sentence is appended to message; the tokens before the fault stay. False
    // only when no line was left.
    //   line                 tokens                  message
    //   one "two three" 4    one | two three | 4
    //   a\ b                 a b
    //   "" x                 (empty) | x
    //   "x"y                 (stops)                 Unexpected character y found after a
    //                                                quoted string.
    //   ab\                  (none)                  Last character does not exist for escape.
    bool fGetLineAndParse(vSlistvString& tokens, bool& error, vString& message);
    // Reads the rest of the file as INI text into sections: section name (brackets kept, ""
    // for the lines before any section) to a hash of key to value. A line "k=v" gives the text
    // before the first "=" and the text after the last one, untrimmed; the first value of a
    // key in a section wins; other lines are ignored.
    void fParseAsINI(vHashvStringvHvSvS& sections);
    // Up to n bytes into out (emptied first); true when out is not empty.
    bool fRead(vString& out, unsigned n);

    const vFile& fFileInfo() const { return aFileInfo; }
    // True after a binary open, false after a text open.
    const bool& fBinary() const { return aBinary; }

    RWCollectable* newSpecies() const override;
    RWCollectable* copy() const override;
    RWClassID isA() const override { return classIsA(); }
    static RWClassID classIsA();
    static const RWClassID myAtom;

  private:
    // Sets first and second to -1, then to the positions of the first two double quotes in
    // buf[0, len); true when both were found.
    static bool fLocateQuotes(const char* const buf, int len, int& first, int& second);
    // Records the mode and the file, clears the state and opens f (closing any file open
    // before); true when no state bit is set afterwards. *kind, when given, gets what f names.
    bool fOpen(const vFile& f, bool binary, vFile::KindEnum* kind = nullptr);
    // Reads the first bytes of the open file, reopens it and stores the type they give. A file
    // that is not regular is not reopened: its first bytes are typed from the buffer and read
    // from there afterwards.
    bool fDetectTypeAndReopen(bool regular);
    // Copies up to size bytes that the stream buffer holds (reading once when it holds none)
    // without consuming them; the count, 0 at the end of the input.
    size_t fPeekHead(char* head, size_t size);
    // Makes more input available after the get area ran dry; false at the end of the input
    // or on a read error, with the stream's state set as a one-character read sets it.
    bool fRefill();

    bool aBinary = false;
    vFile aFileInfo;
    std::unique_ptr<char[]> aBuffer;  // the file buffer's storage, made on the first open
};

/// Copies the rest of in to out, 1024 bytes at a time, while out is good and in has no state bit
/// set; returns out. Reading to the end leaves in failed (eof and fail); a failed write shows in
/// out's state.
VFC_API std::ostream& operator<<(std::ostream& out, vIfstream& in);

#endif  // VFC_TEXT_VIFSTREAM_H
