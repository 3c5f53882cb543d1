// vIntString: an identifier with a name. A collectable for storage in collections only: it
// compares, hashes and tests equality by object identity, and persists nothing but its class
// identifier.
#ifndef VFC_CORE_VINTSTRING_H
#define VFC_CORE_VINTSTRING_H

#include "vfc/base/export.h"
#include "vfc/core/vInt.h"
#include "vfc/core/vString.h"
#include "vfc/rw/RWCollectable.h"

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
