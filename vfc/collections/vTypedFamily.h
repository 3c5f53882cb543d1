#ifndef VFC_COLLECTIONS_VTYPEDFAMILY_H
#define VFC_COLLECTIONS_VTYPEDFAMILY_H

#include "vfc/base/export.h"
#include "vfc/collections/vTypedHash.h"
#include "vfc/collections/vTypedList.h"
#include "vfc/collections/vTypedSet.h"
#include "vfc/collections/vTypedTable.h"
#include "vfc/collections/vTypedVector.h"
#include "vfc/core/vFloat.h"
#include "vfc/core/vInt.h"
#include "vfc/core/vIntString.h"
#include "vfc/core/vPair.h"
#include "vfc/core/vString.h"
#include "vfc/core/vVoid.h"
#include "vfc/files/vFile.h"
#include "vfc/files/vPath.h"
#include "vfc/files/vPathComponentList.h"
#include "vfc/files/vpFileRefCmpnts.h"
#include "vfc/persist/vClassIds.h"
#include "vfc/rw/RWCollectable.h"
#include "vfc/system/vLibrary.h"
#include "vfc/text/vRegExp.h"

// clang-format off
/// The typed collection family: every typed list, set, table, vector and hash that the library's
/// interfaces pass around, generated from this one list.
///
/// Each name in the list is a class of its own, generated in this header from the template of its
/// kind: vTypedList (LIST, over vSlist), vTypedSet (SET, over vSet), vTypedTable (TABLE, over
/// vTable), vTypedVector (VECTOR, over vVector) or vTypedHash (HASH, over vHash). copy() and
/// newSpecies() make that class, and isA() answers its class identifier, vClassID::name, under
/// which the factory restores it from a stream. Each also has an iterator class named after it
/// with "Iter" appended. Ownership and failure reporting are those of the kind's template. The
/// hash members are not final (vArgList is a vHashvStringvString); the others are.
///
/// Names spell nested types in short: vH is vHash, vS vString, vI vInt and vSl vSlist, so
/// vHashvStringvHvSvS is a hash from vString to vHashvStringvString. A value type of
/// RWCollectable takes any collectable value.
///
/// VFC_TYPED_FAMILY(LIST, SET, TABLE, VECTOR, HASH) calls, once per member and in the order of the
/// class identifiers (which also puts every member after the members it holds), one of
/// LIST(member, element), SET(member, element), TABLE(member, element), VECTOR(member, element)
/// or HASH(member, key, value).
///
/// \code
/// vHashvStringvString h;
/// h.fInsert("key", "value");
/// vHashvStringvStringIter it(h);
/// while (it.fAdvance())
///     use(it.aKey(), it.aValue());
/// \endcode
#define VFC_TYPED_FAMILY(LIST, SET, TABLE, VECTOR, HASH)                 \
    LIST  (vSlistvString,             vString)                           \
    HASH  (vHashvIntvInt,             vInt,    vInt)                     \
    HASH  (vHashvIntRWCollectable,    vInt,    RWCollectable)            \
    TABLE (vTablevString,             vString)                           \
    SET   (vSetvString,               vString)                           \
    VECTOR(vVectorvString,            vString)                           \
    HASH  (vHashvStringvString,       vString, vString)                  \
    HASH  (vHashvIntvFile,            vInt,    vFile)                    \
    HASH  (vHashvStringvInt,          vString, vInt)                     \
    HASH  (vHashvStringvHvIvI,        vString, vHashvIntvInt)            \
    LIST  (vSlistvInt,                vInt)                              \
    HASH  (vHashvStringvFile,         vString, vFile)                    \
    HASH  (vHashvIntvString,          vInt,    vString)                  \
    LIST  (vSlistvFile,               vFile)                             \
    SET   (vSetvFile,                 vFile)                             \
    VECTOR(vVectorvFile,              vFile)                             \
    HASH  (vHashvStringvSlvString,    vString, vSlistvString)            \
    HASH  (vHashvStringvSetvString,   vString, vSetvString)              \
    HASH  (vHashvStringvHvSvS,        vString, vHashvStringvString)      \
    HASH  (vHashvStringvHvSvSlvS,     vString, vHashvStringvSlvString)   \
    HASH  (vHashvStringvHvSvFile,     vString, vHashvStringvFile)        \
    HASH  (vHashvStringRWCollectable, vString, RWCollectable)            \
    HASH  (vHashvStringvRegExp,       vString, vRegExp)                  \
    VECTOR(vVectorvPair,              vPair)                             \
    HASH  (vHashvIntvVectorvPair,     vInt,    vVectorvPair)             \
    VECTOR(vVectorvInt,               vInt)                              \
    SET   (vSetvInt,                  vInt)                              \
    LIST  (vSlistvPath,               vPath)                             \
    HASH  (vHashvStringvSlvPath,      vString, vSlistvPath)              \
    HASH  (vHashvIntvHvSvS,           vInt,    vHashvStringvString)      \
    LIST  (vSlistvLibrary,            vLibrary)                          \
    HASH  (vHashvIntvFloat,           vInt,    vFloat)                   \
    LIST  (vSlistvFloat,              vFloat)                            \
    HASH  (vHashvFilevString,         vFile,   vString)                  \
    HASH  (vHashvIntvSetvString,      vInt,    vSetvString)              \
    HASH  (vHashvIntvSetvInt,         vInt,    vSetvInt)                 \
    HASH  (vHashvFilevInt,            vFile,   vInt)                     \
    HASH  (vHashvIntvHvSvI,           vInt,    vHashvStringvInt)         \
    LIST  (vSlistvHvSvS,              vHashvStringvString)               \
    HASH  (vHashvStringvSetvInt,      vString, vSetvInt)                 \
    LIST  (vSlistvSetvInt,            vSetvInt)                          \
    HASH  (vHashvSvSlvHvSvS,          vString, vSlistvHvSvS)             \
    HASH  (vHashvSvHvSvSlvHvSvS,      vString, vHashvSvSlvHvSvS)         \
    LIST  (vSlistvSlvS,               vSlistvString)                     \
    HASH  (vHashvIvHvIvString,        vInt,    vHashvIntvString)         \
    LIST  (vSlistvIntString,          vIntString)                        \
    LIST  (vSlistvVectorvFile,        vVectorvFile)                      \
    HASH  (vHashvIntvSlistvString,    vInt,    vSlistvString)            \
    HASH  (vHashvIntvSlistvInt,       vInt,    vSlistvInt)               \
    HASH  (vHashvFilevSetvInt,        vFile,   vSetvInt)                 \
    LIST  (vSlistvVoid,               vVoid)                             \
    HASH  (vHashvFilevSlvString,      vFile,   vSlistvString)            \
    LIST  (vpSlistvpFRefCs,           vpFileRefCmpnts)                   \
    HASH  (vHashvStringvPathComponentList, vString, vPathComponentList)
