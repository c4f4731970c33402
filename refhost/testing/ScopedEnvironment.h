#pragma once
// An environment variable set for one scope and put back as it was when the scope ends.

#include "refhost/Environment.h"

#include <cstdlib>
#include <optional>
#include <string>

namespace refhost {
namespace testing {

class ScopedEnvironment {
public:
    ScopedEnvironment(std::string name, const std::string& value) : name_(std::move(name))
    {
        if (const char* before = std::getenv(name_.c_str()))
            before_ = before;
        SetEnvironment(name_.c_str(), value.c_str());
    }
    ~ScopedEnvironment() { SetEnvironment(name_.c_str(), before_ ? before_->c_str() : nullptr); }
    ScopedEnvironment(const ScopedEnvironment&) = delete;
    ScopedEnvironment& operator=(const ScopedEnvironment&) = delete;

private:
    std::string name_;
    std::optional<std::string> before_;
};

} // namespace testing
} // namespace refhost
