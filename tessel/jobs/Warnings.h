#pragma once
// What is likely a mistake but the engine accepts: tessel says so and passes it on, so that
// scripts reach the engine's own answer; with --strict it is an error instead (exit 2).

#include <string>

namespace tessel {

// Prints "warning: MESSAGE" on standard error, or, when strict, throws a usage AppError
// "MESSAGE (--strict)".
void WarnOrRefuse(bool strict, const std::string& message);

} // namespace tessel
