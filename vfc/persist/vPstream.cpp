#include "vfc/persist/vPstream.h"

#include "vfc/persist/vClassIds.h"
#include "vfc/persist/vPistream.h"
#include "vfc/persist/vPostream.h"
#include "vfc/persist/vpStringStreambuf.h"
#include "vfc/rw/RWFactory.h"

RW_DEFINE_COLLECTABLE(vPstream, vClassID::vPstream)

vPstream::Streams::~Streams() {
    delete out;
    delete in;
    delete outBuf;
    delete inBuf;
}

vPstream::vPstream() {
    fOpen();
}

vPstream::vPstream(const vPstream& other) : vString(other), aStreams(other.aStreams) {}

vPstream::~vPstream() {
    fRelease();
}

void vPstream::fOpen() {
    auto streams = std::make_shared<Streams>();
    streams->outBuf = new vpStringStreambuf(this);
    streams->inBuf = new vpStringStreambuf(this);
    streams->out = new vPostream(streams->outBuf);
    streams->in = new vPistream(streams->inBuf);
    aStreams = std::move(streams);
}

void vPstream::fRelease() {
    if (!aStreams) return;
    // Streams made by this pipe hand their pending output to it now, while it still exists;
    // a copy sharing them is left with detached streams.
    if (aStreams->outBuf && aStreams->outBuf->fOwner() == this) aStreams->outBuf->fDetach();
    if (aStreams->inBuf && aStreams->inBuf->fOwner() == this) aStreams->inBuf->fDetach();
    aStreams.reset();
}

void vPstream::flush() {
    fRelease();
    fOpen();
}

RWCollectable* vPstream::newSpecies() const {
    return new vPstream;
}

RWCollectable* vPstream::copy() const {
    return new vPstream(*this);
}
