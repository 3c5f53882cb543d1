// The whole public interface of vfc in one include.
#ifndef VFC_VFC_H
#define VFC_VFC_H

#include "vfc/base/export.h"

#include "vfc/rw/RWCRegexp.h"
#include "vfc/rw/RWCString.h"
#include "vfc/rw/RWCSubString.h"
#include "vfc/rw/RWClassID.h"
#include "vfc/rw/RWCollectable.h"
#include "vfc/rw/RWCollection.h"
#include "vfc/rw/RWSlistCollectables.h"
#include "vfc/rw/RWSlistCollectablesIterator.h"
#include "vfc/rw/RWWString.h"

#include "vfc/persist/vClassIds.h"
#include "vfc/persist/vpGStreambuf.h"

#include "vfc/core/vSString.h"
#include "vfc/core/vString.h"
#include "vfc/core/vStringUtils.h"
#include "vfc/core/vSubString.h"
#include "vfc/core/vVBuffer.h"

#include "vfc/collections/vSlist.h"
#include "vfc/collections/vSlistIterator.h"

#include "vfc/text/vRegExp.h"
#include "vfc/text/vSeRe.h"
#include "vfc/text/vTemplates.h"

#endif  // VFC_VFC_H
