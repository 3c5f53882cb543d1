#include "vfc/rw/RWFactory.h"

#include <unordered_map>

#include "vfc/rw/RWCollectable.h"

struct RWFactory::Table {
    std::unordered_map<RWClassID, RWuserCreator> creators;
};

RWFactory::RWFactory() : table_(new Table) {}

RWFactory::~RWFactory() {
    delete table_;
}

RWFactory* getRWFactory() {
    // Built by the first registration, so it outlives every registration made after it.
    static RWFactory factory;
    return &factory;
}

RWuserCreator RWFactory::getFunction(RWClassID id) const {
    auto it = table_->creators.find(id);
    return it == table_->creators.end() ? nullptr : it->second;
}

RWCollectable* RWFactory::create(RWClassID id) const {
    RWuserCreator creator = getFunction(id);
    return creator ? creator() : nullptr;
}

void RWFactory::addFunction(RWuserCreator creator, RWClassID id) {
    if (creator) table_->creators[id] = creator;
}

void RWFactory::removeFunction(RWClassID id) {
    table_->creators.erase(id);
}

void rwAddToFactory(RWuserCreator creator, RWClassID id) {
    getRWFactory()->addFunction(creator, id);
}

void rwRemoveFromFactory(RWClassID id) {
    getRWFactory()->removeFunction(id);
}

namespace vfc::rw {

FactoryRegistration::FactoryRegistration(RWuserCreator creator, RWClassID id) : id_(id) {
    rwAddToFactory(creator, id);
}

FactoryRegistration::~FactoryRegistration() {
    rwRemoveFromFactory(id_);
}

}  // namespace vfc::rw
