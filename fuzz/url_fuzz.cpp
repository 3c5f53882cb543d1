// Fuzzes the URL functions that follow RFC 3986. Besides crashes and hangs it checks what they
// promise (see vURLAlgebra.h):
//  - the relative reference from one URL to another resolves against the first to the second
//    with its dot segments removed, and is never longer than that;
//  - a URL resolved against itself is a fixed point: resolving it again changes nothing;
//  - normalising is idempotent and succeeds exactly for URLs;
//  - a reference with a control character, and a base without a scheme, are refused.
//
// Input: the text up to the first newline is the first URL (the base), the rest the second
// (the target or reference); without a newline both are the whole input.
#include <cstddef>
#include <cstdint>
#include <string>

#include <vfc/vfc.h>

namespace {

void check(bool ok) {
    if (!ok) __builtin_trap();
}

bool hasControl(const std::string& s) {
    for (char c : s) {
        unsigned char u = static_cast<unsigned char>(c);
        if (u < 0x20 || u == 0x7f) return true;
    }
    return false;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string input(reinterpret_cast<const char*>(data), size);
    const size_t newline = input.find('\n');
    const std::string first = newline == std::string::npos ? input : input.substr(0, newline);
    const std::string second = newline == std::string::npos ? input : input.substr(newline + 1);
    const vString base(first.data(), first.size());
    const vString other(second.data(), second.size());

    vString resolved;
    const bool resolves = vcResolveURL(base, other, resolved);
    if (hasControl(first) || hasControl(second)) check(!resolves);

    vString selfBase, selfOther;
    const bool baseIsURL = vcResolveURL(base, base, selfBase);
    const bool otherIsURL = vcResolveURL(other, other, selfOther);
    if (baseIsURL) {
        vString again;
        check(vcResolveURL(selfBase, selfBase, again) && again == selfBase);
    }

    vString relative;
    const bool related = vcMakeRelativeURL(base, other, relative);
    check(related == (baseIsURL && otherIsURL));
    if (related) {
        vString back;
        check(vcResolveURL(base, relative, back));
        check(back == selfOther);
        check(relative.length() <= selfOther.length());
    }

    vString normal;
    if (vcNormalizeURL(base, normal)) {
        check(baseIsURL);
        vString twice;
        check(vcNormalizeURL(normal, twice) && twice == normal);
    } else {
        check(!baseIsURL);
    }
    return 0;
}
