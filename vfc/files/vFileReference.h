#ifndef VFC_FILES_VFILEREFERENCE_H
#define VFC_FILES_VFILEREFERENCE_H

#include "vfc/base/export.h"
#include "vfc/collections/vTypedFamily.h"
#include "vfc/core/vString.h"
#include "vfc/files/vFile.h"
#include "vfc/files/vPathType.h"
#include "vfc/files/vpFileRefCmpnts.h"

/// A reference from one file to another as a document writes it: an image or a link in a page,
/// an include in a book. It keeps the referring file, the text as written (in the notation of
/// the document: URL notation for HTML), and the file that text leads to; when either file
/// moves it writes the text anew, so that the document can be rewritten and still lead to the
/// same file.
///
/// \code
/// vFileReference logo("site/guide/intro.htm", "../img/logo%20big.png");
/// logo.fTarget();                          // "site/img/logo big.png"
/// logo.fMoveReferrer("site/intro.htm");    // the page moved up one folder
/// logo.fText();                            // "img/logo%20big.png"
/// \endcode
///
/// Resolution, with the path algebra (vcResolvePath): the text is read in its notation; a
/// fragment or query at its end ("#top", "?v=2") names no file and is kept aside; the rest is
/// taken against the referrer's folder. A text that is only a fragment or query leads to the
/// referrer itself. An absolute text leads where it says ("file:///C:/x.png" to "C:/x.png").
/// A text with a scheme other than "file", or with a host ("http://host/x", "mailto:a@b"), is
/// external: it has no target, is never rewritten, and fIsExternal() is true.
///
/// Paths: the referrer and the target are host paths. A relative referrer is taken from the
/// current directory, and the target of a relative text is then kept relative to the current
/// directory too, so a catalogue of relative paths stays relative. On Windows "\" and "/" both
/// separate names and the target is written with "/".
///
/// Rewriting: a relative text is replaced by the shortest relative path from the referrer's
/// folder to the target (by vcMakeRelative; on another drive that is the absolute path), an
/// absolute one by the target's absolute path (with "file://" kept when it was there), a
/// reference of a file to itself by its fragment or query alone, and the fragment or query
/// follows as it was. The text is written in the reference's notation, escaped as that
/// notation escapes (a flagged URL notation writes " " as "%20").
///
/// Where it differs: neither std::filesystem, POCO nor Qt has this object; they offer the
/// pieces (path::lexically_relative, Poco::Path::resolve, QDir::relativeFilePath), which work
/// on one notation and know nothing of fragments. Here the document's notation and the file
/// system's stay apart, and a whole catalogue can follow a move (sfFileMoved).
///
/// Nothing here touches the file system except fTargetExists and the current directory, which
/// is read whenever a relative path has to be made absolute.
///
/// Ownership: a value class holding its parts (vpFileRefCmpnts, the form a list of references
/// stores); copies are independent.
///
/// Failure: nothing throws. Every text resolves to something; an external reference answers
/// false to the moves and keeps its text. When the current directory cannot be read, relative
/// paths are taken from "/" (the host's root).
class VFC_API vFileReference {
  public:
    // The notation of links in HTML: URL, with escapes undone on reading and made on writing.
    static constexpr vPathType::TypeEnum kHTMLNotation = vPathType::eURLHostFlagged;

    vFileReference() = default;
    // Reads text, written in notation, as it stands in referrer and resolves it.
    vFileReference(const vFile& referrer, const vString& text,
                   vPathType::TypeEnum notation = kHTMLNotation);
    // Takes stored parts as they are (no new resolution).
    explicit vFileReference(const vpFileRefCmpnts& parts) : aParts(parts) {}

    const vFile& fReferrer() const { return aParts.fReferrer(); }
    const vString& fText() const { return aParts.fText(); }
    vPathType::TypeEnum fNotation() const { return aParts.fNotation(); }
    // Where the text leads; empty for an external reference.
    const vFile& fTarget() const { return aParts.fTarget(); }
    // The parts, as a list of references stores them.
    const vpFileRefCmpnts& fComponents() const { return aParts; }
    // True when the text leaves the file system (see the class comment).
    bool fIsExternal() const;
    // True when the target exists now.
    bool fTargetExists() const;

    // The referrer moved to referrer: the text is rewritten to lead to the same target. False
    // for an external reference, which is left as it was.
    bool fMoveReferrer(const vFile& referrer);
    // The target moved to target: the text is rewritten to lead there. False for an external
    // reference.
    bool fMoveTarget(const vFile& target);
    // Both moved at once.
    bool fMove(const vFile& referrer, const vFile& target);

    // A file or a folder moved from from to to: every reference in refs whose referrer or
    // target is from, or lies below it, follows the move. Returns how many references changed.
    static int sfFileMoved(vpSlistvpFRefCs& refs, const vFile& from, const vFile& to);

  private:
    vpFileRefCmpnts aParts;
};

#endif  // VFC_FILES_VFILEREFERENCE_H
