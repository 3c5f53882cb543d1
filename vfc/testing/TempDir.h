// A fresh directory under the system's temporary folder for one test, removed with everything
// in it when the object goes. Tests never write into the source tree or the user's home.
#ifndef VFC_TESTING_TEMPDIR_H
#define VFC_TESTING_TEMPDIR_H

#include <string>

namespace vfc {
namespace testing {

class TempDir {
  public:
    TempDir();
    ~TempDir();
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;

    const std::string& path() const { return aPath; }
    // path() + "/" + name.
    std::string file(const std::string& name) const { return aPath + "/" + name; }
    // Writes bytes to the named file (created or truncated) and returns its path.
    std::string write(const std::string& name, const std::string& bytes) const;
    // Makes a FIFO (named pipe) of that name and returns its path; "" where the system has none.
    std::string makeFifo(const std::string& name) const;
    // The whole content of a file; empty when it cannot be read.
    static std::string read(const std::string& path);

  private:
    std::string aPath;
};

}  // namespace testing
}  // namespace vfc

#endif  // VFC_TESTING_TEMPDIR_H
