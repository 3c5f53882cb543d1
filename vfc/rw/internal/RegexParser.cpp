// Parsing of the RWCRegexp dialect into an Expression: an optional ^, items (a byte set and a
// quantifier), an optional $. There are no groups, so quantifiers bind to the previous item and
// stacked quantifiers fold into one.
#include <memory>
#include <utility>

#include "vfc/rw/internal/RegexEngine.h"
#include "vfc/rw/internal/RegexTables.h"

namespace vfc::rx {
namespace {

// The quantifier equivalent to quantifier q applied to an item already quantified by have.
Quant combine(Quant have, unsigned char q) {
    if (q == '*') return Quant::star;
    if (q == '+') return (have == Quant::once || have == Quant::plus) ? Quant::plus : Quant::star;
    return (have == Quant::once || have == Quant::optional) ? Quant::optional : Quant::star;
}

class Parser {
  public:
    Parser(const char* pattern, size_t length)
        : p_(reinterpret_cast<const unsigned char*>(pattern)), n_(length) {}

    ParseStatus run();
    Expression& expression() { return e_; }

  private:
    ParseStatus parseOne();
    ParseStatus parseClass(ByteSet* set);
    bool classByte(unsigned* out);

    const unsigned char* p_;
    size_t n_;
    size_t i_ = 0;
    Expression e_;
};

ParseStatus Parser::run() {
    if (n_ > 0 && p_[0] == '^') {
        e_.anchorStart = true;
        i_ = 1;
    }
    while (i_ < n_) {
        ParseStatus st = parseOne();
        if (st != ParseStatus::ok) return st;
    }
    return ParseStatus::ok;
}

// One item, one quantifier or the closing $.
ParseStatus Parser::parseOne() {
    unsigned char c = p_[i_];
    if (c == '$' && i_ + 1 == n_) {
        e_.anchorEnd = true;
        ++i_;
        return ParseStatus::ok;
    }
    if (c == '*' || c == '+' || c == '?') {
        if (e_.items.empty()) return ParseStatus::illegal;
        e_.items.back().quant = combine(e_.items.back().quant, c);
        ++i_;
        return ParseStatus::ok;
    }
    if (e_.items.size() == kMaxItems) return ParseStatus::tooLong;
    ByteSet set;
    if (c == '[') {
        ParseStatus st = parseClass(&set);
        if (st != ParseStatus::ok) return st;
    } else if (c == '\\') {
        if (i_ + 1 == n_) return ParseStatus::illegal;
        set.add(p_[i_ + 1]);
        i_ += 2;
    } else {
        if (c == '.') {
            set.invert();
        } else {
            set.add(c);
        }
        ++i_;
    }
    e_.items.push_back(Item{set, Quant::once});
    return ParseStatus::ok;
}

// A bracket class starting at the [. A ] right after [ or [^ is a member; a - is a range
// operator only between two members.
ParseStatus Parser::parseClass(ByteSet* set) {
    ++i_;
    bool negate = i_ < n_ && p_[i_] == '^';
    if (negate) ++i_;
    for (bool first = true;; first = false) {
        if (i_ >= n_) return ParseStatus::illegal;
        if (p_[i_] == ']' && !first) break;
        unsigned lo = 0;
        if (!classByte(&lo)) return ParseStatus::illegal;
        if (i_ + 1 < n_ && p_[i_] == '-' && p_[i_ + 1] != ']') {
            ++i_;
            unsigned hi = 0;
            if (!classByte(&hi) || hi < lo) return ParseStatus::illegal;
            set->addRange(lo, hi);
        } else {
            set->add(lo);
        }
    }
    ++i_;
    if (negate) set->invert();
    return ParseStatus::ok;
}

// One member byte of a class, \x standing for x. False when the pattern ends first.
bool Parser::classByte(unsigned* out) {
    if (i_ >= n_) return false;
    if (p_[i_] == '\\') {
        if (i_ + 1 >= n_) return false;
        *out = p_[i_ + 1];
        i_ += 2;
        return true;
    }
    *out = p_[i_++];
    return true;
}

}  // namespace

ParseStatus parse(const char* pattern, size_t length, std::shared_ptr<const Expression>* out) {
    out->reset();
    if (pattern == nullptr) length = 0;
    Parser parser(pattern, length);
    ParseStatus st = parser.run();
    if (st == ParseStatus::ok) {
        *out = std::make_shared<const Expression>(std::move(parser.expression()));
    }
    return st;
}

}  // namespace vfc::rx
