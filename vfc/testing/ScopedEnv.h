// For tests that change the environment: sets (null: unsets) one variable for a scope and puts
// back what was there before. On Windows an empty value unsets the variable too (_putenv).
#ifndef VFC_TESTING_SCOPEDENV_H
#define VFC_TESTING_SCOPEDENV_H

#include <cstdlib>
#include <string>

#include "vfc/os/os.h"

namespace vfc {
namespace testing {

class ScopedEnv {
  public:
    ScopedEnv(const char* name, const char* value) : aName(name), aWasSet(std::getenv(name)) {
        if (aWasSet) aOld = std::getenv(name);
        set(value);
    }
    ~ScopedEnv() { set(aWasSet ? aOld.c_str() : nullptr); }
    ScopedEnv(const ScopedEnv&) = delete;
    ScopedEnv& operator=(const ScopedEnv&) = delete;

    // Sets the variable anew (null: unsets it) within the scope.
    void set(const char* v) const {
        v ? vfc::os::SetEnv(aName.c_str(), v) : vfc::os::UnsetEnv(aName.c_str());
    }

  private:
    std::string aName, aOld;
    bool aWasSet;
};

}  // namespace testing
}  // namespace vfc

#endif  // VFC_TESTING_SCOPEDENV_H
