// vpArgListItem: one entry of a tool's option table, usually part of a static array that ends
// with an entry whose name is null:
//
//   static const vpArgListItem items[] = {
//       {"-out", "file", "where to write the result", true},
//       {"-v", nullptr, "report every step", false},
//       {nullptr, nullptr, nullptr, false},
//   };
//
// The table is the caller's; vArgList only keeps a pointer to it.
#ifndef VFC_APP_VPARGLISTITEM_H
#define VFC_APP_VPARGLISTITEM_H

struct vpArgListItem {
    const char* name;         // the option word with its leading "-"; null ends the table
    const char* argName;      // the argument's name in the usage screen; null for a flag
    const char* description;  // the help text of the usage screen
    bool required;            // the option must be given
};

#endif  // VFC_APP_VPARGLISTITEM_H
