#ifndef VFC_CORE_VVOID_H
#define VFC_CORE_VVOID_H

#include "vfc/base/export.h"
#include "vfc/rw/RWCollectable.h"

/// An untyped pointer that is a collectable value, for keeping references to objects of any kind in
/// the library's collections.
///
/// The pointer is not owned: destroying or copying a vVoid leaves the object pointed to alone, and
/// the caller keeps it alive for as long as the pointer is used. Order, hash and equality follow
/// the address; nothing but the class identifier is persisted, so a vVoid made by reading a stream
/// holds null. Nothing here can fail.
class VFC_API vVoid : public RWCollectable {
  public:
    vVoid() = default;
    vVoid(const void* p) : aValue_(const_cast<void*>(p)) {}
    vVoid(const vVoid& other) = default;
    ~vVoid() override;

    vVoid& operator=(const vVoid& other);

    void*& aValue() { return aValue_; }
    void* const& aValue() const { return aValue_; }

    // compareTo is -1 for an object of another class (or null), else -1, 0 or 1 by the two
    // addresses taken as unsigned numbers; isEqual is compareTo() == 0; hash is the address
    // folded to 32 bits.
    RWCollectable* newSpecies() const override;
    RWCollectable* copy() const override;
    RWClassID isA() const override { return classIsA(); }
    int compareTo(const RWCollectable* other) const override;
    unsigned hash() const override;
    bool isEqual(const RWCollectable* other) const override;
    static RWClassID classIsA();
    static const RWClassID myAtom;

  private:
    void* aValue_ = nullptr;
};

#endif  // VFC_CORE_VVOID_H
