// vpOption: one entry of a tool's option table: the option's name, its default text (null for
// none; expanded with vpcUserEnvExpand when the table is added) and a flags word kept for the
// tool. A table ends with an entry whose name is null.
//
//   static const vpOption kOptions[] = {
//       {"outdir", "%HOME%/out", 0},
//       {"verbose", "0", 0},
//       {nullptr, nullptr, 0},
//   };
#ifndef VFC_APP_VPOPTION_H
#define VFC_APP_VPOPTION_H

struct vpOption {
    const char* name;
    const char* defaultValue;
    unsigned flags;
};

#endif  // VFC_APP_VPOPTION_H
