// RWFactory: creates a collectable object from its class identifier, so that a stream reader can
// make the object it is about to restore. Every collectable class of the library registers a
// creator when the library is loaded and withdraws it when the library is unloaded (see
// RW_DEFINE_COLLECTABLE).
#ifndef VFC_RW_RWFACTORY_H
#define VFC_RW_RWFACTORY_H

#include "vfc/base/export.h"
#include "vfc/rw/RWClassID.h"

class RWCollectable;

using RWuserCreator = RWCollectable* (*)();

class VFC_API RWFactory {
  public:
    // A new default-constructed object of class id; null for an unregistered identifier.
    RWCollectable* create(RWClassID id) const;
    RWuserCreator getFunction(RWClassID id) const;
    // The last registration of an identifier wins.
    void addFunction(RWuserCreator creator, RWClassID id);
    void removeFunction(RWClassID id);

  private:
    friend VFC_API RWFactory* getRWFactory();
    RWFactory();
    ~RWFactory();
    struct Table;
    Table* table_;
};

// The process-wide factory.
VFC_API RWFactory* getRWFactory();
VFC_API void rwAddToFactory(RWuserCreator creator, RWClassID id);
VFC_API void rwRemoveFromFactory(RWClassID id);

namespace vfc::rw {
// Registers a creator for the lifetime of this object.
class VFC_API FactoryRegistration {
  public:
    FactoryRegistration(RWuserCreator creator, RWClassID id);
    FactoryRegistration(const FactoryRegistration&) = delete;
    FactoryRegistration& operator=(const FactoryRegistration&) = delete;
    ~FactoryRegistration();

  private:
    RWClassID id_;
};
}  // namespace vfc::rw

// In the class's source file: defines myAtom and classIsA() of class C with identifier ID and
// registers a creator of C with the factory while the library is loaded. The class declares
//   RWClassID isA() const override { return classIsA(); }
//   static RWClassID classIsA();
//   static const RWClassID myAtom;
#define RW_DEFINE_COLLECTABLE(C, ID)                                          \
    const RWClassID C::myAtom = (ID);                                         \
    RWClassID C::classIsA() { return (ID); }                                  \
    namespace {                                                               \
    RWCollectable* rwCreate_##C() { return new C; }                           \
    const vfc::rw::FactoryRegistration rwRegistration_##C(&rwCreate_##C, ID); \
    }

#endif  // VFC_RW_RWFACTORY_H
