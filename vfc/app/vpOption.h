#ifndef VFC_APP_VPOPTION_H
#define VFC_APP_VPOPTION_H

/// One entry of a tool's option table for vApp: the option's name, its default text (null for
/// none; expanded with vpcUserEnvExpand when the table is added) and a flags word kept for the
/// tool. A table ends with an entry whose name is null.
///
/// \code
/// static const vpOption kOptions[] = {
///     {"outdir", "%HOME%/out", 0},
///     {"verbose", "0", 0},
///     {nullptr, nullptr, 0},
/// };
/// \endcode
///
/// Ownership: the table is the caller's and is read only while vApp adds it (construction,
/// fAddValidOptions); vApp keeps copies of the names and defaults, so the table need not outlive
/// the call.
struct vpOption {
    const char* name;
    const char* defaultValue;
    unsigned flags;
};

#endif  // VFC_APP_VPOPTION_H
