// Content detection behind vIfstream::fOpenBinary: the file-information header of the suite's
// own persistent files, and the cascade of signatures, extension rules and the NUL test that
// types every other file. Both work on bytes already read, so they can be tested and fuzzed
// without files. Exported only for the library's tests and fuzzers; not part of vfc.h.
#ifndef VFC_FILES_INTERNAL_VPCONTENTDETECTION_H
#define VFC_FILES_INTERNAL_VPCONTENTDETECTION_H

#include <cstddef>

#include "vfc/base/export.h"
#include "vfc/core/vString.h"
#include "vfc/files/vFile.h"

// Sets first and second to -1, then to the positions of the first two double quotes in
// buf[0, len); true when both were found.
VFC_API bool vpLocateQuotes(const char* buf, int len, int& first, int& second);

// Whether bytes start with a file-information header (":263\" after white space is removed
// from the first ten bytes) that carries a type name of the suite ("vorlandix..."); typeName
// receives that name. False, with typeName untouched, for anything else, including a header
// whose quoted name is not one of the suite's (such files go through vpDetectContentType).
//
//   bytes (\n a line feed)                      result  typeName
//   ":\n263\n\\[\n16\n\"vorlandix-ndt-80\"\n\\]"   true    "vorlandix-ndt-80"
//   ":\n263\n\\[\n3\n\"abc\"\n\\]"                   false
//   ":263\\[1\"vorlandix"  (no closing quote)       false
VFC_API bool vpFindFileInfoHeader(const char* bytes, size_t n, vString& typeName);

// The type of a file from its first bytes and its extension: signatures over the first 50
// bytes, then the extension (lower-cased), then text/plain unless those 50 bytes hold a NUL.
// Never eNone or eUnknown.
//
//   first bytes            extension  type
//   "<MIFFile 9.00>"       any        eMIF
//   "<BookFile 6.0>"       any        eMakerBook
//   "GIF"                  any        eGIF
//   "plain words"          "HTML"     eHTML
//   "a\0b"                 ""         eBinary
VFC_API vFile::FileTypeEnum vpDetectContentType(const char* bytes, size_t n,
                                                const vString& extension);

#endif  // VFC_FILES_INTERNAL_VPCONTENTDETECTION_H
