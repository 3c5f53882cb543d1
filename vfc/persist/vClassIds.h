#ifndef VFC_PERSIST_VCLASSIDS_H
#define VFC_PERSIST_VCLASSIDS_H

#include "vfc/rw/RWClassID.h"

/// \file
/// The class identifiers of the library, in one table.
///
/// Persistent streams record the identifier before every object, so the numbers are part of the
/// file format and never change. Ranges: 0x100 values and files, 0x200 generic collections,
/// 0x220 typed collections, 0x300 stream-like classes. The numbers missing from the table (258,
/// 260-262, 271, 276-290, 558, 574-576, 600-607) are unassigned on purpose and stay so; classes
/// added later take the next free number after the last of their range (vSFile 0x124,
/// vSFileDict 0x262).

/// The table itself: VFC_CLASS_ID_TABLE(X) expands X(class, identifier) once per class, in
/// ascending order of identifier. Use it to generate code for every class, e.g. registration
/// checks; X must be a macro taking two arguments.
#define VFC_CLASS_ID_TABLE(X)                \
    X(vDate, 0x100)                          \
    X(vFile, 0x101)                          \
    X(vInt, 0x103)                           \
    X(vString, 0x107)                        \
    X(vTime, 0x108)                          \
    X(vVoid, 0x109)                          \
    X(vpFileRefCmpnts, 0x10A)                \
    X(vProductKey, 0x10B)                    \
    X(vPathComponent, 0x10C)                 \
    X(vPathComponentList, 0x10D)             \
    X(vPath, 0x10E)                          \
    X(vMatchList, 0x110)                     \
    X(vDirHierFilter, 0x111)                 \
    X(vFloat, 0x112)                         \
    X(vIntString, 0x113)                     \
    X(vLibrary, 0x123)                       \
    X(vSFile, 0x124)                         \
    X(vHash, 0x200)                          \
    X(vPair, 0x201)                          \
    X(vSet, 0x202)                           \
    X(vSlist, 0x203)                         \
    X(vTable, 0x204)                         \
    X(vVector, 0x205)                        \
    X(vSlistvString, 0x220)                  \
    X(vHashvIntvInt, 0x221)                  \
    X(vHashvIntRWCollectable, 0x222)         \
    X(vTablevString, 0x223)                  \
    X(vSetvString, 0x224)                    \
    X(vVectorvString, 0x225)                 \
    X(vHashvStringvString, 0x226)            \
    X(vHashvIntvFile, 0x227)                 \
    X(vHashvStringvInt, 0x228)               \
    X(vHashvStringvHvIvI, 0x229)             \
    X(vSlistvInt, 0x22A)                     \
    X(vHashvStringvFile, 0x22B)              \
    X(vHashvIntvString, 0x22C)               \
    X(vSlistvFile, 0x22D)                    \
    X(vSetvFile, 0x22F)                      \
    X(vVectorvFile, 0x230)                   \
    X(vHashvStringvSlvString, 0x231)         \
    X(vHashvStringvSetvString, 0x232)        \
    X(vHashvStringvHvSvS, 0x233)             \
    X(vHashvStringvHvSvSlvS, 0x234)          \
    X(vHashvStringvHvSvFile, 0x235)          \
    X(vHashvStringRWCollectable, 0x236)      \
    X(vHashvStringvRegExp, 0x237)            \
    X(vVectorvPair, 0x238)                   \
    X(vHashvIntvVectorvPair, 0x239)          \
    X(vVectorvInt, 0x23A)                    \
    X(vSetvInt, 0x23B)                       \
    X(vSlistvPath, 0x23C)                    \
    X(vHashvStringvSlvPath, 0x23D)           \
    X(vHashvIntvHvSvS, 0x241)                \
    X(vSlistvLibrary, 0x242)                 \
    X(vHashvIntvFloat, 0x243)                \
    X(vSlistvFloat, 0x244)                   \
    X(vHashvFilevString, 0x245)              \
    X(vHashvIntvSetvString, 0x246)           \
    X(vHashvIntvSetvInt, 0x247)              \
    X(vHashvFilevInt, 0x248)                 \
    X(vHashvIntvHvSvI, 0x249)                \
    X(vSlistvHvSvS, 0x24A)                   \
    X(vHashvStringvSetvInt, 0x24B)           \
    X(vSlistvSetvInt, 0x24C)                 \
    X(vHashvSvSlvHvSvS, 0x24D)               \
    X(vHashvSvHvSvSlvHvSvS, 0x24E)           \
    X(vSlistvSlvS, 0x24F)                    \
    X(vHashvIvHvIvString, 0x250)             \
    X(vSlistvIntString, 0x251)               \
    X(vSlistvVectorvFile, 0x252)             \
    X(vHashvIntvSlistvString, 0x253)         \
    X(vHashvIntvSlistvInt, 0x254)            \
    X(vHashvFilevSetvInt, 0x255)             \
    X(vSlistvVoid, 0x256)                    \
    X(vHashvFilevSlvString, 0x257)           \
    X(vpSlistvpFRefCs, 0x260)                \
    X(vHashvStringvPathComponentList, 0x261) \
    X(vSFileDict, 0x262)                     \
    X(vIfstream, 0x301)                      \
    X(vOfstream, 0x302)                      \
    X(vPstream, 0x303)                       \
    X(vSString, 0x308)                       \
    X(vVBuffer, 0x309)                       \
    X(vRegExp, 0x30A)

/// One constant per table entry: vClassID::vString is the identifier of vString, and so on.
/// These are what RW_DEFINE_COLLECTABLE and the factory take; compare them with isA(). A few
/// entries reserve the identifier of a class the library does not provide; the factory makes
/// nothing (null) for those.
namespace vClassID {
#define VFC_CLASS_ID_CONSTANT(name, id) constexpr RWClassID name = id;
VFC_CLASS_ID_TABLE(VFC_CLASS_ID_CONSTANT)
#undef VFC_CLASS_ID_CONSTANT
}  // namespace vClassID

#endif  // VFC_PERSIST_VCLASSIDS_H
