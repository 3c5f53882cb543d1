#ifndef VFC_RW_RWFACTORY_H
#define VFC_RW_RWFACTORY_H

#include "vfc/base/export.h"
#include "vfc/rw/RWClassID.h"

class RWCollectable;

/// A creator: makes a new default-constructed object of one collectable class and gives it to the
/// caller, who owns it.
using RWuserCreator = RWCollectable* (*)();

/// Creates a collectable object from its class identifier, so that a stream reader can make the
/// object it is about to restore.
///
/// There is one factory per process, reached through getRWFactory(); it cannot be made or
/// destroyed by users. It holds creator functions only and owns no objects; create() hands the new
/// object to the caller. Every collectable class of the library registers a creator when the
/// library is loaded and withdraws it when the library is unloaded (see RW_DEFINE_COLLECTABLE).
/// The table has no lock: registering or withdrawing must not run at the same time as any other
/// use of the factory.
///
/// Failure: create() and getFunction() answer null for an identifier without a creator.
class VFC_API RWFactory {
  public:
    // A new default-constructed object of class id; null for an unregistered identifier.
    RWCollectable* create(RWClassID id) const;
    RWuserCreator getFunction(RWClassID id) const;
    // The last registration of an identifier wins; a null creator is ignored.
    void addFunction(RWuserCreator creator, RWClassID id);
    // Withdraws whatever creator is registered for id.
    void removeFunction(RWClassID id);

  private:
    friend VFC_API RWFactory* getRWFactory();
    RWFactory();
    ~RWFactory();
    struct Table;
    Table* table_;
};

/// The process-wide factory; never null. It is built on first use (normally the first
/// registration), so it outlives every static registration made after that.
VFC_API RWFactory* getRWFactory();
/// getRWFactory()->addFunction(creator, id).
VFC_API void rwAddToFactory(RWuserCreator creator, RWClassID id);
/// getRWFactory()->removeFunction(id).
VFC_API void rwRemoveFromFactory(RWClassID id);

namespace vfc::rw {
/// Registers a creator with the process-wide factory for the lifetime of this object.
///
/// The destructor withdraws the identifier, whatever creator is registered under it by then. A
/// static object of this class (as RW_DEFINE_COLLECTABLE makes) keeps a class creatable while its
/// library is loaded. Not copyable.
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

/// Makes class C, with identifier ID, a registered collectable.
///
/// Used once at global scope in the class's source file: defines myAtom and classIsA() of C and
/// registers a creator of C (which needs a default constructor) with the factory while the library
/// or program containing it is loaded. The class declares
/// \code
/// RWClassID isA() const override { return classIsA(); }
/// static RWClassID classIsA();
/// static const RWClassID myAtom;
/// \endcode
#define RW_DEFINE_COLLECTABLE(C, ID)                                          \
    const RWClassID C::myAtom = (ID);                                         \
    RWClassID C::classIsA() { return (ID); }                                  \
    namespace {                                                               \
    RWCollectable* rwCreate_##C() { return new C; }                           \
    const vfc::rw::FactoryRegistration rwRegistration_##C(&rwCreate_##C, ID); \
    }

#endif  // VFC_RW_RWFACTORY_H
