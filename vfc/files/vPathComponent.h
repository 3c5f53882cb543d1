#ifndef VFC_FILES_VPATHCOMPONENT_H
#define VFC_FILES_VPATHCOMPONENT_H

#include "vfc/base/export.h"
#include "vfc/core/vString.h"
#include "vfc/files/vComponentType.h"
#include "vfc/files/vPathType.h"
#include "vfc/rw/RWCollectable.h"

/// One component of a parsed path: the notation it was written in (stored normalised, never
/// flagged), its kind and its text.
///
/// The text is held as the name really is: a flagged notation's escapes are undone when the
/// component is built, and fComponent applies the escapes of whatever notation the component is
/// written in. Kinds without text (root, root of the current drive, up, current) always hold an
/// empty text.
///
/// Escaping of the flagged notations:
/// \code{.unparsed}
///   DOS       names only: "%", control characters and \ / : * ? " < > | as "%" + two lower-case
///             hex digits; any "%" + two hex digits is undone except "%00"
///   Mac       drives and names: ":" is written as "/" and "/" read as ":"
///   MIF       every text: "\" and ">" get a backslash in front; a backslash takes the next
///             character literally
///   MIF in a MIF string: "\" and ">" as "\\\\" and "\\\>" (the MIF escape, escaped once more
///             for the string), bytes from 0x80 as "\xhh "; both are undone, as is "\>"
///   URL and portable: names, shares and fragments are URL-encoded (vStringUtils::sfURLEncode,
///             and ":" as "%3a") and decoded; schemes, hosts, ports, drives and queries stand
///             as written
///   UNIX      no escapes
/// \endcode
///
/// Ownership: a value class that owns its text; copies are independent. The reference aText()
/// returns stays valid until the component is changed or destroyed.
///
/// Failure: nothing throws; any text makes a component. Restoring a stored notation that is not
/// a normalised one, or an unknown kind, fails the stream (or the RWFile); a failed restore
/// leaves the component unchanged.
class VFC_API vPathComponent : public RWCollectable {
  public:
    // A name in the host notation with empty text.
    vPathComponent() = default;
    // See the class comment: the notation is normalised, text-less kinds drop the text and a
    // flagged notation's escapes are undone.
    vPathComponent(vPathType::TypeEnum notation, vComponentType::TypeEnum kind,
                   const vString& text);
    vPathComponent(const vPathComponent& other) = default;
    // Makes this component what the constructor would make of (notation, kind, the length
    // bytes at text), reusing the text's buffer when it is not shared.
    void fSet(vPathType::TypeEnum notation, vComponentType::TypeEnum kind, const char* text,
              size_t length);
    vPathComponent& operator=(const vPathComponent& other) = default;
    ~vPathComponent() override;

    vPathType::TypeEnum fPathType() const { return aPathType; }
    vComponentType::TypeEnum fComponentType() const { return aComponentType; }
    const vString& aText() const { return aTextValue; }

    // Writes the text as it stands in the given notation (escaped when it is flagged); returns
    // out.
    vString& fComponent(vPathType::TypeEnum notation, vString& out) const;

    // Same notation, kind and text.
    bool operator==(const vPathComponent& other) const;
    bool operator!=(const vPathComponent& other) const { return !(*this == other); }

    RWCollectable* newSpecies() const override;
    RWCollectable* copy() const override;
    RWClassID isA() const override { return classIsA(); }
    // Order: notation, then kind, then text; -1 against another class.
    int compareTo(const RWCollectable* other) const override;
    unsigned hash() const override;
    bool isEqual(const RWCollectable* other) const override;
    // Persisted as the notation and the kind (each an int), then the text.
    void restoreGuts(RWvistream& s) override;
    void restoreGuts(RWFile& f) override;
    void saveGuts(RWvostream& s) const override;
    void saveGuts(RWFile& f) const override;
    static RWClassID classIsA();
    static const RWClassID myAtom;

  private:
    vPathType::TypeEnum aPathType = static_cast<vPathType::TypeEnum>(vPathType::kHostMember);
    vComponentType::TypeEnum aComponentType = vComponentType::eName;
    vString aTextValue;
};

#endif  // VFC_FILES_VPATHCOMPONENT_H
