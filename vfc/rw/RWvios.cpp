#include "vfc/rw/RWvios.h"

#include "vfc/rw/RWvistream.h"
#include "vfc/rw/RWvostream.h"
#include "vfc/rw/internal/StoreTable.h"

// The constants get their one definition here, so that a DLL exports them for importers that
// take one by reference.
constexpr size_t RWvistream::kMaxCount;
constexpr int RWvistream::kMaxDepth;
constexpr unsigned long long RWvistream::kObjectAllowance;
constexpr unsigned long long RWvistream::kObjectsPerByteRead;
constexpr unsigned long long RWvistream::kCopyAllowance;
constexpr unsigned long long RWvistream::kCopiedBytesPerByteRead;

RWvios::~RWvios() = default;

RWvostream::RWvostream() = default;
RWvostream::~RWvostream() = default;

int RWvostream::objectDepth() const {
    return table_ ? table_->depth : 0;
}

vfc::rw::SaveTable& RWvostream::saveTable() {
    if (!table_) table_ = std::make_unique<vfc::rw::SaveTable>();
    return *table_;
}

RWvistream::RWvistream() = default;
RWvistream::~RWvistream() = default;

vfc::rw::RestoreTable& RWvistream::restoreTable() {
    if (!table_) table_ = std::make_unique<vfc::rw::RestoreTable>();
    return *table_;
}
