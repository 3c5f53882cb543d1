#include "vfc/persist/vpStringStreambuf.h"

#include <algorithm>
#include <cstring>

#include "vfc/persist/vPstream.h"

vpStringStreambuf::~vpStringStreambuf() {
    // The base's destructor would flush through its own consumer, which takes nothing.
    sync();
}

void vpStringStreambuf::fDetach() {
    sync();
    aOwner = nullptr;
}

int vpStringStreambuf::consumer(char* data, int n) {
    if (!aOwner || n <= 0) return 0;
    aOwner->append(data, static_cast<size_t>(n));
    return n;
}

int vpStringStreambuf::producer(char* data, int n) {
    if (!aOwner || n <= 0) return 0;
    size_t take = std::min(static_cast<size_t>(n), aOwner->length());
    if (take == 0) return 0;
    std::memcpy(data, aOwner->data(), take);
    aOwner->remove(0, take);
    return static_cast<int>(take);
}
