#include "vfc/rw/RWSetIterator.h"

RWSetIterator::~RWSetIterator() = default;
