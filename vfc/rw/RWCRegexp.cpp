#include "vfc/rw/RWCRegexp.h"

#include <cstring>
#include <vector>

#include "vfc/rw/RWCString.h"
#include "vfc/rw/internal/RegexEngine.h"

RWCRegexp::RWCRegexp(const char* pattern)
    : RWCRegexp(pattern, pattern != nullptr ? std::strlen(pattern) : 0) {}

RWCRegexp::RWCRegexp(const char* pattern, size_t length) : status_(OK) {
    compile(pattern, length);
}

RWCRegexp::RWCRegexp(const RWCString& pattern) : status_(OK) {
    compile(pattern.data(), pattern.length());
}

RWCRegexp::RWCRegexp(const RWCRegexp& other)
    : status_(other.status_),
      expression_(other.expression_),
      matcher_(other.matcher_ ? std::make_unique<vfc::rx::Matcher>(*other.matcher_) : nullptr) {}

RWCRegexp& RWCRegexp::operator=(const RWCRegexp& other) {
    if (this == &other) return *this;
    status_ = other.status_;
    expression_ = other.expression_;
    matcher_ = other.matcher_ ? std::make_unique<vfc::rx::Matcher>(*other.matcher_) : nullptr;
    return *this;
}

RWCRegexp::~RWCRegexp() = default;

void RWCRegexp::compile(const char* pattern, size_t length) {
    matcher_.reset();
    switch (vfc::rx::parse(pattern, length, &expression_)) {
        case vfc::rx::ParseStatus::ok:
            status_ = OK;
            return;
        case vfc::rx::ParseStatus::illegal:
            status_ = ILLEGAL;
            break;
        case vfc::rx::ParseStatus::tooLong:
            status_ = TOOLONG;
            break;
    }
}

size_t RWCRegexp::index(const RWCString& text, size_t* extent, size_t start) const {
    return index(text.data(), text.length(), extent, start);
}

size_t RWCRegexp::index(const char* text, size_t length, size_t* extent, size_t start) const {
    if (status_ != OK || !expression_) {
        if (extent != nullptr) *extent = 0;
        return RW_NPOS;
    }
    // Built on the first search: the expressions of a vRegExp are searched through its own
    // automaton and never need one of their own.
    if (!matcher_)
        matcher_ = std::make_unique<vfc::rx::Matcher>(
            std::vector<std::shared_ptr<const vfc::rx::Expression>>{expression_});
    return matcher_->search(text, length, start, extent);
}
