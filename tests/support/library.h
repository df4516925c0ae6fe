// A library under test, looked up by name: the real one, or one made wrong on purpose.
#pragma once

#include <string>
#include <vector>

#include "forms.h"

namespace kormtest {

class Library {
public:
    // The library that this program is linked with.
    static const Library& linked();

    // Another one, loaded from a file without its names becoming visible to anyone else.
    static Library open(const std::string& file);

    void* find(const std::string& name) const;
    // Null if it isn't there: a library that is wrong on purpose may have some of the functions only.
    void* function(const Form& form) const { return functions_[form.index]; }
    void* handle() const { return handle_; }

private:
    explicit Library(void* handle);
    void* handle_;
    std::vector<void*> functions_;
};

}  // namespace kormtest