// clang-format on

// ---- generation ----------------------------------------------------------------------------
// Every member is declared first, so that the templates can be named with any member as an
// argument. Then, member by member: the explicit instantiation declarations of its templates
// (they are compiled once, in vTypedFamily.cpp, and exported from there; they come before the
// member's class so that the export applies to the first instantiation), the member's class and
// its iterator class.

#define VFC_TYPED_FORWARD_1(name, element) class name;
#define VFC_TYPED_FORWARD_2(name, key, value) class name;

#define VFC_TYPED_MEMBER_BODY(name)               \
  public:                                         \
    name() = default;                             \
    name(const name& other) = default;            \
    name& operator=(const name& other) = default; \
    ~name() override;                             \
    RWClassID isA() const override {              \
        return classIsA();                        \
    }                                             \
    static RWClassID classIsA();                  \
    static const RWClassID myAtom;

#define VFC_TYPED_ITER_CLASS(name, base)                                  \
    class VFC_API name##Iter final : public base {                        \
      public:                                                             \
        explicit name##Iter(const name& collection) : base(collection) {} \
    };

#define VFC_TYPED_COMMA ,

#define VFC_TYPED_LIST(name, element)                                             \
    VFC_EXTERN_TEMPLATE(vTypedList<name, element, vClassID::name>)                \
    VFC_EXTERN_TEMPLATE(vTypedListIterator<name, element>)                        \
    class VFC_API name final : public vTypedList<name, element, vClassID::name> { \
        VFC_TYPED_MEMBER_BODY(name)                                               \
    };                                                                            \
    VFC_TYPED_ITER_CLASS(name, vTypedListIterator<name VFC_TYPED_COMMA element>)

