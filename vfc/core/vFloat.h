#ifndef VFC_CORE_VFLOAT_H
#define VFC_CORE_VFLOAT_H

#include "vfc/base/export.h"
#include "vfc/rw/RWCollectable.h"

class vString;

/// A double that is a collectable, with the identity semantics of RWCollectable.
///
/// Two vFloat holding the same number are not equal (a set keeps both): compareTo, hash and isEqual
/// go by the object's address, so a vFloat only equals itself. Text conversions go through
/// RWLocale::global(). It owns its value; copies are independent.
///
/// Failure: the constructor from text gives 0.0 when the text does not start with a number, and
/// assignment from such text leaves the value as it was; neither reports it. A vFloat persists only
/// through the virtual streams (one double item, the stream reporting failures): the RWFile forms
/// write and read nothing.
class VFC_API vFloat : public RWCollectable {
  public:
    vFloat() = default;
    vFloat(const double& value) : aValue_(value) {}
    vFloat(const vFloat& other) = default;
    // The number that starts text; 0.0 when there is none.
    vFloat(const vString& text);
    ~vFloat() override;

    vFloat& operator=(const double& value);
    vFloat& operator=(const vFloat& other);
    // The number that starts text. The conversion's success is not examined: text without a
    // number leaves the value as it was.
    vFloat& operator=(const vString& text);

    double& aValue() { return aValue_; }
    const double& aValue() const { return aValue_; }

    // out becomes the shortest text that reads back to the value; returns out.
    vString& fAsString(vString& out) const;

    RWCollectable* newSpecies() const override;
    RWCollectable* copy() const override;
    RWClassID isA() const override { return classIsA(); }
    // One double item on the virtual streams. The binary file forms write and read nothing: a
    // vFloat persists only through the virtual streams.
    void restoreGuts(RWvistream& s) override;
    void restoreGuts(RWFile& f) override;
    void saveGuts(RWvostream& s) const override;
    void saveGuts(RWFile& f) const override;
    static RWClassID classIsA();
    static const RWClassID myAtom;

  private:
    double aValue_ = 0.0;
};

#endif  // VFC_CORE_VFLOAT_H
