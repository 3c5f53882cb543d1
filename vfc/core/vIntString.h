#ifndef VFC_CORE_VINTSTRING_H
#define VFC_CORE_VINTSTRING_H

#include "vfc/base/export.h"
#include "vfc/core/vInt.h"
#include "vfc/core/vString.h"
#include "vfc/rw/RWCollectable.h"

/// An identifier with a name: a vInt and a vString held together.
///
/// A collectable for storage in collections only: it compares, hashes and tests equality by object
/// identity, and persists nothing but its class identifier. It owns its identifier and name by
/// value; copies are independent, and fID() and fName() return references into the object, valid
/// while it lives. Nothing here can fail.
class VFC_API vIntString : public RWCollectable {
  public:
    vIntString() = default;
    vIntString(const vInt& id, const vString& name) : aID(id), aName(name) {}
    vIntString(const vIntString& other) = default;
    ~vIntString() override;

    vIntString& operator=(const vIntString& other);

    vInt& fID() { return aID; }
    const vInt& fID() const { return aID; }
    vString& fName() { return aName; }
    const vString& fName() const { return aName; }
    void fSetID(const vInt& id) { aID = id; }
    void fSetName(const vString& name) { aName = name; }

    RWCollectable* newSpecies() const override;
    RWCollectable* copy() const override;
    RWClassID isA() const override { return classIsA(); }
    static RWClassID classIsA();
    static const RWClassID myAtom;

  private:
    vInt aID;
    vString aName;
};

#endif  // VFC_CORE_VINTSTRING_H
