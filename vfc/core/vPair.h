#ifndef VFC_CORE_VPAIR_H
#define VFC_CORE_VPAIR_H

#include "vfc/base/export.h"
#include "vfc/collections/vSlist.h"
#include "vfc/rw/RWCollectable.h"

/// An ordered pair of collectables, owned by the pair.
///
/// Order and equality are by first member, then second; the hash is the first member's. The members
/// sit in a vSlist at positions 0 and 1.
///
/// Ownership: the two-pointer constructor takes both objects over, and the pair destroys its
/// members with itself, on assignment and on restoring. Copies (copy constructor, assignment,
/// copy()) hold copies of the members, so they are independent. first() and second() lend the
/// members: the pointers stay valid until the pair is destroyed, assigned to or restored.
///
/// Failure: a member may be missing (a default pair, a null given to the constructor, a badly
/// restored pair); first() or second() then answer null, so check them. Restoring a damaged stream
/// fails the stream and may leave the pair empty or incomplete.
class VFC_API vPair : public RWCollectable {
  public:
    // No members: first() and second() are null.
    vPair() = default;
    // Takes first and second over; the pair destroys them.
    vPair(RWCollectable* first, RWCollectable* second);
    // Holds copies of other's members.
    vPair(const vPair& other);
    ~vPair() override;

    // Destroys the own members and holds copies of other's; nothing happens when other is this.
    vPair& operator=(const vPair& other);

    // The members; null when the pair has none (a default or badly restored pair).
    const RWCollectable* first() const { return aMembers.at(0); }
    const RWCollectable* second() const { return aMembers.at(1); }

    // compareTo is -1 for an object of another class (so it is not antisymmetric across classes),
    // else the first members' compareTo and, when that is 0, the second members'; isEqual needs
    // the same class and equal members; hash is the first member's.
    RWCollectable* newSpecies() const override;
    RWCollectable* copy() const override;
    RWClassID isA() const override { return classIsA(); }
    int compareTo(const RWCollectable* other) const override;
    unsigned hash() const override;
    bool isEqual(const RWCollectable* other) const override;
    // Persisted as the member list, written as one object (its class identifier, then the list).
    void restoreGuts(RWvistream& s) override;
    void restoreGuts(RWFile& f) override;
    void saveGuts(RWvostream& s) const override;
    void saveGuts(RWFile& f) const override;
    static RWClassID classIsA();
    static const RWClassID myAtom;

  private:
    void fCopyMembers(const vPair& other);

    vSlist aMembers;
};

#endif  // VFC_CORE_VPAIR_H
