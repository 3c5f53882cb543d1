#ifndef VFC_APP_VPARGLISTITEM_H
#define VFC_APP_VPARGLISTITEM_H

/// One entry of a tool's option table for vArgList, usually part of a static array that ends
/// with an entry whose name is null.
///
/// \code
/// static const vpArgListItem items[] = {
///     {"-out", "file", "where to write the result", true},
///     {"-v", nullptr, "report every step", false},
///     {nullptr, nullptr, nullptr, false},
/// };
/// \endcode
///
/// The fields: name, the option word with its leading "-" (null ends the table); argName, the
/// argument's name in the usage screen (null for a flag, which takes no argument); description,
/// the help text of the usage screen; required, whether the option must be given.
///
/// Ownership: the table and its strings are the caller's; vArgList keeps only a pointer to the
/// table, so it must outlive every vArgList made from it.
struct vpArgListItem {
    const char* name;         // the option word with its leading "-"; null ends the table
    const char* argName;      // the argument's name in the usage screen; null for a flag
    const char* description;  // the help text of the usage screen
    bool required;            // the option must be given
};

#endif  // VFC_APP_VPARGLISTITEM_H
