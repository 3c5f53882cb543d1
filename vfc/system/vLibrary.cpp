#include "vfc/system/vLibrary.h"

#include <cstring>
#include <string>

#include "vfc/os/os.h"
#include "vfc/persist/vClassIds.h"
#include "vfc/rw/RWFactory.h"
#include "vfc/rw/RWFile.h"
#include "vfc/rw/RWvistream.h"

RW_DEFINE_COLLECTABLE(vLibrary, vClassID::vLibrary)

namespace {

// Symbols come back as data addresses; the function pointer is copied out bit for bit, which
// is what the loader's interface promises to be valid.
template <class F>
F asFunction(void* symbol) {
    static_assert(sizeof(F) == sizeof(void*), "function and data pointers differ in size");
    F f;
    std::memcpy(&f, &symbol, sizeof f);
    return f;
}

}  // namespace

vLibrary::vLibrary(const vString& prefix, const vFile& file) : aFile(file), aPrefix(prefix) {}

vLibrary::~vLibrary() = default;  // never unloads: see the header

bool vLibrary::fConstruct() {
    const vString path = aFile.fDOSPath();
    void* module = vfc::os::OpenLibrary(path.data());
    if (!module) return false;
    aModule = module;
    aLoadedPath = path;
    return true;
}

void* vLibrary::fFind(const vString& symbol) const {
    aLastSymbol = symbol;
    return aModule ? vfc::os::FindSymbol(aModule, symbol.data()) : nullptr;
}

bool vLibrary::fExecute(const vString& function, void* argument) const {
    void* symbol = fFind(aPrefix + function);
    if (!symbol) return false;
    return asFunction<int (*)(void*)>(symbol)(argument) != 0;
}

bool vLibrary::fExecuteCollectable(const vString& function, const RWCollectable& in,
                                   RWCollectable& out) const {
    vString decorated;
    fMungeName(aPrefix + function, decorated);
    void* symbol = fFind(decorated);
    if (!symbol) return false;
    return asFunction<int (*)(const RWCollectable&, RWCollectable&)>(symbol)(in, out) != 0;
}

void vLibrary::fMungeName(const vString& name, vString& decorated) const {
    decorated = "_Z";
    decorated.append(std::to_string(name.length()).c_str());
    decorated.append(name);
    decorated.append("RK13RWCollectableRS_");
}

void vLibrary::fForget() {
    aModule = nullptr;
    aLoadedPath = vString();
    aLastSymbol = vString();
}

RWCollectable* vLibrary::newSpecies() const {
    return new vLibrary;
}

RWCollectable* vLibrary::copy() const {
    return new vLibrary(*this);
}

int vLibrary::compareTo(const RWCollectable* other) const {
    const vLibrary* o =
        other && other->isA() == isA() ? dynamic_cast<const vLibrary*>(other) : nullptr;
    return o ? aFile.compareTo(&o->aFile) : -1;
}

bool vLibrary::isEqual(const RWCollectable* other) const {
    const vLibrary* o =
        other && other->isA() == isA() ? dynamic_cast<const vLibrary*>(other) : nullptr;
    return o && aFile.isEqual(&o->aFile);
}

// Restored into temporaries first, so that a damaged stream leaves the library as it was.
void vLibrary::restoreGuts(RWvistream& s) {
    RWCollectable::restoreGuts(s);
    vFile file;
    vString prefix;
    file.restoreGuts(s);
    prefix.restoreFrom(s);
    if (!s.good()) return;
    fForget();
    aFile = file;
    aPrefix = prefix;
}

// A file keeps no type name in the binary form (as with vFile itself): path and prefix only.
void vLibrary::restoreGuts(RWFile& f) {
    RWCollectable::restoreGuts(f);
    vString path;
    vString prefix;
    path.restoreFrom(f);
    prefix.restoreFrom(f);
    if (!f.good()) return;
    fForget();
    aFile = vFile(path);
    aPrefix = prefix;
}

void vLibrary::saveGuts(RWvostream& s) const {
    RWCollectable::saveGuts(s);
    aFile.saveGuts(s);
    aPrefix.saveOn(s);
}

void vLibrary::saveGuts(RWFile& f) const {
    RWCollectable::saveGuts(f);
    aFile.fPath().saveOn(f);
    aPrefix.saveOn(f);
}
