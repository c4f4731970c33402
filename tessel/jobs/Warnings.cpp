#include "tessel/jobs/Warnings.h"

#include "tessel/core/AppError.h"

#include <iostream>

namespace tessel {

void WarnOrRefuse(bool strict, const std::string& message)
{
    if (strict)
        throw UsageError(message + " (--strict)");
    std::cerr << "warning: " << message << std::endl;
}

} // namespace tessel
