#include "refhost/app/Warnings.h"

#include "refhost/app/AppError.h"

#include <iostream>

namespace tessel {

void WarnOrRefuse(bool strict, const std::string& message)
{
    if (strict)
        throw UsageError(message + " (--strict)");
    std::cerr << "warning: " << message << std::endl;
}

} // namespace tessel
