#ifndef VFC_TEXT_VTEMPLATES_H
#define VFC_TEXT_VTEMPLATES_H

#include "vfc/base/export.h"
#include "vfc/text/vRegExp.h"

/// \file
/// The library's fixed patterns: one accessor per pattern, each returning a vRegExp in the
/// alternation form that is built on the first call and then shared, never freed, so hot paths
/// (path and URL analysis, tokenizing) never rebuild an expression. The accessors are named in
/// VFC_FIXED_PATTERN_TABLE, e.g. `const vRegExp& vWSTemplate();` for runs of white space.
///
/// Ownership: the library owns the patterns; the references stay valid until the process ends.
/// Calling an accessor is safe from any thread (the first call builds the pattern under the
/// language's guard for local statics). Searching is another matter: a vRegExp builds its
/// automaton as it searches, without locking, so one shared pattern must not be searched from
/// two threads at once; a thread of its own should search with a copy.

// clang-format off
/// The table of fixed patterns: VFC_FIXED_PATTERN_TABLE(X) expands X(accessor, pattern) once per
/// pattern. The pattern is the exact text handed to vRegExp (raw literals hold literal
/// backslashes; `"\t"`, `"\n"` and `"\r"` in ordinary literals are the control characters
/// themselves).
/// Each accessor is declared below as `const vRegExp& accessor();`.
#define VFC_FIXED_PATTERN_TABLE(X)                                                                 \
    X(aDOSDirectoryTemplate,      R"p(^[a-zA-Z0-9_^$~!#%&\-{}@`'()]+$)p")                          \
    X(aDOSDriveTemplate,          "^[A-Za-z]:")                                                    \
    X(aDOSEntryTemplate,          "^[^/]+")                                                        \
    X(aDOSExtensionTemplate,      R"p([a-zA-Z0-9_^$~!#%&\-{}@`'()]+$)p")                           \
    X(aDOSFileTemplate,                                                                            \
      R"p(^[a-zA-Z0-9_^$~!#%&\-{}@`'()]+\.[a-z0-9_^$~!#%&\-{}@`'()]+$)p")                          \
    X(aDOSServerNameTemplate,     R"p(^[^/\\]+)p")                                                 \
    X(aExtensionTemplate,         "[^.]+$")                                                        \
    X(aMIFEntryTemplate,          "^[^<]+")                                                        \
    X(aMIFEscCharTemplate,        R"p(\\.)p")                                                      \
    X(aMIFEscapedEntryTemplate,   "^[^<]+")                                                        \
    X(aMIFEscapedEscCharTemplate, R"p(\\\\\\.)p")                                                  \
    X(aMIFEscapedHexCodeTemplate, R"p(\\x[0-9a-fA-F][0-9a-fA-F] )p")                               \
    X(aMIFToEscapeTemplate,       R"p([\\>])p")                                                    \
    X(aMacBasenameTemplate,       "[^:]+$")                                                        \
    X(aMacEntryTemplate,          "^[^:]+")                                                        \
    X(aMacIllegalTemplate,        "[:]")                                                           \
    X(aVorlandixFileInfoTemplate, R"p(:263\\\[[0-9]+"[^"]*"\\])p")                                 \
    X(aUNIXBasenameTemplate,      "[^/]+$")                                                        \
    X(aUNIXEntryTemplate,         "^[^/]+")                                                        \
    X(aURLCGIParametersTemplate,  R"p(\?[^?]*$)p")                                                 \
    X(aURLColonPortTemplate,      ":[0-9]*$")                                                      \
    X(aURLEntryTemplate,          "^[^/]*")                                                        \
    X(aURLNumberNameTemplate,     "#[^#]*$")                                                       \
    X(aURLProblemTemplate,        R"p([%/?# \\"&<>\[\]\^`{|}~])p")                                 \
    X(aURLType2Template,          "^[^:/]+:/")                                                     \
    X(aURLType3Template,          "^[^:/]+:")                                                      \
    X(aURLTypeTemplate,           "^[^:/]+://")                                                    \
    X(aURLTypeUNCTemplate,        "^[^:/]+://[^/]")                                                \
    X(aNDTAsXMLFileTemplate,      "<\\?xml .+[\t \r\n]+.*<NDT")                                    \
    X(aXMLFileTemplate,           R"p(<\?xml )p")                                                  \
    X(vDOSEnvVarTemplate,         R"p(%[^%]+%|\$[^$/:\\]+)p")                                      \
    X(vLeadOrTrailWSTemplate,     "^[ \n\r\t]+|[ \n\r\t]+$")                                       \
    X(vMacEnvVarTemplate,         R"p(\$[^$/:\\]+)p")                                              \
    X(vNotColonTemplate,          "[^:]+")                                                         \
    X(vNotEolTemplate,            "[^\n\r]+")                                                      \
    X(vNotSemicolonTemplate,      "[^;]+")                                                         \
    X(vNotTabTemplate,            "[^\t]+")                                                        \
    X(vNotWSTemplate,             "[^\r\n\t ]+")                                                   \
    X(vSingleWSTemplate,          "[ \n\r\t]")                                                     \
    X(vUNIXEnvVarTemplate,        R"p(\$[^$/:\\]+)p")                                              \
    X(vWSTemplate,                "[ \n\r\t]+")                                                    \
    X(vcAlphaNumericTemplate,     "[a-zA-Z0-9]+")                                                  \
    X(vcDotAndExtensionTemplate,  R"p(\.[^/.]*$)p")                                                \
    X(vcFileRegExps__fCarriageReturnRegExp,  "\r")                                                 \
    X(vcFileRegExps__fLeadingNewLinesRegExp, "^[\n]+")                                             \
    X(vcFileRegExps__fNewLineRegExp,         "\n")                                                 \
    X(vcIsDecimalTemplate,        R"p(^[+\-]?[0-9]*[.][0-9]+$)p")                                  \
    X(vcIsIntTemplate,            R"p(^[+\-]?[0-9]+$)p")
// clang-format on

// One accessor per table entry, `const vRegExp& name();`, returning the shared pattern.
#define VFC_DECLARE_FIXED_PATTERN(name, pattern) VFC_API const vRegExp& name();
VFC_FIXED_PATTERN_TABLE(VFC_DECLARE_FIXED_PATTERN)
#undef VFC_DECLARE_FIXED_PATTERN

#endif  // VFC_TEXT_VTEMPLATES_H
