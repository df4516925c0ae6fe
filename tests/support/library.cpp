#include "library.h"

#include <dlfcn.h>

#include <stdexcept>

namespace kormtest {

Library::Library(void* handle) : handle_(handle) {
    for (const Form& form : allForms()) functions_.push_back(dlsym(handle_, form.name.c_str()));
}

const Library& Library::linked() {
    static const Library library(RTLD_DEFAULT);
    return library;
}

Library Library::open(const std::string& file) {
    void* const handle = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (handle == nullptr) throw std::runtime_error(std::string("cannot load: ") + dlerror());
    return Library(handle);
}

void* Library::find(const std::string& name) const {
    void* const address = dlsym(handle_, name.c_str());
    if (address == nullptr) throw std::runtime_error("not found: " + name);
    return address;
}

}  // namespace kormtest
