#pragma once
// How the host application ends: every failure it finds itself is one AppError carrying the
// line to print and the exit status; failures inside the engines arrive as EngineError.

#include <stdexcept>
#include <string>

namespace tessel {

enum ExitStatus : int {
    ExitSuccess = 0,        // the engine returned 1
    ExitJobFailed = 1,      // the engine returned 0, or the job's output could not be made
    ExitUsage = 2,          // wrong options or unusable input, found before the engine ran
    ExitEngineException = 3 // an exception left an engine operation
};

class AppError : public std::runtime_error {
public:
    AppError(ExitStatus status, const std::string& message) : std::runtime_error(message), status_(status) {}
    ExitStatus Status() const { return status_; }

private:
    ExitStatus status_;
};

inline AppError UsageError(const std::string& message) { return AppError(ExitUsage, message); }
inline AppError JobError(const std::string& message) { return AppError(ExitJobFailed, message); }

// An exception that left an engine operation; printed as "error: TEXT".
class EngineError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// Runs one engine operation, turning whatever it throws into an EngineError.
template <typename Operation>
auto CallEngine(Operation&& operation) -> decltype(operation())
{
    try {
        return operation();
    } catch (const std::exception& error) {
        throw EngineError(error.what());
    } catch (...) {
        throw EngineError("unknown exception");
    }
}

} // namespace tessel