#define VFC_TYPED_HASHED(name, element, coll)                                               \
    VFC_EXTERN_TEMPLATE(vpTypedHashed<name, element, vClassID::name, coll, coll##Iterator>) \
    VFC_EXTERN_TEMPLATE(vpTypedHashedIterator<name, element, coll##Iterator>)               \
    class VFC_API name final                                                                \
        : public vpTypedHashed<name, element, vClassID::name, coll, coll##Iterator> {       \
        VFC_TYPED_MEMBER_BODY(name)                                                         \
    };                                                                                      \
    VFC_TYPED_ITER_CLASS(                                                                   \
        name, vpTypedHashedIterator<name VFC_TYPED_COMMA element VFC_TYPED_COMMA coll##Iterator>)

#define VFC_TYPED_SET(name, element) VFC_TYPED_HASHED(name, element, vSet)
#define VFC_TYPED_TABLE(name, element) VFC_TYPED_HASHED(name, element, vTable)

#define VFC_TYPED_VECTOR(name, element)                                             \
    VFC_EXTERN_TEMPLATE(vTypedVector<name, element, vClassID::name>)                \
    VFC_EXTERN_TEMPLATE(vTypedVectorIterator<name, element>)                        \
    class VFC_API name final : public vTypedVector<name, element, vClassID::name> { \
        VFC_TYPED_MEMBER_BODY(name)                                                 \
    };                                                                              \
    VFC_TYPED_ITER_CLASS(name, vTypedVectorIterator<name VFC_TYPED_COMMA element>)

#define VFC_TYPED_HASH(name, key, value)                                       \
    VFC_EXTERN_TEMPLATE(vTypedHash<name, key, value, vClassID::name>)          \
    VFC_EXTERN_TEMPLATE(vTypedHashIterator<name, key, value>)                  \
    class VFC_API name : public vTypedHash<name, key, value, vClassID::name> { \
        VFC_TYPED_MEMBER_BODY(name)                                            \
    };                                                                         \
    VFC_TYPED_ITER_CLASS(name, vTypedHashIterator<name VFC_TYPED_COMMA key VFC_TYPED_COMMA value>)

VFC_TYPED_FAMILY(VFC_TYPED_FORWARD_1, VFC_TYPED_FORWARD_1, VFC_TYPED_FORWARD_1, VFC_TYPED_FORWARD_1,
                 VFC_TYPED_FORWARD_2)
VFC_TYPED_FAMILY(VFC_TYPED_LIST, VFC_TYPED_SET, VFC_TYPED_TABLE, VFC_TYPED_VECTOR, VFC_TYPED_HASH)

#undef VFC_TYPED_FORWARD_1
#undef VFC_TYPED_FORWARD_2
#undef VFC_TYPED_MEMBER_BODY
#undef VFC_TYPED_ITER_CLASS
#undef VFC_TYPED_COMMA
#undef VFC_TYPED_HASHED
#undef VFC_TYPED_LIST
#undef VFC_TYPED_SET
#undef VFC_TYPED_TABLE
#undef VFC_TYPED_VECTOR
#undef VFC_TYPED_HASH

#endif  // VFC_COLLECTIONS_VTYPEDFAMILY_H
